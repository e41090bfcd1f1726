// What the pointer does on the canvas: selecting, moving, stretching, turning, rounding, and making objects.
//
// It translates presses, motions and releases in pixels of the view into edits of a session; it draws nothing and knows
// no toolkit. A whole drag is one undo step; Cancel takes it back.
//
// The step is the pointer's alone. Who wants anything else of the session while it is open - an edit, undo, a copy, a
// file of it - calls Finish first, which lets go of the button where the pointer is; what the pointer still does until
// the next press does nothing. Should the document or the selection change without that, the tool notices: it keeps
// what there is, takes back nothing of it and lets go.
//
//   on a handle            stretch (shift keeps the proportions, control keeps the centre), turn (shift: steps of 15
//                          degrees), round, turn or move a gradient
//   on an object           select, drag to move (shift: only along one axis); shift-click adds or takes away;
//                          alt-click takes the next one below what is selected there, alt-drag moves what is selected
//                          control at the press copies what a drag moves;
//                          a double click enters a group, which otherwise is taken whole
//   on nothing             a rubber band, which takes what it touches; with shift it adds
//   with a class chosen    drag out a new object (shift: a square); a click makes one of 100 by 100
//
// Alt lets go of the grid, of guides and of other objects.
//
// Many objects are moved, stretched and turned at once, at the release: until then the session's selection is only
// shown shifted, or its frame alone goes along, so that a motion costs the same however many they are.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/view/SelectionFrame.h"
#include "host/view/SnapTargets.h"

namespace host {

struct PointerModifiers {
  bool shift = false;
  bool control = false;
  bool alt = false;
};

class PointerTool : public SessionObserver {
 public:
  /// So many objects are changed with each motion; more at the release.
  static constexpr std::size_t kMostChangedLive = 1000;

  enum class Cursor { kArrow, kMove, kCross, kRotate, kInner, kEastWest, kNorthSouth, kRising, kFalling };

  /// The session, which may be null, outlives the tool or is replaced before.
  PointerTool(DocumentSession* session, const ViewTransform* view);
  PointerTool(const PointerTool&) = delete;
  PointerTool& operator=(const PointerTool&) = delete;
  ~PointerTool() override;

  /// Another document. A drag is given up.
  void SetSession(DocumentSession* session);
  void SetSnap(const SnapRules& snap) { snap_ = snap; }
  /// The view's, in its pixels: what lies outside is nothing to snap to.
  void SetSize(const AGSize& size) { size_ = size; }
  /// The class of what a drag makes; none to select.
  void SetNewClass(std::optional<AKClassID> classID);
  /// What new objects are filled and outlined with; none for what the host gives them.
  void SetNewStyle(std::optional<SharedStyle> style) { newStyle_ = std::move(style); }
  std::optional<AKClassID> NewClass() const { return newClass_; }

  void Press(const AGPoint& point, PointerModifiers modifiers);
  void Motion(const AGPoint& point, PointerModifiers modifiers);
  /// Fails when what was dragged to was refused.
  Result<> Release(const AGPoint& point, PointerModifiers modifiers);
  /// Releases where the pointer was last, for somebody else who needs the session. Fails as Release does.
  Result<> Finish() { return Release(lastPoint_, lastModifiers_); }
  /// Takes back what the drag did so far. False when nothing was going on.
  bool Cancel();
  bool IsDragging() const { return mode_ != Mode::kIdle && moved_; }

  /// The rubber band or the outline of the object to come, in map units.
  std::optional<AGRect> Band() const;
  /// The frame that many objects are stretched or turned to at the release.
  std::optional<ObjectPlacement> FrameToCome() const { return frameToCome_; }
  /// What the pointer is over: the cursor for it, and the object that a click would take.
  struct Hover {
    Cursor cursor = Cursor::kArrow;
    ObjectID object = kNoObjectID;
  };
  Hover HoverAt(const AGPoint& point, PointerModifiers modifiers) const;
  /// Where what is dragged fits to others.
  const std::vector<SnapLine>& SnapLines() const { return snapLines_; }
  /// The place, the size or the angle of what is dragged, for beside the pointer; empty when nothing is.
  std::string DragText() const;
  Cursor CursorAt(const AGPoint& point) const { return HoverAt(point, {}).cursor; }
  /// Of a double click: enters the group that is there, one level. False when there is none.
  bool EnterAt(const AGPoint& point);
  /// Selects what a menu at the point is about: what is selected there already, or else the object that is there.
  void SelectForMenu(const AGPoint& point);

