// What a control takes from its description.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "host/panels/Description.h"
#include "host/panels/HostControl.h"

namespace host {

HostControl::HostControl(const AKString& description) {
  static constexpr DescriptionItem<HostControl> kItems[] = {
      {"-type:", [](HostControl* control, const AKString& value) { return control->TakeType(value); }},
      {"-id:", [](HostControl* control, const AKString& value) { return ParseUnsigned(value, &control->id_); }},
      {"-pos:", [](HostControl* c, const AKString& value) { return c->TakePair(value, &HostControl::MoveTo); }},
      {"-dim:", [](HostControl* c, const AKString& value) { return c->TakePair(value, &HostControl::Resize); }},
      {"-range:", [](HostControl* c, const AKString& value) { return c->TakePair(value, &HostControl::SetRangeTo); }},
      {"-title:", [](HostControl* control, const AKString& value) { return control->title_ = value, true; }},
      {"-tip:", [](HostControl* control, const AKString& value) { return control->tip_ = value, true; }},
      {"-value:", [](HostControl* control, const AKString& value) { return control->firstValue_ = value, true; }},
      {"-items:", [](HostControl* control, const AKString& value) { return control->items_ = ParseList(value), true; }},
      {"-prec:", [](HostControl* control, const AKString& value) { return ParseInteger(value, &control->precision_); }},
      {"-step:", [](HostControl* control, const AKString& value) { return control->TakeStep(value); }},
      {"-flags:", [](HostControl* control, const AKString& value) { return ParseUnsigned(value, &control->flags_); }},
      {"-visible:", [](HostControl* control, const AKString& value) { return ParseSwitch(value, &control->visible_); }},
      {"-enable:", [](HostControl* control, const AKString& value) { return ParseSwitch(value, &control->enabled_); }},
  };
  complaint_ = ReadDescription(description, kItems, this);
  if (!firstValue_ || Enter(*firstValue_)) return;
  if (!complaint_.IsEmpty()) complaint_ += ' ';
  complaint_ += "-value:" + *firstValue_;
}

bool HostControl::TakeType(const AKString& name) {
  const ControlType type = ControlTypeNamed({name.CStr(), name.Length()});
  if (type == ControlType::kUnknown) return false;
  type_ = type;
  return true;
}

bool HostControl::TakeStep(const AKString& text) {
  double step = 0;
  if (!ParseNumber(text, &step) || !(step > 0)) return false;
  step_ = step;
  return true;
}

bool HostControl::TakePair(const AKString& text, void (HostControl::*take)(const AGPoint&)) {
  AGPoint pair;
  if (!ParsePair(text, &pair)) return false;
  (this->*take)(pair);
  return true;
}

void HostControl::MoveTo(const AGPoint& position) {
  const int width = bounds_[2] - bounds_[0];
  const int height = bounds_[3] - bounds_[1];
  bounds_[0] = RoundInto<int>(position.x, INT16_MIN, INT16_MAX);
  bounds_[1] = RoundInto<int>(position.y, INT16_MIN, INT16_MAX);
  bounds_[2] = bounds_[0] + width;
  bounds_[3] = bounds_[1] + height;
}

void HostControl::Resize(const AGPoint& size) {
  bounds_[2] = bounds_[0] + RoundInto<int>(size.x, 0, INT16_MAX);
  bounds_[3] = bounds_[1] + RoundInto<int>(size.y, 0, INT16_MAX);
}

}  // namespace host
