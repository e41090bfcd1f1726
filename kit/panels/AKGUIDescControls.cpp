// The per-control operations of panels: find the control, do the same there.
#include "kit/panels/AKGUIDesc.h"

namespace {

void With(const AKGUIDesc* panel, unsigned int id, auto operation) {
  if (AKGUICtrl* control = panel->GetController(id)) operation(control);
}

template <typename Result>
Result From(const AKGUIDesc* panel, unsigned int id, Result neutral, auto operation) {
  const AKGUICtrl* control = panel->GetController(id);
  return control != nullptr ? operation(control) : neutral;
}

}  // namespace

unsigned int AKGUIDesc::CtrlType(unsigned int id) const {
  return From(this, id, 0U, [](auto* control) { return control->CtrlType(); });
}
void AKGUIDesc::SetFlag(unsigned int id, unsigned int flags, bool on) {
  With(this, id, [&](auto* control) { control->SetFlag(flags, on); });
}
bool AKGUIDesc::HasFlag(unsigned int id, unsigned int flags) const {
  return From(this, id, false, [&](auto* control) { return control->HasFlag(flags); });
}
void AKGUIDesc::SetBounds(unsigned int id, int x0, int y0, int x1, int y1) {
  With(this, id, [&](auto* control) { control->SetBounds(x0, y0, x1, y1); });
}
void AKGUIDesc::GetBounds(unsigned int id, int* x0, int* y0, int* x1, int* y1) const {
  AKSetNeutral(x0, y0, x1, y1);
  With(this, id, [&](const auto* control) { control->GetBounds(x0, y0, x1, y1); });
}
void AKGUIDesc::SetVisible(unsigned int id, bool visible) {
  With(this, id, [&](auto* control) { control->SetVisible(visible); });
}
bool AKGUIDesc::IsVisible(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->IsVisible(); });
}
void AKGUIDesc::SetEnable(unsigned int id, bool enabled) {
  With(this, id, [&](auto* control) { control->SetEnable(enabled); });
}
bool AKGUIDesc::IsEnable(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->IsEnable(); });
}

bool AKGUIDesc::HasFeatureTitle(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->HasFeatureTitle(); });
}
void AKGUIDesc::SetTitle(unsigned int id, const AKString& title) {
  With(this, id, [&](auto* control) { control->SetTitle(title); });
}
AKString AKGUIDesc::GetTitle(unsigned int id) const {
  return From(this, id, kAKNullString, [](auto* control) { return control->GetTitle(); });
}

bool AKGUIDesc::HasFeatureItems(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->HasFeatureItems(); });
}
void AKGUIDesc::SetMenuItemList(unsigned int id, const AKStringArray& items) {
  With(this, id, [&](auto* control) { control->SetMenuItemList(items); });
}
void AKGUIDesc::SetMenuItemList(unsigned int id, const AKString& items) {
  With(this, id, [&](auto* control) { control->SetMenuItemList(items); });
}
AKString AKGUIDesc::GetMenuItemAtIndex(unsigned int id, unsigned int index) const {
  return From(this, id, kAKNullString, [&](auto* control) { return control->GetMenuItemAtIndex(index); });
}
unsigned int AKGUIDesc::GetMenuItemCount(unsigned int id) const {
  return From(this, id, 0U, [](auto* control) { return control->GetMenuItemCount(); });
}
void AKGUIDesc::SetMenuIndex(unsigned int id, unsigned int index) {
  With(this, id, [&](auto* control) { control->SetMenuIndex(index); });
}
unsigned int AKGUIDesc::GetMenuIndex(unsigned int id) const {
  return From(this, id, 0U, [](auto* control) { return control->GetMenuIndex(); });
}
void AKGUIDesc::SetMenuItem(unsigned int id, const AKString& item) {
  With(this, id, [&](auto* control) { control->SetMenuItem(item); });
}
AKString AKGUIDesc::GetMenuItem(unsigned int id) const {
  return From(this, id, kAKNullString, [](auto* control) { return control->GetMenuItem(); });
}

