// The kinds of control that the host offers to inspector panels.
#pragma once

#include <cstdint>
#include <string_view>

namespace host {

/// The numbers are what CtrlType() returns.
enum class ControlType : std::uint32_t {
  kUnknown = 0,
  kStaticText = 1,  ///< a label
  kEditNum = 2,     ///< a number, shown to its precision, or a time
  kSlider = 3,      ///< a number within a range
  kCheckBox = 4,    ///< on or off, behind a title
  kPopUp = 5,       ///< one of a list of items; the value is the item's index
  kButton = 6,      ///< pressed, which is an event and no value
  kColor = 7,       ///< a colour with its alpha
  kEditText = 8,    ///< a line of text
};

struct ControlTypeInfo {
  ControlType type;
  const char* name;  ///< in description strings
  bool hasValue;
  bool hasRange;  ///< without being given one
  bool hasTitle;
  bool hasItems;
  bool hasIcon;
};

/// What a type offers; of an unknown one nothing, by the name "Unknown".
const ControlTypeInfo& InfoOf(ControlType type);
/// kUnknown for any other name; names are compared exactly.
ControlType ControlTypeNamed(std::string_view name);

}  // namespace host
