// The editing of a document: what a user does to it, whether through a window, a script or a command.
//
// A session owns a document, its selection, its undo history and the file that it came from. Every edit is a method
// here; views and commands only call them and listen (SessionObserver). Edits work on objects named by ID; a view
// passes Selected().IDs().
//
// An edit that fails changes nothing. One that names an object of a hidden or locked layer is refused. Placeholders
// keep their bytes: edits of placement, style and properties pass over them, and are refused when there are only
// placeholders.
//
// Each edit is one undo step, unless a step is open (BeginStep): then it becomes part of that. Units are map units and
// radians, y points up. Everything runs on the main thread.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/session/History.h"
#include "host/session/Selection.h"
#include "host/session/SessionObserver.h"
#include "host/storage/FileStamp.h"
#include "host/text/Problem.h"

namespace host {

using ObjectIDs = std::vector<ObjectID>;

enum class OrderChange { kToFront, kToBack, kForward, kBackward };
enum class Alignment { kLeft, kCenter, kRight, kTop, kMiddle, kBottom };
enum class AlignTo { kObjects, kPage };
enum class Axis { kHorizontal, kVertical };
/// Which objects a rubber band takes: those whose turned bounds lie within it, or all that it touches.
enum class Band { kWithin, kTouched };

class DocumentSession {
 public:
  explicit DocumentSession(std::unique_ptr<Document> document);
  DocumentSession(const DocumentSession&) = delete;
  DocumentSession& operator=(const DocumentSession&) = delete;
  ~DocumentSession();

  /// The session that handlers of plug-ins act on: the one made current last; null when there is none.
  static DocumentSession* Current();
  void MakeCurrent();
  /// A number of this session's own, by which it can be found as long as it lives.
  std::uint64_t Serial() const { return serial_; }
  static DocumentSession* FindBySerial(std::uint64_t serial);

  const Document& Doc() const { return *document_; }

  // Files.

  /// Fails when the file can't be read.
  static Result<std::unique_ptr<DocumentSession>> Open(const std::string& path);
  /// A document that a crash left unsaved, to be saved at `path`.
  static std::unique_ptr<DocumentSession> Restore(std::unique_ptr<Document> document, const std::string& path);
  /// Empty for a document that was never saved.
  const std::string& Path() const { return path_; }
  bool HasUnsavedChanges() const { return !history_.IsClean(); }
  /// Counts steps made, undone and redone: it differs whenever the document does.
  std::uint64_t ChangeCount() const { return changes_; }
  /// True when the file was changed or removed by somebody else since it was opened or saved.
  bool IsFileChangedOutside() const;
  /// Writes to Path(). Refused when the file was changed outside, unless `overwrite` is set.
  Result<> Save(bool overwrite);
  /// The document belongs to the new path from then on.
  Result<> SaveAs(const std::string& path);

  // Steps. They nest: an inner step becomes part of the outer one. A drag is BeginStep, then for each motion RewindStep
  // and the edit from where the drag began, then EndStep.

  /// The name is what follows "Undo"; an empty one is taken from what happens within, or becomes "Change".
  void BeginStep(std::string name);
  /// False when nothing was changed, and so no step was recorded.
  bool EndStep();
  /// Takes everything back that happened since BeginStep.
  void CancelStep();
  /// The same, but the step stays open.
  void RewindStep();
  bool IsStepOpen() const { return !open_.empty(); }
  /// Names the open step, or the next one: what a plug-in called the change.
  void SetActionName(std::string name);
  const std::string& ActionName() const { return actionName_; }

  const History& Steps() const { return history_; }
  /// "Undo Move"; "Undo" alone when there is nothing to undo.
  std::string UndoTitle() const;
  std::string RedoTitle() const;
  /// False when there is nothing, or while a step is open. The objects of the step become selected.
  bool Undo();
  bool Redo();
  /// Undoes or redoes up to a position of Steps().
  bool GoToStep(std::size_t position);

  // The selection. Only objects of visible and unlocked layers can be selected; others are passed over.

  const Selection& Selected() const { return selection_; }
  bool IsEditable(ObjectID id) const;
  void Select(const ObjectIDs& ids);
  void AddToSelection(const ObjectIDs& ids);
  void ToggleInSelection(ObjectID id);
  void SelectAll();
  void SelectNone();
  /// The foremost object that can be selected and shows ink within `tolerance` of the point; kNoObjectID for none.
  ObjectID ObjectAt(const AGPoint& point, double tolerance) const;
  /// Those that a rubber band takes, in drawing order.
  ObjectIDs ObjectsIn(const AGRect& band, Band rule) const;
  /// The box of the objects' turned bounds; false for none.
  bool GetBox(const ObjectIDs& ids, AGRect* box) const;

  // Objects.

