#include "host/window/panels/ObjectPanel.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

#include "host/model/ObjectProperties.h"
#include "host/text/Localisation.h"
#include "host/view/PropertyHandles.h"
#include "host/window/LastStyle.h"
#include "host/window/SlideStep.h"

namespace host {
namespace {

constexpr double kFarthest = 1e6;
constexpr double kSmallest = 0.01;
constexpr double kDegree = std::numbers::pi / 180;

// -180 (excluded) to 180 degrees.
double Degrees(double radians) {
  const double degrees = std::remainder(radians / kDegree, 360);
  return degrees <= -180 ? degrees + 360 : degrees;
}

}  // namespace

ObjectPanel::ObjectPanel()
    : x_(-kFarthest, kFarthest, 1, 2, Tr("X")),
      y_(-kFarthest, kFarthest, 1, 2, Tr("Y")),
      width_(kSmallest, kFarthest, 1, 2, Tr("Width")),
      height_(kSmallest, kFarthest, 1, 2, Tr("Height")),
      angle_(-360, 360, 1, 2, Tr("Angle")),
      opacity_(0, 100, 5, 1, Tr("Opacity")),
      radius_(0, kFarthest, 1, 2, Tr("Radius")) {
  grid_.Row(0, Tr("X"), x_);
  grid_.Row(1, Tr("Y"), y_);
  grid_.Row(2, Tr("Width"), width_);
  grid_.Row(3, Tr("Height"), height_);
  grid_.Row(4, Tr("Angle (°)"), angle_);
  grid_.Row(5, Tr("Opacity (%)"), opacity_);
  grid_.Row(6, Tr("Radius"), radius_);
  append(grid_);
  for (NumberField* field : {&x_, &y_, &width_, &height_, &radius_}) field->SetMeasure(Measure::kLength);
  angle_.SetMeasure(Measure::kAngle);
  const auto connect = [this](NumberField& field, const std::string& name, auto change) {
    field.SignalChosen().connect([this, name, change](double value) {
      AGRect box;
      if (!GetFrame(&box)) return;
      SlideStep::Continue(Session(), "frame " + name);
      change(box, value);
      PlaceFrame(box);
    });
  };
  connect(x_, "x", [](AGRect& box, double value) { box = {value, box.y0, value + box.x1 - box.x0, box.y1}; });
  connect(y_, "y", [](AGRect& box, double value) { box = {box.x0, value, box.x1, value + box.y1 - box.y0}; });
  connect(width_, "width", [](AGRect& box, double value) { box.x1 = box.x0 + value; });
  connect(height_, "height", [](AGRect& box, double value) { box.y1 = box.y0 + value; });
  angle_.SignalChosen().connect([this](double degrees) { SetAngle(degrees); });
  radius_.SignalChosen().connect([this](double radius) { SetRadius(radius); });
  opacity_.SignalChosen().connect([this](double percent) {
    if (Session() == nullptr || Session()->Selection().IsEmpty()) return;
    SlideStep::Continue(Session(), "opacity");
    Report(Session()->Looks().SetOpacity(Session()->Selection().IDs(), percent / 100));
    NoteStyle(*Session());
  });
}

bool ObjectPanel::GetFrame(AGRect* box) const {
  if (Session() == nullptr || Session()->Selection().IsEmpty()) return false;
  const ObjectIDs& ids = Session()->Selection().IDs();
  if (ids.size() > 1) return Session()->Selection().GetShownBox(box);
  *box = Session()->Doc().Find(ids[0])->bounds;
  return true;
}

void ObjectPanel::PlaceFrame(const AGRect& box) {
  const ObjectIDs& ids = Session()->Selection().IDs();
  if (ids.size() == 1) {
    const double angle = Session()->Doc().Find(ids[0])->angle;
    Report(Session()->Objects().SetPlacement(ids[0], {box, angle}));
  } else {
    AGRect from;
    GetFrame(&from);
    Report(Session()->Objects().Resize(ids, from, box));
  }
}

// What all selected objects have; none when they differ.
template <typename Get>
std::optional<double> ObjectPanel::Shared(Get get) const {
  const ObjectIDs& ids = Session()->Selection().IDs();
  const double first = get(*Session()->Doc().Find(ids[0]));
  const auto isSame = [&](ObjectID id) { return get(*Session()->Doc().Find(id)) == first; };
  return std::ranges::all_of(ids, isSame) ? std::optional(first) : std::nullopt;
}

void ObjectPanel::SetAngle(double degrees) {
  if (Session() == nullptr || Session()->Selection().IsEmpty()) return;
  SlideStep::Continue(Session(), "angle");
  Report(Session()->Objects().SetAngle(Session()->Selection().IDs(), degrees * kDegree));
}

void ObjectPanel::OnSelectionShifted() {
  AGRect box;
  if (!GetFrame(&box)) return;
  x_.Show(box.x0);
  y_.Show(box.y0);
}

void ObjectPanel::Refresh() {
  AGRect box;
  if (Session() != nullptr) {
    const LengthUnit unit = Session()->Doc().Aids().unit;
    for (NumberField* field : {&x_, &y_, &width_, &height_, &radius_}) field->SetUnit(unit);
  }
  const bool any = GetFrame(&box);
  grid_.set_sensitive(any);
  if (!any) {
    for (NumberField* field : {&x_, &y_, &width_, &height_, &angle_, &opacity_, &radius_}) field->ShowMixed();
    return;
  }
  OnSelectionShifted();
  width_.Show(box.x1 - box.x0);
  height_.Show(box.y1 - box.y0);
  const auto angleOf = [](const DocumentObject& object) { return object.angle; };
  const auto opacityOf = [](const DocumentObject& object) { return object.marks.look.opacity; };
  const std::optional<double> angle = Shared(angleOf);
  const std::optional<double> opacity = Shared(opacityOf);
  angle ? angle_.Show(Degrees(*angle)) : angle_.ShowMixed();
  opacity ? opacity_.Show(*opacity * 100) : opacity_.ShowMixed();
  ShowRadius();
}

// A property of the class, which is to be asked: of many objects it is not.
void ObjectPanel::ShowRadius() {
  constexpr std::size_t kMostAsked = 100;
  const PropertyHandle& rounding = PropertyHandles()[0];
  const auto radiusOf = [&](const DocumentObject& object) {
    const auto one = LengthOfOne(object.Placement(), std::string(rounding.property));
    const auto fraction = one ? rounding.FractionOf(object) : std::nullopt;
    return fraction ? *fraction * *one : -1;
  };
  const bool isAsked = Session()->Selection().Count() <= kMostAsked;
  const std::optional<double> radius = isAsked ? Shared(radiusOf) : std::nullopt;
  radius_.set_sensitive(!radius || *radius >= 0);
  radius&&* radius >= 0 ? radius_.Show(*radius) : radius_.ShowMixed();
}

// As far as an object's sides let it.
void ObjectPanel::SetRadius(double radius) {
  if (Session() == nullptr || Session()->Selection().IsEmpty()) return;
  SlideStep::Continue(Session(), "radius");
  char text[32];
  *std::to_chars(text, text + sizeof(text) - 3, radius).ptr = '\0';
  const std::string length = std::string(text) + "pt";
  Report(Session()->Objects().SetProperties(Session()->Selection().IDs(),
                                            {{std::string(PropertyHandles()[0].property), length}}));
}

}  // namespace host
