#include "host/panels/HostControl.h"

#include <algorithm>
#include <cmath>

#include "host/panels/Description.h"
#include "kit/text/AKTextConversions.h"

namespace host {

HostControl* HostControl::Of(const AKGUICtrl* wrapper) {
  return wrapper == nullptr ? nullptr : static_cast<HostControl*>(wrapper->HostObject());
}

double HostControl::Step() const { return step_ > 0 ? step_ : std::pow(10.0, -std::clamp(precision_, 0, 9)); }

std::string HostControl::TimeText(double seconds, int precision) {
  char buffer[512];
  return strSetasTimeHMS(buffer, seconds, precision, false);
}

bool HostControl::ReadTime(const AKString& text, double* seconds) {
  return ParseNumber(text, seconds) || strGetasTimeHMS(text.CStr(), seconds, 0);
}

AKString HostControl::DisplayedValue() const {
  char buffer[512];
  switch (type_) {
    case ControlType::kStaticText:
    case ControlType::kButton:
      return title_;
    case ControlType::kCheckBox:
      return number_ != 0 ? "on" : "off";
    case ControlType::kPopUp:
      return GetMenuItem();
    case ControlType::kColor:
      return strSetasAGColor(buffer, color_, true);
    case ControlType::kEditText:
      return text_;
    case ControlType::kEditNum:
      if (showsTime_) return TimeText(number_, precision_);
      return strSetasFloat64(buffer, number_, precision_);
    default:
      return strSetasFloat64(buffer, number_, -1);
  }
}

bool HostControl::Enter(const AKString& text) {
  bool state = false;
  switch (type_) {
    case ControlType::kEditNum:
    case ControlType::kSlider:
      return EnterNumber(text);
    case ControlType::kCheckBox:
      if (!ParseSwitch(text, &state)) return false;
      SetValueAsBool(state);
      return true;
    case ControlType::kPopUp:
      return EnterMenuItem(text);
    case ControlType::kColor:
      return EnterColor(text);
    case ControlType::kEditText:
      text_ = text;
      return true;
    case ControlType::kButton:
      return text.IsEmpty();
    default:
      return false;
  }
}

bool HostControl::EnterNumber(const AKString& text) {
  double number = 0;
  if (!(showsTime_ ? ReadTime(text, &number) : ParseNumber(text, &number))) return false;
  if (GetProperty(kAKGUIPropertyHasRange) != 0) {
    number = std::fmin(std::fmax(number, std::fmin(minimum_, maximum_)), std::fmax(minimum_, maximum_));
  }
  SetValueAsFloat64(number);
  return true;
}

bool HostControl::EnterMenuItem(const AKString& text) {
  std::optional<unsigned int> index = IndexOf(text);
  unsigned int number = 0;
  if (!index && ParseUnsigned(text, &number) && number < items_.Count()) index = number;
  if (!index) return false;
  SetMenuIndex(*index);
  return true;
}

bool HostControl::EnterColor(const AKString& text) {
  AGColor color;
  const bool listed = !text.IsEmpty() && text[0] == '(';
  const bool parsed = listed ? strGetasAGColor(text.CStr(), &color, kAGColorBlack)
                             : strGetasAGColorHex(text.CStr(), &color, kAGColorBlack);
  if (parsed) color_ = color;
  return parsed;
}

std::optional<unsigned int> HostControl::IndexOf(const AKString& item) const {
  for (unsigned int i = 0; i < items_.Count(); ++i) {
    if (items_[i] == item) return i;
  }
  return std::nullopt;
}

void HostControl::SetProperty(unsigned int selector, unsigned int value) {
  switch (selector) {
    case kAKGUIPropertyFlags:
      flags_ = value;
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
  const ControlTypeInfo& info = InfoOf(type_);
  switch (selector) {
    case kAKGUIPropertyType:
      return static_cast<unsigned int>(type_);
    case kAKGUIPropertyID:
      return id_;
    case kAKGUIPropertyFlags:
      return flags_;
    case kAKGUIPropertyVisible:
      return visible_ ? 1 : 0;
    case kAKGUIPropertyEnabled:
      return enabled_ ? 1 : 0;
    case kAKGUIPropertyHasValue:
      return info.hasValue ? 1 : 0;
    case kAKGUIPropertyHasRange:
      return hasRange_ || info.hasRange ? 1 : 0;
    case kAKGUIPropertyHasTitle:
      return info.hasTitle ? 1 : 0;
    case kAKGUIPropertyHasItems:
      return info.hasItems ? 1 : 0;
    case kAKGUIPropertyHasIcon:
      return info.hasIcon ? 1 : 0;
    default:
      return 0;
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

void HostControl::SetMenuItemList(const AKStringArray& items) {
  items_ = items;
  SetMenuIndex(0);
}

AKString HostControl::GetMenuItemAtIndex(unsigned int index) const {
  return index < items_.Count() ? items_[index] : kAKNullString;
}

void HostControl::SetMenuItem(const AKString& item) {
  if (const auto index = IndexOf(item)) SetMenuIndex(*index);
}

AKString HostControl::GetValueAsString() const { return text_.IsEmpty() ? DisplayedValue() : text_; }

int HostControl::GetValueAsSInt() const { return RoundInto<int>(number_, INT32_MIN, INT32_MAX); }
unsigned int HostControl::GetValueAsUInt() const { return RoundInto<unsigned int>(number_, 0, UINT32_MAX); }

void HostControl::SetValueAsString(const AKString& value) {
  if (type_ == ControlType::kPopUp) return SetMenuItem(value);
  if (type_ == ControlType::kColor) return static_cast<void>(EnterColor(value));
  text_ = value;
  strGetasFloat64(value.CStr(), &number_, 0);
}

void HostControl::SetValueAsFloat64(double value) {
  number_ = value;
  // A line of text shows the number that it was set to.
  char buffer[512];
  text_ = type_ == ControlType::kEditText ? AKString(strSetasFloat64(buffer, value, precision_)) : AKString();
}

void HostControl::SetValueAsTimeHMS(double seconds) {
  SetValueAsFloat64(seconds);
  showsTime_ = true;
}

}  // namespace host
