#include "host/validator/Controls.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "host/text/DisplayText.h"

namespace host::validator {

std::vector<HostControl*> UsableControls(HostPanel& panel) {
  std::vector<HostControl*> usable;
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
    HostControl& control = panel.ControlAt(i);
    if (InfoOf(control.Type()).hasValue && control.IsVisible() && control.IsEnabled()) usable.push_back(&control);
  }
  return usable;
}

void Give(HostControl* control, const ControlValue& value) {
  switch (control->Type()) {
    case ControlType::kColor:
      control->SetValueAsAGColor(value.color);
      break;
    case ControlType::kEditText:
      control->SetValueAsString(AKString(value.text.data(), static_cast<unsigned int>(value.text.size())));
      break;
    default:
      control->SetValueAsFloat64(value.number);
  }
}

std::vector<ControlValue> UsualValues(const HostControl& control) {
  double least = 0;
  double most = 0;
  control.GetRange(&least, &most);
  const bool hasRange = control.GetProperty(kAKGUIPropertyHasRange) != 0;
  switch (control.Type()) {
    case ControlType::kCheckBox:
      return {{0, "", {}}, {1, "", {}}};
    case ControlType::kPopUp:
      least = 0;
      most = control.GetMenuItemCount() == 0 ? 0 : control.GetMenuItemCount() - 1;
      return {{least, "", {}}, {most, "", {}}};
    case ControlType::kColor:
      return {{0, "", AGColor(0, 0, 0)}, {0, "", AGColor(255, 255, 255, 0)}, {0, "", AGColor(10, 200, 90, 128)}};
    case ControlType::kEditText:
      return {{0, "", {}}, {0, "text", {}}, {0, "12", {}}, {0, "a longer text with %s and \"quotes\"", {}}};
    default:
      if (!hasRange) return {{0, "", {}}, {1, "", {}}, {0.5, "", {}}, {7, "", {}}, {-3, "", {}}, {1000, "", {}}};
      return {{least, "", {}}, {most, "", {}}, {(least + most) / 2, "", {}}};
  }
}

ControlValue RandomControlValue(const HostControl& control, Dice* dice) {
  const std::vector<ControlValue> usual = UsualValues(control);
  return usual[dice->Below(usual.size())];
}

std::vector<ControlValue> AbsurdValues() {
  using Limits = std::numeric_limits<double>;
  std::vector<ControlValue> values;
  for (const double number : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(),
                              -Limits::max(), 1e15, -1e15, 4294967296.0, -1.0, 2147483648.0}) {
    values.push_back({number, std::string(100000, 'x'), AGColor(255, 0, 255, 0)});
  }
  values.push_back({0.5, "%s%n%s%n\xFF\x01", AGColor(1, 2, 3, 4)});
  return values;
}

std::vector<std::string> ShownIn(const HostPanel& panel) {
  std::vector<std::string> shown;
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
    shown.push_back(DisplayText(panel.ControlAt(i).DisplayedValue()));
  }
  return shown;
}

std::string TextOfShown(const HostPanel& panel, const std::vector<std::string>& shown) {
  std::string text;
  for (unsigned int i = 0; i < std::min<std::size_t>(panel.GetControllerCount(), shown.size()); ++i) {
    if (!InfoOf(panel.ControlAt(i).Type()).hasValue) continue;
    text += (text.empty() ? "" : ", ") + std::to_string(panel.ControlAt(i).ID()) + " = " + shown[i].substr(0, 80);
  }
  return text;
}

std::vector<std::string> Fill(Trial& trial, const ClassCalls& cls, HostPanel& panel, const Instance& object) {
  const int status = cls.Send(object, AKGUIEvent::kFillControls, 0);
  trial.Expect(status == 0, "status 0", StatusText(status));
  return ShownIn(panel);
}

int Change(Trial& trial, const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
           const ControlValue& value, AKString* actionName) {
  Fill(trial, cls, panel, object);
  Give(control, value);
  char words[120];
  std::snprintf(words, sizeof(words), "control %u set to %.9g or \"%.30s\", akmInspector, event kind 3", control->ID(),
                value.number, value.text.c_str());
  const int status = cls.Send(object, AKGUIEvent::kControlChanged, control->ID(), actionName);
  trial.Do(words + cls.Of());
  return status;
}

}  // namespace host::validator
