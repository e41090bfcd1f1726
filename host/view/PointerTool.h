// What the pointer does on the canvas: selecting, moving, stretching, turning, rounding, and making objects.
//
// It translates presses, motions and releases in pixels of the view into edits of a session; it draws nothing and knows
// no toolkit. A whole drag is one undo step; Cancel takes it back.
//
//   on a handle            stretch (shift keeps the proportions, control keeps the centre), turn (shift: steps of 15
//                          degrees), round, turn or move a gradient
//   on an object           select, drag to move (shift: only along one axis); shift-click adds or takes away
//   on nothing             a rubber band, which takes what it touches; with shift it adds
//   with a class chosen    drag out a new object (shift: a square); a click makes one of 100 by 100
//
// Alt lets go of the grid.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/view/SelectionFrame.h"

namespace host {

struct PointerModifiers {
  bool shift = false;
  bool control = false;
  bool alt = false;
};

/// Places snap to multiples of a spacing; 0 switches it off.
struct SnapGrid {
  double spacing = 0;
};

class PointerTool {
 public:
  enum class Cursor { kArrow, kMove, kCross, kRotate, kInner, kEastWest, kNorthSouth, kRising, kFalling };

  PointerTool(DocumentSession* session, const ViewTransform* view) : session_(session), view_(view) {}

  /// Another document. A drag is given up.
  void SetSession(DocumentSession* session);
  void SetSnap(const SnapGrid& snap) { snap_ = snap; }
  /// The class of what a drag makes; none to select.
  void SetNewClass(std::optional<AKClassID> classID);
  std::optional<AKClassID> NewClass() const { return newClass_; }

  void Press(const AGPoint& point, PointerModifiers modifiers);
  void Motion(const AGPoint& point, PointerModifiers modifiers);
  /// Fails when what was dragged to was refused.
  Result<> Release(const AGPoint& point, PointerModifiers modifiers);
  /// Takes back what the drag did so far. False when nothing was going on.
  bool Cancel();
  bool IsDragging() const { return mode_ != Mode::kIdle && moved_; }

  /// The rubber band or the outline of the object to come, in map units.
  std::optional<AGRect> Band() const;
  Cursor CursorAt(const AGPoint& point) const;

 private:
  enum class Mode { kIdle, kMove, kStretch, kTurn, kProperty, kGradient, kBand, kMake };

  void StartOn(ObjectID object, PointerModifiers modifiers);
  void Drag(const AGPoint& point, PointerModifiers modifiers);
  void Move(const AGPoint& map, PointerModifiers modifiers);
  void Stretch(const AGPoint& map, PointerModifiers modifiers);
  void Turn(const AGPoint& map, PointerModifiers modifiers);
  void DragProperty(const AGPoint& point);
  void DragGradient(const AGPoint& point);
  void FinishBand(PointerModifiers modifiers);
  void FinishMaking(PointerModifiers modifiers);
  AGRect NewBounds(PointerModifiers modifiers) const;
  double Snapped(double value, PointerModifiers modifiers) const;
  AGPoint Snapped(const AGPoint& map, PointerModifiers modifiers) const;

  DocumentSession* session_;
  const ViewTransform* view_;
  SnapGrid snap_;
  std::optional<AKClassID> newClass_;
  Mode mode_ = Mode::kIdle;
  bool moved_ = false;               // beyond the few pixels of an unsteady hand
  ObjectID toToggle_ = kNoObjectID;  // a shift-click that did not become a drag
  ObjectID toSelectAlone_ = kNoObjectID;
  AGPoint start_;  // in the view
  AGPoint startMap_;
  AGPoint lastMap_;
  PointerModifiers lastModifiers_;
  Handle handle_ = Handle::kNone;
  SelectionFrame frame_;  // as the drag began
  Result<> done_;         // what the last motion did
};

}  // namespace host
