#include "kit/panels/AKGUICtrl.h"

namespace {

enum Offset : std::size_t {
  kSetProperty = 96,
  kGetProperty = 112,
  kSetBounds = 128,
  kGetBounds = 144,
  kSetTitle = 160,
  kGetTitle = 176,
  kSetRange = 192,
  kGetRange = 208,
  kSetXPMIcon = 224,
  kGetXPMIcon = 240,
  kSetMenuItemList = 352,
  kGetMenuItemAtIndex = 368,
  kGetMenuItemCount = 384,
  kSetMenuIndex = 400,
  kGetMenuIndex = 416,
  kSetMenuItem = 432,
  kGetMenuItem = 448,
  kGetValuePrecision = 480,
  kGetValueAsString = 496,
  kGetValueAsBool = 512,
  kGetValueAsSInt = 528,
  kGetValueAsUInt = 544,
  kGetValueAsFloat32 = 560,
  kGetValueAsFloat64 = 576,
  kGetValueAsTimeHMS = 592,
  kGetValueAsAGColor = 608,
  kSetValuePrecision = 736,
  kSetValueAsString = 752,
  kSetValueAsBool = 768,
  kSetValueAsSInt = 784,
  kSetValueAsUInt = 800,
  kSetValueAsFloat32 = 816,
  kSetValueAsFloat64 = 832,
  kSetValueAsTimeHMS = 848,
  kSetValueAsAGColor = 864,
  kRefresh = 992,
};

void Construct(AKGUICtrl* control, AKGUIDesc* panel, const char* format, va_list list) {
  if (AKGUICtrl::sWrapper == nullptr) return;
  using Function = void (*)(AKGUICtrl*, AKGUIDesc*, const char*, va_list);
  const auto entry = AKHostTableWord(AKGUICtrl::sWrapper, kAKWrapperConstructorOffset);
  reinterpret_cast<Function>(entry)(control, panel, format, list);
}

}  // namespace

void* AKGUICtrl::sWrapper = nullptr;

AKGUICtrl::AKGUICtrl(AKGUIDesc* panel, const char* format, ...) {
  va_list list;
  va_start(list, format);
  Construct(this, panel, format, list);
  va_end(list);
}

AKGUICtrl::AKGUICtrl(AKGUIDesc* panel, const char* format, va_list list) { Construct(this, panel, format, list); }

AKGUICtrl::~AKGUICtrl() {
  if (sWrapper != nullptr) AKHostCallPlain<void, AKGUICtrl*>(sWrapper, kAKWrapperDestructorOffset, this);
}

unsigned int AKGUICtrl::Property(AKGUIProperty selector) const {
  return Call<unsigned int, unsigned int>(kGetProperty, selector);
}

void AKGUICtrl::SetProperty(AKGUIProperty selector, unsigned int value) {
  Call<void, unsigned int, unsigned int>(kSetProperty, selector, value);
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

void AKGUICtrl::SetBounds(int x0, int y0, int x1, int y1) {
  Call<void, int, int, int, int>(kSetBounds, x0, y0, x1, y1);
}
void AKGUICtrl::GetBounds(int* x0, int* y0, int* x1, int* y1) const {
  Call<void, int*, int*, int*, int*>(kGetBounds, x0, y0, x1, y1);
}
void AKGUICtrl::SetTitle(const AKString& title) { Call<void, const AKString&>(kSetTitle, title); }
AKString AKGUICtrl::GetTitle() const { return Call<AKString>(kGetTitle); }
void AKGUICtrl::SetRange(double minimum, double maximum) { Call<void, double, double>(kSetRange, minimum, maximum); }
void AKGUICtrl::GetRange(double* minimum, double* maximum) const {
  Call<void, double*, double*>(kGetRange, minimum, maximum);
}
void AKGUICtrl::SetXPMIcon(const char** icon) { Call<void, const char**>(kSetXPMIcon, icon); }
const char** AKGUICtrl::GetXPMIcon() const { return Call<const char**>(kGetXPMIcon); }

void AKGUICtrl::SetMenuItemList(const AKStringArray& items) {
  Call<void, const AKStringArray&>(kSetMenuItemList, items);
}
void AKGUICtrl::SetMenuItemList(const AKString& items) { SetMenuItemList(items.SplitToArray(nullptr, nullptr)); }
AKString AKGUICtrl::GetMenuItemAtIndex(unsigned int index) const {
  return Call<AKString, unsigned int>(kGetMenuItemAtIndex, index);
}
unsigned int AKGUICtrl::GetMenuItemCount() const { return Call<unsigned int>(kGetMenuItemCount); }
void AKGUICtrl::SetMenuIndex(unsigned int index) { Call<void, unsigned int>(kSetMenuIndex, index); }
unsigned int AKGUICtrl::GetMenuIndex() const { return Call<unsigned int>(kGetMenuIndex); }
void AKGUICtrl::SetMenuItem(const AKString& item) { Call<void, const AKString&>(kSetMenuItem, item); }
AKString AKGUICtrl::GetMenuItem() const { return Call<AKString>(kGetMenuItem); }

int AKGUICtrl::GetValuePrecision() const { return Call<int>(kGetValuePrecision); }
AKString AKGUICtrl::GetValueAsString() const { return Call<AKString>(kGetValueAsString); }
bool AKGUICtrl::GetValueAsBool() const { return Call<bool>(kGetValueAsBool); }
int AKGUICtrl::GetValueAsSInt() const { return Call<int>(kGetValueAsSInt); }
unsigned int AKGUICtrl::GetValueAsUInt() const { return Call<unsigned int>(kGetValueAsUInt); }
float AKGUICtrl::GetValueAsFloat32() const { return Call<float>(kGetValueAsFloat32); }
double AKGUICtrl::GetValueAsFloat64() const { return Call<double>(kGetValueAsFloat64); }
double AKGUICtrl::GetValueAsTimeHMS() const { return Call<double>(kGetValueAsTimeHMS); }
AGColor AKGUICtrl::GetValueAsAGColor() const {
  const bool hosted = sWrapper != nullptr && HostObject() != nullptr;
  return hosted ? Call<AGColor>(kGetValueAsAGColor) : kAGColorBlack;
}

void AKGUICtrl::SetValuePrecision(int decimals) { Call<void, int>(kSetValuePrecision, decimals); }
void AKGUICtrl::SetValueAsString(const AKString& value) { Call<void, const AKString&>(kSetValueAsString, value); }
void AKGUICtrl::SetValueAsBool(bool value) { Call<void, bool>(kSetValueAsBool, value); }
void AKGUICtrl::SetValueAsSInt(int value) { Call<void, int>(kSetValueAsSInt, value); }
void AKGUICtrl::SetValueAsUInt(unsigned int value) { Call<void, unsigned int>(kSetValueAsUInt, value); }
void AKGUICtrl::SetValueAsFloat32(float value) { Call<void, float>(kSetValueAsFloat32, value); }
void AKGUICtrl::SetValueAsFloat64(double value) { Call<void, double>(kSetValueAsFloat64, value); }
void AKGUICtrl::SetValueAsTimeHMS(double seconds) { Call<void, double>(kSetValueAsTimeHMS, seconds); }
void AKGUICtrl::SetValueAsAGColor(AGColor value) { Call<void, AGColor>(kSetValueAsAGColor, value); }

void AKGUICtrl::Refresh() const { Call<void>(kRefresh); }
