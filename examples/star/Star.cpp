#include "Star.h"

#include <cmath>
#include <memory>
#include <numbers>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace {

constexpr unsigned int kReservedBytes = 8;

// Control IDs of the panel.
constexpr unsigned int kPointsField = 1;
constexpr unsigned int kInnerSlider = 2;

const AKString kKey_Points("Points");
const AKString kKey_InnerRadius("InnerRadius");

}  // namespace

// A NaN changes nothing.
void Star::SetPoints(double points) {
  if (std::isnan(points)) return;
  points_ = static_cast<unsigned int>(std::fmin(std::fmax(std::floor(points + 0.5), kFewestPoints), kMostPoints));
}

void Star::SetInnerRadius(double radius) {
  if (!std::isnan(radius)) innerRadius_ = std::fmin(std::fmax(radius, 0), 1);
}

int Star::akmInitWithArgs(const AKArgs& args) {
  double number = 0;
  if (strGetasFloat64(args.GetParam("-points:").CStr(), &number, 0)) SetPoints(number);
  if (strGetasFloat64(args.GetParam("-inner:").CStr(), &number, 0)) SetInnerRadius(number);
  return 0;
}

int Star::akmInitFromFile(const AKFile& file, unsigned int) {
  unsigned int points = 0;
  double radius = 0;
  int status = AKFileReadUInt32(file, &points, 0);
  if (status == 0) status = AKFileReadFloat32(file, &radius, 0);
  if (status == 0) status = AKFileSkip(file, kReservedBytes);
  if (status != 0) return status;
  // A damaged record must not make a star of four billion points.
  SetPoints(points);
  SetInnerRadius(radius);
  return 0;
}

int Star::akmWriteToFile(AKFile& file) const {
  int status = AKFileWriteUInt32(file, points_, 0);
  if (status == 0) status = AKFileWriteFloat32(file, innerRadius_, 0);
  return status == 0 ? AKFileWriteZeros(file, kReservedBytes) : status;
}

int Star::akmSetObjectProperties(const AKDictionary& properties) {
  double number = 0;
  if (AKValueGetasFloat64(properties.GetValue(kKey_Points), &number, true)) SetPoints(number);
  if (AKValueGetasFloat64(properties.GetValue(kKey_InnerRadius), &number, true)) SetInnerRadius(number);
  return 0;
}

int Star::akmGetObjectProperties(AKDictionary* properties) const {
  AKValue value;
  AKValueSetasUInt(&value, points_);
  properties->SetValue(kKey_Points, value);
  AKValueSetasFloat64(&value, innerRadius_);
  properties->SetValue(kKey_InnerRadius, value);
  return 0;
}

int Star::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  // The host's context stays as it is: everything happens in a copy.
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  if (!copy.WouldFillOrStroke()) return 0;
  const AGPoint center = event.bounds.Center();
  const double rx = (event.bounds.x1 - event.bounds.x0) / 2;
  const double ry = (event.bounds.y1 - event.bounds.y0) / 2;
  AGPointArray corners;
  for (unsigned int i = 0; i < 2 * points_; ++i) {
    const double angle = std::numbers::pi * (0.5 + i / static_cast<double>(points_));  // the first point is on top
    const double part = i % 2 == 0 ? 1 : innerRadius_;
    corners.Append({center.x + rx * part * std::cos(angle), center.y + ry * part * std::sin(angle)});
  }
  AGPath path;
  path.AddLines(corners, true);
  copy.DrawPath(path, AGAffineTransformRotation(event.angle, center));
  return 0;
}

AKGUIDesc* Star::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:1");
  panel->NewController("-type:StaticText -pos:(010;007) -dim:(080;016) -title:\"%s\"", NKLocaleGetString("Points"));
  panel->NewController("-id:%d -type:EditNum -pos:(094;002) -dim:(048;022) -prec:0 -range:(%u;%u)", kPointsField,
                       kFewestPoints, kMostPoints);
  panel->NewController("-type:StaticText -pos:(010;035) -dim:(080;016) -title:\"%s\"",
                       NKLocaleGetString("Inner radius"));
  panel->NewController("-id:%d -type:Slider -pos:(094;030) -dim:(134;020) -range:(0;1)", kInnerSlider);
  panel->SetPanelSize(0, 56);
  return panel.release();
}

void Star::ShowIn(AKGUIDesc& panel) const {
  panel.SetValueAsUInt(kPointsField, points_);
  panel.SetValueAsFloat64(kInnerSlider, innerRadius_);
}

int Star::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  NKLocaleSetDomain(kLocaleDomain);
  if (event.kind == AKGUIEvent::kFillControls) ShowIn(panel);
  if (event.kind != AKGUIEvent::kControlChanged) return 0;
  if (event.ctrlID == kPointsField) {
    SetPoints(panel.GetValueAsFloat64(kPointsField));
    event.actionName = AKString(NKLocaleGetString("Change Star Points"));
  } else if (event.ctrlID == kInnerSlider) {
    SetInnerRadius(panel.GetValueAsFloat64(kInnerSlider));
    event.actionName = AKString(NKLocaleGetString("Change Star Radius"));
  }
  ShowIn(panel);
  return 0;
}
