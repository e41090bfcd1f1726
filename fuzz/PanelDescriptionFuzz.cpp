// Descriptions of panels and controls, and values as users enter them. The first line is the panel's; each other line
// is a control's description, or a text that is entered into the last control when it begins with "=".
#include <cmath>
#include <sstream>

#include "fuzz/HostFuzz.h"
#include "host/panels/Description.h"
#include "host/panels/HostControl.h"
#include "host/panels/HostPanel.h"

namespace {

using host_fuzz::Require;

constexpr unsigned int kMostLines = 6;

// What a control shows can be entered, and it shows the same then; a number lies within the control's range.
void CheckControl(const host::HostControl& control) {
  double low = 0;
  double high = 0;
  int x0 = 0;
  int x1 = 0;
  control.GetRange(&low, &high);
  control.GetBounds(&x0, nullptr, &x1, nullptr);
  Require(x0 <= x1 && control.Step() > 0 && std::isfinite(control.GetValueAsFloat64()));
  Require(control.GetMenuItemCount() == 0 || control.GetMenuItemAtIndex(control.GetMenuItemCount()).IsEmpty());
  host::HostControl other = control;
  const AKString shown = control.DisplayedValue();
  const bool isEntered = other.Enter(shown);
  switch (control.Type()) {
    case host::ControlType::kCheckBox:
    case host::ControlType::kColor:
    case host::ControlType::kEditText:
      Require(isEntered && other.DisplayedValue() == shown);
      break;
    case host::ControlType::kEditNum:
    case host::ControlType::kSlider:
      Require(isEntered);
      if (other.GetProperty(kAKGUIPropertyHasRange) == 0) break;
      Require(other.GetValueAsFloat64() >= std::fmin(low, high) && other.GetValueAsFloat64() <= std::fmax(low, high));
      break;
    default:
      break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  host_fuzz::Start();
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  std::getline(lines, line);
  AKGUIDesc panel("%s", line.c_str());
  const AKGUICtrl* last = nullptr;
  unsigned int count = 0;
  for (unsigned int i = 0; i < kMostLines && std::getline(lines, line); ++i) {
    if (!line.starts_with("=")) {
      last = panel.NewController("%s", line.c_str());
      ++count;
    } else if (last != nullptr) {
      static_cast<void>(host::HostControl::Of(last)->Enter(AKString(line.substr(1))));
    }
    if (last != nullptr) CheckControl(*host::HostControl::Of(last));
  }
  Require(panel.GetControllerCount() == count);
  return 0;
}