  /// A new object of a class, in front on the active layer, and selected.
  Result<ObjectID> Add(AKClassID classID, const std::string& arguments, const ObjectPlacement& placement);
  Result<> Delete(const ObjectIDs& ids);
  Result<> SetPlacement(ObjectID id, const ObjectPlacement& placement);
  Result<> SetAngle(const ObjectIDs& ids, double angle);
  Result<> Move(const ObjectIDs& ids, double dx, double dy);
  /// Stretches the objects as the box `from` is to `to`. A turned object is moved with its centre and stretched along
  /// its own sides. Refused when `from` has no area.
  Result<> Resize(const ObjectIDs& ids, const AGRect& from, const AGRect& to);
  /// Turns the objects together about a point.
  Result<> Rotate(const ObjectIDs& ids, double angle, const AGPoint& about);
  /// Turns them about the centre of their box.
  Result<> Rotate(const ObjectIDs& ids, double angle);
  Result<> SetBrush(const ObjectIDs& ids, const AGBrush& brush);
  Result<> SetPen(const ObjectIDs& ids, const AGPen& pen);
  /// Properties as pairs of a key path and a text; see ObjectProperties.h. All of them or none.
  Result<> SetProperties(const ObjectIDs& ids, const std::vector<std::pair<std::string, std::string>>& assignments);

  // The order, within each layer.

  Result<> ChangeOrder(const ObjectIDs& ids, OrderChange change);
  /// By the boxes of the turned bounds.
  Result<> Align(const ObjectIDs& ids, Alignment alignment, AlignTo to);
  /// Equal gaps between three or more objects; the outermost stay.
  Result<> Distribute(const ObjectIDs& ids, Axis axis);

  // The clipboard: bytes that any session of this program can paste.

  std::string Copy(const ObjectIDs& ids) const;
  Result<> Cut(const ObjectIDs& ids, std::string* clipboard);
  /// In front on the active layer, moved by (dx, dy) but for placeholders, and selected.
  Result<> Paste(const std::string& clipboard, double dx, double dy);
  Result<> Duplicate(const ObjectIDs& ids, double dx, double dy);

  // Layers. Locked ones can be edited as layers.

  /// The layer that gets new objects.
  LayerID ActiveLayer() const { return activeLayer_; }
  void SetActiveLayer(LayerID id);
  /// Above all others unless an index is given; it becomes active. An empty name becomes "Layer N".
  LayerID AddLayer(const std::string& name, std::size_t index = static_cast<std::size_t>(-1));
  /// With its objects. The only layer can't be removed.
  Result<> RemoveLayer(LayerID id);
  Result<> SetLayerName(LayerID id, const std::string& name);
  Result<> SetLayerVisible(LayerID id, bool visible);
  Result<> SetLayerLocked(LayerID id, bool locked);
  Result<> MoveLayer(LayerID id, std::size_t index);
  Result<> MoveToLayer(const ObjectIDs& ids, LayerID layer);

  // The page.

  /// Both sides must be above 0.
  Result<> SetPage(const AGSize& page);
  void SetBackground(AGColor color);

  // What plug-ins do. The objects are linked at a place; statuses are 0 or those of HandlerTable.cpp.

  ObjectID Adopt(AKObject* instance, const ObjectPlace& place);
  void DeleteAny(const ObjectIDs& ids);
  /// Looks whether the objects' instances changed by themselves; changes become part of the open step, or one.
  Result<> NoticeChanges(const ObjectIDs& ids);
  AKObject* StandInOf(LayerID id) { return document_->StandInOf(id); }

  void AddObserver(SessionObserver* observer);
  void RemoveObserver(SessionObserver* observer);

 private:
  friend class EditStep;

  template <typename Call>
  void Notify(Call call) const;
  UndoStep& Step() { return *open_.back(); }
  Result<> CheckEditable(const ObjectIDs& ids) const;
  /// Those that can be changed, at least one.
  Result<ObjectIDs> Changeable(const ObjectIDs& ids) const;
  Result<> CheckActiveLayer() const;
  Result<> CheckLayer(LayerID id) const;
  template <typename Place>
  Result<> PlaceEach(const ObjectIDs& ids, const char* name, Place place);
  Result<> ChangeSettings(LayerID id, const char* name, LayerSettings settings);
  ObjectIDs InDrawingOrder(const ObjectIDs& ids) const;
  void MoveOne(ObjectID id, const ObjectPlace& place);
  void RemoveOne(ObjectID id);
  ObjectID InsertOne(std::unique_ptr<DocumentObject> object, const ObjectPlace& place);
  Result<> NoticeChange(ObjectID id);
  void AfterChange(const ObjectIDs& toSelect);
  void AfterRemoval();
  void PruneSelection();

  std::unique_ptr<Document> document_;
  Selection selection_;
  History history_;
  std::vector<std::unique_ptr<UndoStep>> open_;
  std::string actionName_;
  std::string path_;
  FileStamp stamp_;
  LayerID activeLayer_ = kNoLayerID;
  std::uint64_t serial_;
  std::uint64_t changes_ = 0;
  std::vector<SessionObserver*> observers_;
};

/// A step that is taken back unless it is ended.
class EditStep {
 public:
  EditStep(DocumentSession& session, std::string name) : session_(session) { session_.BeginStep(std::move(name)); }
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;
  ~EditStep() {
    if (!ended_) session_.CancelStep();
  }
  /// Done, for the end of an edit.
  Success End() {
    ended_ = true;
    session_.EndStep();
    return {};
  }

 private:
  DocumentSession& session_;
  bool ended_ = false;
};

}  // namespace host
