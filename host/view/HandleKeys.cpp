#include "host/view/HandleKeys.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/text/Localisation.h"
#include "kit/geometry/AGAffineTransform.h"

namespace host {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kHundredth = 0.01;
constexpr double kLeastSide = 1;  // map units

Result<> Turn(DocumentSession* session, const ObjectPlacement& frame, double angle) {
  const ObjectIDs& ids = session->Selection().IDs();
  if (ids.size() == 1) return session->Objects().SetAngle(ids, frame.angle + angle);
  return session->Objects().Rotate(ids, angle, frame.bounds.Center());
}

// A side goes no further than it takes to keep something between the two; what is thinner already may grow.
void MoveSide(int side, double by, double* low, double* high) {
  if (side > 0) *high = std::max(*high + by, std::min(*high, *low + kLeastSide));
  if (side < 0) *low = std::min(*low + by, std::max(*low, *high - kLeastSide));
}

Result<> Stretch(DocumentSession* session, const ObjectPlacement& frame, HandleSides sides, const AGPoint& by) {
  const AGPoint within = AGAffineTransformRotation(-frame.angle).Apply(by);
  AGRect box = frame.bounds;
  MoveSide(sides.x, within.x, &box.x0, &box.x1);
  MoveSide(sides.y, within.y, &box.y0, &box.y1);
  const ObjectIDs& ids = session->Selection().IDs();
  if (ids.size() == 1) return session->Objects().SetPlacement(ids[0], Stretched(frame, box));
  return session->Objects().Resize(ids, frame.bounds, box);
}

Result<> MoveGradient(DocumentSession* session, const DocumentObject& object, const AGPoint& by) {
  AGBrush brush(object.brush);
  const auto& look = object.marks.look;
  if (brush.Style() == kAGBrushStyleRadialGradient) {
    if (!(object.bounds.Width() > 0) || !(object.bounds.Height() > 0)) return {};
    AGPoint within = AGAffineTransformRotation(-object.angle).Apply(by);
    if (look.flippedX) within.x = -within.x;
    if (look.flippedY) within.y = -within.y;
    brush.SetGradientCenterX(std::clamp(brush.GradientCenterX() + within.x / object.bounds.Width(), 0.0, 1.0));
    brush.SetGradientCenterY(std::clamp(brush.GradientCenterY() - within.y / object.bounds.Height(), 0.0, 1.0));
  } else {
    const double clockwise = look.flippedX == look.flippedY ? kDegree : -kDegree;
    brush.SetGradientAngle(std::remainder(brush.GradientAngle() + (by.x - by.y) * clockwise, 2 * std::numbers::pi));
  }
  return session->Objects().SetBrush({object.id}, brush);
}

Result<> MoveProperty(DocumentSession* session, const DocumentObject& object, const PropertyHandle& property,
                      const AGPoint& by) {
  const std::optional<double> fraction = property.FractionOf(object);
  if (!fraction) return {};
  const HandleTrack track = property.track(object.bounds, 0);
  AGPoint along = track.atMost - track.atLeast;
  if (object.marks.look.flippedX) along.x = -along.x;
  if (object.marks.look.flippedY) along.y = -along.y;
  along = AGAffineTransformRotation(object.angle).Apply(along);
  const double way = along.x * by.x + along.y * by.y;
  if (way == 0) return {};
  const double step = std::copysign(kHundredth * std::hypot(by.x, by.y), way);
  const std::string value = NumberText(property.ValueOf(std::clamp(*fraction + step, 0.0, 1.0)));
  return session->Objects().SetProperties({object.id}, {{std::string(property.property), value}});
}

}  // namespace

Handle HandleKeys::Taken(const SelectionFrame& frame, const ViewTransform& view) const {
  const std::vector<Handle> handles = frame.Handles(view);
  return std::find(handles.begin(), handles.end(), taken_) == handles.end() ? Handle::kNone : taken_;
}

bool HandleKeys::TakeNext(const SelectionFrame& frame, const ViewTransform& view, bool backwards) {
  const std::vector<Handle> handles = frame.Handles(view);
  if (handles.empty()) return false;
  const auto at = static_cast<std::size_t>(std::find(handles.begin(), handles.end(), taken_) - handles.begin());
  const std::size_t count = handles.size();
  if (at == count) {
    taken_ = backwards ? handles.back() : handles.front();
  } else {
    taken_ = handles[(at + (backwards ? count - 1 : 1)) % count];
  }
  return true;
}

bool HandleKeys::LetGo() {
  const bool had = taken_ != Handle::kNone;
  taken_ = Handle::kNone;
  return had;
}

Result<> MoveHandle(DocumentSession* session, Handle handle, const AGPoint& by) {
  const SelectionFrame frame = SelectionFrame::Of(*session);
  if (frame.IsEmpty() || handle == Handle::kNone) return {};
  if (handle == Handle::kRotate) return Turn(session, frame.Placement(), (by.y - by.x) * kDegree);
  const HandleSides sides = SidesOf(handle);
  if (sides.x != 0 || sides.y != 0) return Stretch(session, frame.Placement(), sides, by);
  if (!frame.IsSingle()) return {};
  const DocumentObject& object = *session->Doc().Find(session->Selection().IDs()[0]);
  if (handle == Handle::kGradient) return MoveGradient(session, object, by);
  const PropertyHandle* const property = PropertyOfHandle(handle);
  return property == nullptr ? Result<>() : MoveProperty(session, object, *property, by);
}

std::string NameOf(Handle handle) {
  static constexpr Text kNames[] = {N_("None"),       N_("Lower Left Corner"),
                                    N_("Lower Side"), N_("Lower Right Corner"),
                                    N_("Right Side"), N_("Upper Right Corner"),
                                    N_("Upper Side"), N_("Upper Left Corner"),
                                    N_("Left Side"),  N_("Turn"),
                                    N_("Gradient")};
  if (const PropertyHandle* property = PropertyOfHandle(handle)) return Tr(property->property);
  return Tr(kNames[static_cast<std::size_t>(handle)]);
}

}  // namespace host
