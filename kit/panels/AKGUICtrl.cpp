#include "kit/panels/AKGUICtrl.h"

const AKControlTable* AKGUICtrl::sWrapper = nullptr;

AKGUICtrl::AKGUICtrl(AKGUIDesc* panel, const char* format, ...) {
  va_list list;
  va_start(list, format);
  Construct(panel, format, list);
  va_end(list);
}

void AKGUICtrl::Construct(AKGUIDesc* panel, const char* format, va_list list) {
  if (sWrapper != nullptr) sWrapper->construct(this, panel, format, list);
}

AKGUICtrl::~AKGUICtrl() {
  if (sWrapper != nullptr) sWrapper->destruct(this);
}

unsigned int AKGUICtrl::Property(AKGUIProperty selector) const { return Call(&AKControlTable::getProperty, selector); }

void AKGUICtrl::SetProperty(AKGUIProperty selector, unsigned int value) {
  Call(&AKControlTable::setProperty, selector, value);
}

unsigned int AKGUICtrl::CtrlType() const { return Property(kAKGUIPropertyType); }
unsigned int AKGUICtrl::CtrlID() const { return Property(kAKGUIPropertyID); }
bool AKGUICtrl::HasFlag(unsigned int flags) const { return (Property(kAKGUIPropertyFlags) & flags) == flags; }

void AKGUICtrl::SetFlag(unsigned int flags, bool on) {
  const unsigned int old = Property(kAKGUIPropertyFlags);
  SetProperty(kAKGUIPropertyFlags, on ? (old | flags) : (old & ~flags));
}

void AKGUICtrl::SetVisible(bool visible) { SetProperty(kAKGUIPropertyVisible, visible ? 1 : 0); }
bool AKGUICtrl::IsVisible() const { return Property(kAKGUIPropertyVisible) != 0; }
void AKGUICtrl::SetEnable(bool enabled) { SetProperty(kAKGUIPropertyEnabled, enabled ? 1 : 0); }
bool AKGUICtrl::IsEnable() const { return Property(kAKGUIPropertyEnabled) != 0; }

bool AKGUICtrl::HasFeatureValue() const { return Property(kAKGUIPropertyHasValue) != 0; }
bool AKGUICtrl::HasFeatureRange() const { return Property(kAKGUIPropertyHasRange) != 0; }
bool AKGUICtrl::HasFeatureTitle() const { return Property(kAKGUIPropertyHasTitle) != 0; }
bool AKGUICtrl::HasFeatureItems() const { return Property(kAKGUIPropertyHasItems) != 0; }
bool AKGUICtrl::HasFeatureIcon() const { return Property(kAKGUIPropertyHasIcon) != 0; }

void AKGUICtrl::SetBounds(int x0, int y0, int x1, int y1) { Call(&AKControlTable::setBounds, x0, y0, x1, y1); }
void AKGUICtrl::GetBounds(int* x0, int* y0, int* x1, int* y1) const {
  if (!IsHosted()) return AKSetNeutral(x0, y0, x1, y1);
  Call(&AKControlTable::getBounds, x0, y0, x1, y1);
}
void AKGUICtrl::SetTitle(const AKString& title) { Call(&AKControlTable::setTitle, title); }
AKString AKGUICtrl::GetTitle() const { return Call(&AKControlTable::getTitle); }
void AKGUICtrl::SetRange(double minimum, double maximum) { Call(&AKControlTable::setRange, minimum, maximum); }
void AKGUICtrl::GetRange(double* minimum, double* maximum) const {
  if (!IsHosted()) return AKSetNeutral(minimum, maximum);
  Call(&AKControlTable::getRange, minimum, maximum);
}
void AKGUICtrl::SetXPMIcon(const char** icon) { Call(&AKControlTable::setXPMIcon, icon); }
const char** AKGUICtrl::GetXPMIcon() const { return Call(&AKControlTable::getXPMIcon); }

void AKGUICtrl::SetMenuItemList(const AKStringArray& items) { Call(&AKControlTable::setMenuItemList, items); }
void AKGUICtrl::SetMenuItemList(const AKString& items) { SetMenuItemList(items.SplitToArray(nullptr, nullptr)); }
AKString AKGUICtrl::GetMenuItemAtIndex(unsigned int index) const {
  return Call(&AKControlTable::getMenuItemAtIndex, index);
}
unsigned int AKGUICtrl::GetMenuItemCount() const { return Call(&AKControlTable::getMenuItemCount); }
void AKGUICtrl::SetMenuIndex(unsigned int index) { Call(&AKControlTable::setMenuIndex, index); }
unsigned int AKGUICtrl::GetMenuIndex() const { return Call(&AKControlTable::getMenuIndex); }
void AKGUICtrl::SetMenuItem(const AKString& item) { Call(&AKControlTable::setMenuItem, item); }
AKString AKGUICtrl::GetMenuItem() const { return Call(&AKControlTable::getMenuItem); }

int AKGUICtrl::GetValuePrecision() const { return Call(&AKControlTable::getValuePrecision); }
AKString AKGUICtrl::GetValueAsString() const { return Call(&AKControlTable::getValueAsString); }
bool AKGUICtrl::GetValueAsBool() const { return Call(&AKControlTable::getValueAsBool); }
int AKGUICtrl::GetValueAsSInt() const { return Call(&AKControlTable::getValueAsSInt); }
unsigned int AKGUICtrl::GetValueAsUInt() const { return Call(&AKControlTable::getValueAsUInt); }
float AKGUICtrl::GetValueAsFloat32() const { return Call(&AKControlTable::getValueAsFloat32); }
double AKGUICtrl::GetValueAsFloat64() const { return Call(&AKControlTable::getValueAsFloat64); }
double AKGUICtrl::GetValueAsTimeHMS() const { return Call(&AKControlTable::getValueAsTimeHMS); }
AGColor AKGUICtrl::GetValueAsAGColor() const {
  return IsHosted() ? Call(&AKControlTable::getValueAsAGColor) : kAGColorBlack;
}

void AKGUICtrl::SetValuePrecision(int decimals) { Call(&AKControlTable::setValuePrecision, decimals); }
void AKGUICtrl::SetValueAsString(const AKString& value) { Call(&AKControlTable::setValueAsString, value); }
void AKGUICtrl::SetValueAsBool(bool value) { Call(&AKControlTable::setValueAsBool, value); }
void AKGUICtrl::SetValueAsSInt(int value) { Call(&AKControlTable::setValueAsSInt, value); }
void AKGUICtrl::SetValueAsUInt(unsigned int value) { Call(&AKControlTable::setValueAsUInt, value); }
void AKGUICtrl::SetValueAsFloat32(float value) { Call(&AKControlTable::setValueAsFloat32, value); }
void AKGUICtrl::SetValueAsFloat64(double value) { Call(&AKControlTable::setValueAsFloat64, value); }
void AKGUICtrl::SetValueAsTimeHMS(double seconds) { Call(&AKControlTable::setValueAsTimeHMS, seconds); }
void AKGUICtrl::SetValueAsAGColor(AGColor value) { Call(&AKControlTable::setValueAsAGColor, value); }

void AKGUICtrl::Refresh() const { Call(&AKControlTable::refresh); }
