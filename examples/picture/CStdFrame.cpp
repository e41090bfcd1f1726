#include "CStdFrame.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"

namespace {

constexpr unsigned int kReservedBytes = 12;
constexpr unsigned int kWidthSlider = 1;

const AKString kKey_Width("Width");

}  // namespace

// A NaN changes nothing.
void CStdFrame::SetWidth(double width) {
  if (!std::isnan(width)) width_ = static_cast<float>(std::fmin(std::fmax(width, 0), 1));
}

int CStdFrame::akmInitWithArgs(const AKArgs& args) {
  double width = 0;
  if (strGetasFloat64(args.GetParam("-width:").CStr(), &width, 0)) SetWidth(width);
  return 0;
}

int CStdFrame::akmInitFromFile(const AKFile& file, unsigned int) {
  float width = 0;
  int status = AKFileReadFloat32(file, &width);
  if (status == 0) status = AKFileSkip(file, kReservedBytes);
  if (status == 0) SetWidth(width);
  return status;
}

int CStdFrame::akmWriteToFile(AKFile& file) const {
  const int status = AKFileWriteFloat32(file, width_);
  return status == 0 ? AKFileWriteZeros(file, kReservedBytes) : status;
}

int CStdFrame::akmSetObjectProperties(const AKDictionary& properties) {
  double width = 0;
  if (AKValueGetasFloat64(properties.GetValue(kKey_Width), &width, true)) SetWidth(width);
  return 0;
}

int CStdFrame::akmGetObjectProperties(AKDictionary* properties) const {
  properties->SetValue(kKey_Width, AKValueSetasFloat64(width_));
  return 0;
}

int CStdFrame::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  if (!copy.WouldFillOrStroke()) return 0;
  AGRect outer = event.bounds;
  outer.Normalize();
  const double width = width_ * std::min(outer.Width(), outer.Height()) / 2;
  const AGRect inner{outer.x0 + width, outer.y0 + width, outer.x1 - width, outer.y1 - width};
  AGPath path;
  path.AddRect(outer, true);
  // A point lies in the frame when it lies in one of the two rectangles.
  if (!inner.IsEmpty()) path.AddRect(inner, true);
  copy.brush.SetFillMode(kAGBrushFillEvenOdd);
  copy.DrawPath(path, AGAffineTransformRotation(event.angle, outer.Center()));
  return 0;
}

AKGUIDesc* CStdFrame::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:1");
  panel->NewController("-type:StaticText -pos:(010;007) -dim:(060;016) -title:\"%s\"", NKLocaleGetString("Width"));
  panel->NewController("-id:%u -type:Slider -pos:(074;002) -dim:(154;020) -range:(0;1)", kWidthSlider);
  panel->SetPanelSize(0, 28);
  return panel.release();
}

int CStdFrame::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  NKLocaleSetDomain(kLocaleDomain);
  if (event.kind == AKGUIEvent::kControlChanged && event.ctrlID == kWidthSlider) {
    SetWidth(panel.GetValueAsFloat64(kWidthSlider));
    event.actionName = AKString(NKLocaleGetString("Change Frame Width"));
  } else if (event.kind != AKGUIEvent::kFillControls) {
    return 0;
  }
  panel.SetValueAsFloat64(kWidthSlider, width_);
  return 0;
}