  // SessionObserver
  void OnObjectChanged(ObjectID) override { NoticeOthers(); }
  void OnLayersChanged() override { NoticeOthers(); }
  void OnSelectionChanged() override { NoticeOthers(); }
  void OnHistoryChanged() override { NoticeOthers(); }

 private:
  enum class Mode { kIdle, kMove, kStretch, kTurn, kProperty, kGradient, kBand, kMake };

  /// True from a press that a drag may follow which changes what is selected.
  bool HoldsObjects() const { return mode_ != Mode::kIdle && mode_ != Mode::kBand && mode_ != Mode::kMake; }
  bool HasStep() const { return moved_ && HoldsObjects() && !isLater_; }
  void NoticeOthers() { disturbed_ = disturbed_ || (HoldsObjects() && !working_); }
  void Begin();
  void LetGo();
  void StartOn(ObjectID object, PointerModifiers modifiers);
  bool StartBelow(PointerModifiers modifiers);
  void SelectUnit(ObjectID object);
  ObjectID ObjectAt(const AGPoint& point) const;
  ObjectID ObjectBelow(const AGPoint& point, bool* fromSelected) const;
  Cursor CursorOf(Handle handle, double angle) const;
  void Drag(const AGPoint& point, PointerModifiers modifiers);
  void Move(const AGPoint& map, PointerModifiers modifiers);
  void ChangeFrame(const ObjectPlacement& to);
  Result<> MoveCopies(double dx, double dy);
  void FollowFrame(const ObjectPlacement& to);
  void DoLater();
  void Stretch(const AGPoint& map, PointerModifiers modifiers);
  void Turn(const AGPoint& map, PointerModifiers modifiers);
  void DragProperty(const AGPoint& point);
  void DragGradient(const AGPoint& point);
  void FinishBand(bool clicked, PointerModifiers modifiers);
  void FinishMaking(bool clicked, PointerModifiers modifiers);
  AGRect NewBounds(bool clicked, PointerModifiers modifiers) const;
  double Snapped(double value, PointerModifiers modifiers) const;
  AGPoint Snapped(const AGPoint& map, PointerModifiers modifiers) const;
  bool SnapsToTargets(PointerModifiers modifiers) const { return snap_.HasTargets() && !modifiers.alt; }
  AGPoint FitEdges(const AGPoint& map, const AGPoint& place, HandleSides sides, PointerModifiers modifiers) const;

  DocumentSession* session_ = nullptr;
  const ViewTransform* view_;
  SnapRules snap_;
  AGSize size_;
  SnapTargets targets_;  // as the drag began
  std::vector<SnapLine> snapLines_;
  std::optional<AKClassID> newClass_;
  std::optional<SharedStyle> newStyle_;
  Mode mode_ = Mode::kIdle;
  bool moved_ = false;    // beyond the few pixels of an unsteady hand
  bool copies_ = false;   // a drag of objects leaves them and moves copies
  bool isLater_ = false;  // the objects are changed at the release
  std::optional<ObjectPlacement> frameToCome_;
  double turned_ = 0;                // by which several objects are, as the drag began
  ObjectIDs copied_;                 // the selection as the drag began
  AGRect box_;                       // of the selection, as the drag began to move it
  ObjectID toToggle_ = kNoObjectID;  // a shift-click that did not become a drag
  ObjectID toSelectAlone_ = kNoObjectID;
  AGPoint start_;  // in the view
  AGPoint startMap_;
  AGPoint lastPoint_;  // in the view
  AGPoint lastMap_;
  PointerModifiers lastModifiers_;
  Handle handle_ = Handle::kNone;
  SelectionFrame frame_;    // as the drag began
  Result<> done_;           // what the last motion did
  bool working_ = false;    // the tool itself changes the session
  bool disturbed_ = false;  // somebody else did, between press and release
};

}  // namespace host
