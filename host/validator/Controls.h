// The controls of a panel, used as a user would.
#pragma once

#include <string>
#include <vector>

#include "host/validator/Subject.h"

namespace host::validator {

/// The controls that a user can change, in their order.
std::vector<HostControl*> UsableControls(HostPanel& panel);

/// What is given to a control: a number, and for lines of text and colours what goes with it.
struct ControlValue {
  double number = 0;
  std::string text;
  AGColor color;
};
void Give(HostControl* control, const ControlValue& value);
/// Values between the least and the most that a user can give it.
std::vector<ControlValue> UsualValues(const HostControl& control);
ControlValue RandomControlValue(const HostControl& control, Dice* dice);
/// Values that no user can give it.
std::vector<ControlValue> AbsurdValues();

/// What a user sees of all controls, in their order.
std::vector<std::string> ShownIn(const HostPanel& panel);
/// "1=0.40 2=0.4"
std::string TextOfShown(const HostPanel& panel, const std::vector<std::string>& shown);
/// Has the object fill the panel, and returns what a user sees then. A status that is not 0 fails the check.
std::vector<std::string> Fill(Trial& trial, const ClassCalls& cls, HostPanel& panel, const Instance& object);
/// Fills the panel, gives a control a value and tells the object. Returns the status.
int Change(Trial& trial, const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
           const ControlValue& value, AKString* actionName = nullptr);

}  // namespace host::validator
