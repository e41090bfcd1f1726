// The frame around the selected objects, with the handles that change them.
//
// One object has a frame that is turned with it; several have the upright box of them all. Besides the eight handles of
// the sides and corners there is one to turn the frame, above the middle of its top, and, for one object, those of its
// properties (PropertyHandles.h). One object that is filled with a gradient has a handle for that: on the axis of a
// linear one, in the centre of a radial one.
#pragma once

#include <optional>
#include <vector>

#include "host/session/DocumentSession.h"
#include "host/view/PropertyHandles.h"
#include "host/view/ViewTransform.h"

namespace host {

enum class Handle {
  kNone,
  kLowerLeft,
  kBottom,
  kLowerRight,
  kRight,
  kUpperRight,
  kTop,
  kUpperLeft,
  kLeft,
  kRotate,
  kGradient,
  kFirstProperty,  ///< the entry i of PropertyHandles() has the handle kFirstProperty + i
};

/// The handle of an entry of PropertyHandles(), and back: null for any other.
constexpr Handle HandleOfProperty(std::size_t index) {
  return static_cast<Handle>(static_cast<std::size_t>(Handle::kFirstProperty) + index);
}
const PropertyHandle* PropertyOfHandle(Handle handle);

/// Which sides of the frame a handle moves: -1 the left or lower one, 1 the right or upper one, 0 neither.
struct HandleSides {
  int x = 0;
  int y = 0;
};
/// {0, 0} for a handle that is none of the eight.
HandleSides SidesOf(Handle handle);

class SelectionFrame {
 public:
  /// Half the side of a handle, in pixels of the view, and how far from it the pointer still takes it.
  static constexpr double kHalfHandle = 4;
  static constexpr double kReach = 7;

  /// Of the session's selection; empty when nothing is selected.
  static SelectionFrame Of(const DocumentSession& session);

  /// The frame of the same objects when they are somewhere else.
  SelectionFrame At(const ObjectPlacement& placement) const {
    SelectionFrame frame(*this);
    frame.placement_ = placement;
    return frame;
  }

  bool IsEmpty() const { return empty_; }
  bool IsSingle() const { return single_; }
  const ObjectPlacement& Placement() const { return placement_; }
  /// The handles that there is room for, in the order in which they are drawn.
  std::vector<Handle> Handles(const ViewTransform& view) const;
  /// Where a handle is in the view.
  AGPoint PositionOf(Handle handle, const ViewTransform& view) const;
  /// The handle that the pointer takes.
  Handle HandleAt(const AGPoint& point, const ViewTransform& view) const;
  /// The value of a property that puts its handle nearest to a point of the view.
  double ValueAt(const PropertyHandle& property, const AGPoint& point, const ViewTransform& view) const;
  /// The brush whose gradient has its handle nearest to a point of the view.
  AGBrush GradientAt(const AGPoint& point, const ViewTransform& view) const;

 private:
  AGPoint OnFrame(double x, double y) const;  // of map units within the unturned bounds
  AGPoint WithinFrame(const AGPoint& point, const ViewTransform& view) const;  // the way back, from the view
  AGPoint Mirrored(AGPoint map) const;  // within the bounds, as what the class draws is shown
  AGPoint GradientPlace() const;
  bool IsInsideOfSmall(const AGPoint& point, const ViewTransform& view) const;
  HandleTrack TrackOf(const PropertyHandle& property, const ViewTransform& view) const;

  bool empty_ = true;
  bool single_ = false;
  ObjectPlacement placement_;
  std::vector<std::optional<double>> fractions_;  // of PropertyHandles(), for one object
  bool flippedX_ = false;
  bool flippedY_ = false;
  AGBrush brush_;  // of the one object
};

}  // namespace host
