#include "host/panels/HostControl.h"

#include <cmath>

#include "host/panels/Description.h"
#include "kit/AKTextConversions.h"

namespace host {
namespace {

struct TypeName {
  ControlType type;
  const char* name;
};
constexpr TypeName kTypeNames[] = {
    {ControlType::kStaticText, "StaticText"},
    {ControlType::kEditNum, "EditNum"},
    {ControlType::kSlider, "Slider"},
};

// Nearest whole number, at most the type's limits; 0 for a NaN.
template <typename Integer>
Integer RoundInto(double value, double lowest, double highest) {
  if (std::isnan(value)) return 0;
  return static_cast<Integer>(std::fmin(std::fmax(std::floor(value + 0.5), lowest), highest));
}

}  // namespace

const char* ControlTypeName(ControlType type) {
  for (const TypeName& entry : kTypeNames) {
    if (entry.type == type) return entry.name;
  }
  return "Unknown";
}

HostControl::HostControl(AKString const& description) {
  ParseDescription(description, [this](AKString const& item) { return TakeItem(item); });
}

HostControl* HostControl::Of(AKGUICtrl const* wrapper) {
  return wrapper == nullptr ? nullptr : static_cast<HostControl*>(wrapper->HostObject());
}

bool HostControl::TakeType(AKString const& name) {
  for (const TypeName& entry : kTypeNames) {
    if (name == entry.name) {
      type_ = entry.type;
      return true;
    }
  }
  return false;
}

bool HostControl::TakeItem(AKString const& item) {
  AKString value;
  AGPoint pair;
  if (item.StartsWith("-id:", &value)) return ParseUnsigned(value, &id);
  if (item.StartsWith("-type:", &value)) return TakeType(value);
  if (item.StartsWith("-title:", &value)) {
    title_ = value;
    return true;
  }
  if (item.StartsWith("-prec:", &value)) return ParseInteger(value, &precision_);
  if (item.StartsWith("-pos:", &value)) {
    if (!ParsePair(value, &pair)) return false;
    const int width = bounds_[2] - bounds_[0];
    const int height = bounds_[3] - bounds_[1];
    bounds_[0] = RoundInto<int>(pair.x, INT16_MIN, INT16_MAX);
    bounds_[1] = RoundInto<int>(pair.y, INT16_MIN, INT16_MAX);
    bounds_[2] = bounds_[0] + width;
    bounds_[3] = bounds_[1] + height;
    return true;
  }
  if (item.StartsWith("-dim:", &value)) {
    if (!ParsePair(value, &pair)) return false;
    bounds_[2] = bounds_[0] + RoundInto<int>(pair.x, 0, INT16_MAX);
    bounds_[3] = bounds_[1] + RoundInto<int>(pair.y, 0, INT16_MAX);
    return true;
  }
  if (item.StartsWith("-range:", &value)) {
    if (!ParsePair(value, &pair)) return false;
    SetRange(pair.x, pair.y);
    return true;
  }
  return false;
}

AKString HostControl::DisplayedValue() const {
  if (type_ == ControlType::kStaticText) return title_;
  char buffer[512];
  return strSetasFloat64(buffer, number_, type_ == ControlType::kEditNum ? precision_ : -1);
}

void HostControl::SetProperty(unsigned int selector, unsigned int value) {
  switch (selector) {
    case kAKGUIPropertyFlags:
      flags = value;
      break;
    case kAKGUIPropertyVisible:
      visible_ = value != 0;
      break;
    case kAKGUIPropertyEnabled:
      enabled_ = value != 0;
      break;
    default:
      break;  // the others follow from the control's description
  }
}

unsigned int HostControl::GetProperty(unsigned int selector) const {
  switch (selector) {
    case kAKGUIPropertyType:
      return static_cast<unsigned int>(type_);
    case kAKGUIPropertyID:
      return id;
    case kAKGUIPropertyFlags:
      return flags;
    case kAKGUIPropertyVisible:
      return visible_ ? 1 : 0;
    case kAKGUIPropertyEnabled:
      return enabled_ ? 1 : 0;
    case kAKGUIPropertyHasValue:
      return type_ == ControlType::kEditNum || type_ == ControlType::kSlider ? 1 : 0;
    case kAKGUIPropertyHasRange:
      return hasRange_ ? 1 : 0;
    case kAKGUIPropertyHasTitle:
      return type_ == ControlType::kStaticText ? 1 : 0;
    default:
      return 0;  // no control of this host has menu items or an icon
  }
}

void HostControl::SetBounds(int x0, int y0, int x1, int y1) {
  bounds_[0] = x0;
  bounds_[1] = y0;
  bounds_[2] = x1;
  bounds_[3] = y1;
}

void HostControl::GetBounds(int* x0, int* y0, int* x1, int* y1) const {
  int* const outputs[] = {x0, y0, x1, y1};
  for (int i = 0; i < 4; ++i) {
    if (outputs[i] != nullptr) *outputs[i] = bounds_[i];
  }
}

void HostControl::SetRange(double minimum, double maximum) {
  minimum_ = minimum;
  maximum_ = maximum;
  hasRange_ = true;
}

void HostControl::GetRange(double* minimum, double* maximum) const {
  if (minimum != nullptr) *minimum = minimum_;
  if (maximum != nullptr) *maximum = maximum_;
}

void HostControl::SetMenuItemList(AKStringArray const& items) {
  items_ = items;
  menuIndex_ = 0;
}

AKString HostControl::GetMenuItemAtIndex(unsigned int index) const {
  return index < items_.Count() ? items_[index] : kAKNullString;
}

void HostControl::SetMenuItem(AKString const& item) {
  for (unsigned int i = 0; i < items_.Count(); ++i) {
    if (items_[i] == item) menuIndex_ = i;
  }
}

AKString HostControl::GetValueAsString() const { return text_.IsEmpty() ? DisplayedValue() : text_; }

int HostControl::GetValueAsSInt() const { return RoundInto<int>(number_, INT32_MIN, INT32_MAX); }
unsigned int HostControl::GetValueAsUInt() const { return RoundInto<unsigned int>(number_, 0, UINT32_MAX); }

void HostControl::SetValueAsString(AKString const& value) {
  text_ = value;
  strGetasFloat64(value.CStr(), &number_, 0);
}

void HostControl::SetValueAsFloat64(double value) {
  number_ = value;
  text_.Clear();
}

}  // namespace host
