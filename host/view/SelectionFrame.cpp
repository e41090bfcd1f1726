#include "host/view/SelectionFrame.h"

#include <algorithm>
#include <cmath>

#include "kit/geometry/AGAffineTransform.h"

namespace host {
namespace {

// In pixels of the view.
constexpr double kRotateDistance = 26;
constexpr double kInnerInset = 14;
constexpr double kLeastSide = 24;  // of a frame that has handles on its sides
constexpr double kInnerSide = 48;  // of one that has handles within

constexpr double kAxisPart = 0.35;  // where the handle of a linear gradient is, as a part of the shorter side

constexpr Handle kEight[] = {Handle::kLowerLeft,  Handle::kBottom, Handle::kLowerRight, Handle::kRight,
                             Handle::kUpperRight, Handle::kTop,    Handle::kUpperLeft,  Handle::kLeft};

}  // namespace

HandleSides SidesOf(Handle handle) {
  switch (handle) {
    case Handle::kLowerLeft:
      return {-1, -1};
    case Handle::kBottom:
      return {0, -1};
    case Handle::kLowerRight:
      return {1, -1};
    case Handle::kRight:
      return {1, 0};
    case Handle::kUpperRight:
      return {1, 1};
    case Handle::kTop:
      return {0, 1};
    case Handle::kUpperLeft:
      return {-1, 1};
    case Handle::kLeft:
      return {-1, 0};
    default:
      return {};
  }
}

const PropertyHandle* PropertyOfHandle(Handle handle) {
  if (handle < Handle::kFirstProperty) return nullptr;
  const std::size_t index = static_cast<std::size_t>(handle) - static_cast<std::size_t>(Handle::kFirstProperty);
  return index < PropertyHandles().size() ? &PropertyHandles()[index] : nullptr;
}

SelectionFrame SelectionFrame::Of(const DocumentSession& session) {
  SelectionFrame frame;
  const ObjectIDs& ids = session.Selection().IDs();
  if (ids.empty()) return frame;
  frame.empty_ = false;
  frame.single_ = ids.size() == 1;
  if (frame.single_) {
    const DocumentObject& object = *session.Doc().Find(ids[0]);
    frame.placement_ = object.Placement();
    for (const PropertyHandle& property : PropertyHandles()) frame.fractions_.push_back(property.FractionOf(object));
    frame.brush_ = object.brush;
    frame.flippedX_ = object.marks.look.flippedX;
    frame.flippedY_ = object.marks.look.flippedY;
  } else {
    frame.placement_.angle = 0;
    session.Selection().GetShownBox(&frame.placement_.bounds);
  }
  return frame;
}

AGPoint SelectionFrame::OnFrame(double x, double y) const {
  return AGAffineTransformRotation(placement_.angle, placement_.bounds.Center()).Apply({x, y});
}

std::vector<Handle> SelectionFrame::Handles(const ViewTransform& view) const {
  std::vector<Handle> handles;
  if (empty_) return handles;
  const AGRect& b = placement_.bounds;
  const double width = std::fabs(b.x1 - b.x0) * view.Zoom();
  const double height = std::fabs(b.y1 - b.y0) * view.Zoom();
  handles.push_back(Handle::kRotate);
  for (Handle handle : kEight) {
    const HandleSides sides = SidesOf(handle);
    if ((sides.x == 0 && width < kLeastSide) || (sides.y == 0 && height < kLeastSide)) continue;
    handles.push_back(handle);
  }
  if (std::min(width, height) < kInnerSide) return handles;
  if ((brush_.Style() == kAGBrushStyleLinearGradient || brush_.Style() == kAGBrushStyleRadialGradient)) {
    handles.push_back(Handle::kGradient);
  }
  for (std::size_t i = 0; i < fractions_.size(); ++i) {
    if (fractions_[i]) handles.push_back(HandleOfProperty(i));
  }
  return handles;
}

HandleTrack SelectionFrame::TrackOf(const PropertyHandle& property, const ViewTransform& view) const {
  return property.track(placement_.bounds, kInnerInset / view.Zoom());
}

AGPoint SelectionFrame::Mirrored(AGPoint map) const {
  const AGRect& b = placement_.bounds;
  if (flippedX_) map.x = b.x0 + b.x1 - map.x;
  if (flippedY_) map.y = b.y0 + b.y1 - map.y;
  return map;
}

AGPoint SelectionFrame::GradientPlace() const {
  const AGRect& b = placement_.bounds;
  if (brush_.Style() == kAGBrushStyleRadialGradient) {
    // The brush's fraction runs downwards.
    return Mirrored(
        {b.x0 + brush_.GradientCenterX() * (b.x1 - b.x0), b.y0 + (1 - brush_.GradientCenterY()) * (b.y1 - b.y0)});
  }
  const double reach = kAxisPart * std::min(std::fabs(b.Width()), std::fabs(b.Height()));
  const AGPoint center = b.Center();
  return Mirrored(
      {center.x + reach * std::cos(-brush_.GradientAngle()), center.y + reach * std::sin(-brush_.GradientAngle())});
}

AGPoint SelectionFrame::PositionOf(Handle handle, const ViewTransform& view) const {
  const AGRect& b = placement_.bounds;
  if (handle == Handle::kRotate) {
    return view.ToView(OnFrame(b.Center().x, b.y1 + kRotateDistance / view.Zoom()));
  }
  if (const PropertyHandle* property = PropertyOfHandle(handle)) {
    const auto index = static_cast<std::size_t>(property - PropertyHandles().data());
    const AGPoint place = Mirrored(TrackOf(*property, view).At(fractions_[index].value_or(0)));
    return view.ToView(OnFrame(place.x, place.y));
  }
  if (handle == Handle::kGradient) {
    const AGPoint place = GradientPlace();
    return view.ToView(OnFrame(place.x, place.y));
  }
  const HandleSides sides = SidesOf(handle);
  const AGPoint center = b.Center();
  return view.ToView(OnFrame(center.x + sides.x * b.Width() / 2, center.y + sides.y * b.Height() / 2));
}

// A frame that is small in the view would be all handles: its inside belongs to the object.
bool SelectionFrame::IsInsideOfSmall(const AGPoint& point, const ViewTransform& view) const {
  const AGRect& b = placement_.bounds;
  const AGPoint map = WithinFrame(point, view);
  const bool small = std::min(std::fabs(b.x1 - b.x0), std::fabs(b.y1 - b.y0)) * view.Zoom() < kLeastSide;
  return small && map.x > b.x0 && map.x < b.x1 && map.y > b.y0 && map.y < b.y1;
}

Handle SelectionFrame::HandleAt(const AGPoint& point, const ViewTransform& view) const {
  if (empty_ || IsInsideOfSmall(point, view)) return Handle::kNone;
  Handle nearest = Handle::kNone;
  double best = kReach;
  for (Handle handle : Handles(view)) {
    const AGPoint place = PositionOf(handle, view);
    const double distance = std::hypot(place.x - point.x, place.y - point.y);
    if (distance > best) continue;
    best = distance;
    nearest = handle;
  }
  return nearest;
}

AGPoint SelectionFrame::WithinFrame(const AGPoint& point, const ViewTransform& view) const {
  return AGAffineTransformRotation(-placement_.angle, placement_.bounds.Center()).Apply(view.ToMap(point));
}

AGBrush SelectionFrame::GradientAt(const AGPoint& point, const ViewTransform& view) const {
  const AGRect& b = placement_.bounds;
  const AGPoint map = Mirrored(WithinFrame(point, view));
  const AGPoint center = b.Center();
  AGBrush brush(brush_);
  if (brush.Style() == kAGBrushStyleRadialGradient) {
    brush.SetGradientCenterX((map.x - b.x0) / (b.x1 - b.x0));
    brush.SetGradientCenterY(1 - (map.y - b.y0) / (b.y1 - b.y0));
  } else {
    brush.SetGradientAngle(-std::atan2(map.y - center.y, map.x - center.x));
  }
  return brush;
}

double SelectionFrame::ValueAt(const PropertyHandle& property, const AGPoint& point, const ViewTransform& view) const {
  return property.ValueOf(TrackOf(property, view).Nearest(Mirrored(WithinFrame(point, view))));
}

}  // namespace host
