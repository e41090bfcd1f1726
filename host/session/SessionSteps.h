// The undo steps of a session: what records changes, and what takes them back.
//
// Steps nest: an inner step becomes part of the outer one. A drag is Begin, then for each motion Rewind and the edit
// from where the drag began, then End.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/history/History.h"
#include "host/session/ActiveLayer.h"
#include "host/session/SessionSelection.h"

namespace host {

class SessionSteps {
 public:
  SessionSteps(Document& document, SessionObservers& observers, SessionSelection& selection, ActiveLayer& activeLayer)
      : document_(document), observers_(observers), selection_(selection), activeLayer_(activeLayer) {}

  /// The name is what follows "Undo"; an empty one is taken from what happens within, or becomes "Change".
  void Begin(std::string name);
  /// False when nothing was changed, and so no step was recorded.
  bool End();
  /// Takes everything back that happened since Begin.
  void Cancel();
  /// The same, but the step stays open.
  void Rewind();
  bool IsOpen() const { return !open_.empty(); }
  /// Names the open step, or the next one: what a plug-in called the change.
  void SetActionName(std::string name);
  const std::string& ActionName() const { return actionName_; }

  /// The steps that are known.
  const History& Known() const { return history_; }
  /// "Undo Move"; "Undo" alone when there is nothing to undo.
  std::string UndoTitle() const;
  std::string RedoTitle() const;
  /// False when there is nothing, or while a step is open. The objects of the step become selected.
  bool Undo();
  bool Redo();
  /// Undoes or redoes up to a position of Known().
  bool GoTo(std::size_t position);

  /// Counts steps made, undone and redone: it differs whenever the document does.
  std::uint64_t ChangeCount() const { return changes_; }
  void MarkSaved();
  /// The document as it is now is saved nowhere.
  void MarkNeverSaved() { history_.MarkNeverClean(); }

  // Recording, while a step is open.

  UndoStep& Step() { return *open_.back(); }
  ObjectID Insert(std::unique_ptr<DocumentObject> object, const ObjectPlace& place);
  void Remove(ObjectID id);
  void Move(ObjectID id, const ObjectPlace& place);
  /// A layer without objects.
  void RemoveLayer(LayerID id);
  /// Looks whether the object's instance changed by itself. Fails when its class can't write its record; then the
  /// object is as it was when the host last looked.
  Result<> NoticeChange(ObjectID id);

 private:
  friend class EditStep;

  void AfterChange(const ObjectIDs& toSelect);
  void AfterRemoval();

  Document& document_;
  SessionObservers& observers_;
  SessionSelection& selection_;
  ActiveLayer& activeLayer_;
  History history_;
  std::vector<std::unique_ptr<UndoStep>> open_;
  std::string actionName_;
  std::uint64_t changes_ = 0;
};

/// A step that is taken back unless it is ended.
class EditStep {
 public:
  EditStep(SessionSteps& steps, std::string name) : steps_(steps), batch_(steps.document_) {
    steps_.Begin(std::move(name));
  }
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;
  ~EditStep() {
    if (!ended_) steps_.Cancel();
  }
  /// Done, for the end of an edit.
  Success End() {
    ended_ = true;
    steps_.End();
    return {};
  }

 private:
  SessionSteps& steps_;
  Document::AreaBatch batch_;
  bool ended_ = false;
};

}  // namespace host
