#include "host/panels/ControlType.h"

namespace host {
namespace {

constexpr ControlTypeInfo kTypes[] = {
    // type                     name         value  range  title  items  icon
    {ControlType::kUnknown, "Unknown", false, false, false, false, false},
    {ControlType::kStaticText, "StaticText", false, false, true, false, false},
    {ControlType::kEditNum, "EditNum", true, false, false, false, false},
    {ControlType::kSlider, "Slider", true, true, false, false, false},
    {ControlType::kCheckBox, "CheckBox", true, false, true, false, false},
    {ControlType::kPopUp, "PopUp", true, false, false, true, false},
    {ControlType::kButton, "Button", false, false, true, false, true},
    {ControlType::kColor, "Color", true, false, false, false, false},
    {ControlType::kEditText, "EditText", true, false, false, false, false},
};

}  // namespace

const ControlTypeInfo& InfoOf(ControlType type) {
  for (const ControlTypeInfo& info : kTypes) {
    if (info.type == type) return info;
  }
  return kTypes[0];
}

ControlType ControlTypeNamed(std::string_view name) {
  for (const ControlTypeInfo& info : kTypes) {
    if (name == info.name) return info.type;
  }
  return ControlType::kUnknown;
}

}  // namespace host