bool AKGUIDesc::HasFeatureIcon(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->HasFeatureIcon(); });
}
void AKGUIDesc::SetXPMIcon(unsigned int id, const char** icon) {
  With(this, id, [&](auto* control) { control->SetXPMIcon(icon); });
}
const char** AKGUIDesc::GetXPMIcon(unsigned int id) const {
  return From(this, id, static_cast<const char**>(nullptr), [](auto* control) { return control->GetXPMIcon(); });
}

bool AKGUIDesc::HasFeatureRange(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->HasFeatureRange(); });
}
void AKGUIDesc::SetRange(unsigned int id, double minimum, double maximum) {
  With(this, id, [&](auto* control) { control->SetRange(minimum, maximum); });
}
void AKGUIDesc::GetRange(unsigned int id, double* minimum, double* maximum) const {
  AKSetNeutral(minimum, maximum);
  With(this, id, [&](const auto* control) { control->GetRange(minimum, maximum); });
}

bool AKGUIDesc::HasFeatureValue(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->HasFeatureValue(); });
}
int AKGUIDesc::GetValuePrecision(unsigned int id) const {
  return From(this, id, 0, [](auto* control) { return control->GetValuePrecision(); });
}
AKString AKGUIDesc::GetValueAsString(unsigned int id) const {
  return From(this, id, kAKNullString, [](auto* control) { return control->GetValueAsString(); });
}
bool AKGUIDesc::GetValueAsBool(unsigned int id) const {
  return From(this, id, false, [](auto* control) { return control->GetValueAsBool(); });
}
int AKGUIDesc::GetValueAsSInt(unsigned int id) const {
  return From(this, id, 0, [](auto* control) { return control->GetValueAsSInt(); });
}
unsigned int AKGUIDesc::GetValueAsUInt(unsigned int id) const {
  return From(this, id, 0U, [](auto* control) { return control->GetValueAsUInt(); });
}
float AKGUIDesc::GetValueAsFloat32(unsigned int id) const {
  return From(this, id, 0.0F, [](auto* control) { return control->GetValueAsFloat32(); });
}
double AKGUIDesc::GetValueAsFloat64(unsigned int id) const {
  return From(this, id, 0.0, [](auto* control) { return control->GetValueAsFloat64(); });
}
double AKGUIDesc::GetValueAsTimeHMS(unsigned int id) const {
  return From(this, id, 0.0, [](auto* control) { return control->GetValueAsTimeHMS(); });
}
AGColor AKGUIDesc::GetValueAsAGColor(unsigned int id) const {
  return From(this, id, kAGColorBlack, [](auto* control) { return control->GetValueAsAGColor(); });
}

void AKGUIDesc::SetValuePrecision(unsigned int id, int decimals) {
  With(this, id, [&](auto* control) { control->SetValuePrecision(decimals); });
}
void AKGUIDesc::SetValueAsString(unsigned int id, const AKString& value) {
  With(this, id, [&](auto* control) { control->SetValueAsString(value); });
}
void AKGUIDesc::SetValueAsBool(unsigned int id, bool value) {
  With(this, id, [&](auto* control) { control->SetValueAsBool(value); });
}
void AKGUIDesc::SetValueAsSInt(unsigned int id, int value) {
  With(this, id, [&](auto* control) { control->SetValueAsSInt(value); });
}
void AKGUIDesc::SetValueAsUInt(unsigned int id, unsigned int value) {
  With(this, id, [&](auto* control) { control->SetValueAsUInt(value); });
}
void AKGUIDesc::SetValueAsFloat32(unsigned int id, float value) {
  With(this, id, [&](auto* control) { control->SetValueAsFloat32(value); });
}
void AKGUIDesc::SetValueAsFloat64(unsigned int id, double value) {
  With(this, id, [&](auto* control) { control->SetValueAsFloat64(value); });
}
void AKGUIDesc::SetValueAsTimeHMS(unsigned int id, double seconds) {
  With(this, id, [&](auto* control) { control->SetValueAsTimeHMS(seconds); });
}
void AKGUIDesc::SetValueAsAGColor(unsigned int id, AGColor value) {
  With(this, id, [&](auto* control) { control->SetValueAsAGColor(value); });
}

void AKGUIDesc::Refresh(unsigned int id) const {
  With(this, id, [](const auto* control) { control->Refresh(); });
}
