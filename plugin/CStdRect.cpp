#include "plugin/CStdRect.h"

#include <memory>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

const AKString kKey_Rounding("Rounding");

// The curvature is the last field, right behind what the parent classes keep.
static_assert(sizeof(CStdRect) == CStdRect::kInstanceSize);
static_assert(sizeof(CStdRect) == sizeof(AKObjectSymbolVect) + sizeof(double));

namespace {

constexpr unsigned int kReservedBytes = 12;

// Control IDs of the inspector panel.
constexpr unsigned int kLabel = 0;
constexpr unsigned int kNumberField = 1;
constexpr unsigned int kSlider = 2;

// A NaN passes through.
double ClampCurvature(double value) {
  if (value <= 0) return 0;
  return value > 1 ? 1 : value;
}

void ShowCurvature(AKGUIDesc& panel, double curvature) {
  panel.SetValueAsFloat64(kNumberField, curvature);
  panel.SetValueAsFloat64(kSlider, curvature);
}

}  // namespace

int CStdRect::akmInitWithArgs(const AKArgs& args) {
  if (args.IsParam("-default")) curvature_ = 0.5;
  return 0;
}

// The version is not needed and the value is not clamped: a document gives back what it was given.
int CStdRect::akmInitFromFile(const AKFile& file, unsigned int) {
  const int status = AKFileReadFloat32(file, &curvature_, 0);
  return status == 0 ? AKFileSkip(file, kReservedBytes) : status;
}

int CStdRect::akmWriteToFile(AKFile& file) const {
  const int status = AKFileWriteFloat32(file, curvature_, 0);
  return status == 0 ? AKFileWriteZeros(file, kReservedBytes) : status;
}

int CStdRect::akmDelete() { return 0; }

int CStdRect::akmSetObjectProperties(const AKDictionary& properties) {
  if (AKValueGetasFloat64(properties.GetValue(kKey_Rounding), &curvature_, false)) {
    curvature_ = ClampCurvature(curvature_);
  }
  return 0;
}

int CStdRect::akmGetObjectProperties(AKDictionary* properties) const {
  AKValue value;
  AKValueSetasFloat64(&value, curvature_);
  properties->SetValue(kKey_Rounding, value);
  return 0;
}

int CStdRect::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  copy.pen.SetLineJoin(kAGPenLineJoinRound);
  if (!copy.WouldFillOrStroke()) return 0;
  AGPath path;
  path.AddRoundedRect(event.bounds, curvature_, false);
  copy.DrawPath(path, AGAffineTransformRotation(event.angle, event.bounds.Center()));
  return 0;
}

AGRect CStdRect::akmGetNaturalBounds() const { return kNatBounds; }

AKGUIDesc* CStdRect::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:1");
  const char* label = NKLocaleGetString("Curvature");
  panel->NewController("-id:%d -type:StaticText  -pos:(010;%d) -dim:(068;016) -title:\"%s\"", kLabel, 7, label);
  panel->NewController("-id:%d -type:EditNum     -pos:(082;%d) -dim:(048;022) -prec:2", kNumberField, 2);
  panel->NewController("-id:%d -type:Slider      -pos:(130;%d) -dim:(098;020) -range:(0;1)", kSlider, 2);
  panel->SetPanelSize(0, 28);
  return panel.release();
}

int CStdRect::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  NKLocaleSetDomain(kLocaleDomain);
  if (event.kind == AKGUIEvent::kFillControls) {
    ShowCurvature(panel, curvature_);
  } else if (event.kind == AKGUIEvent::kControlChanged && (event.ctrlID == kNumberField || event.ctrlID == kSlider)) {
    curvature_ = ClampCurvature(panel.GetValueAsFloat64(event.ctrlID));
    ShowCurvature(panel, curvature_);
    event.actionName = AKString(NKLocaleGetString("Change Rectangle Curvature"));
  }
  return 0;
}
