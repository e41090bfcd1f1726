#include "host/panels/HostPanel.h"

#include <cstdarg>

#include "host/Host.h"
#include "host/UserInterface.h"
#include "host/panels/Description.h"
#include "kit/objects/AKObject.h"

namespace host {
namespace {

// An empty format comes from a panel without a description.
void Construct(AKGUIDesc* wrapper, const char* format, va_list list) {
  AKString description;
  if (format != nullptr) description.Assignv(format, list);
  wrapper->SetHostObject(new HostPanel(wrapper, description));
}

void Destruct(AKGUIDesc* wrapper) {
  delete HostPanel::Of(wrapper);
  wrapper->SetHostObject(nullptr);
}

template <typename Function>
constexpr auto OfPanel(Function PanelOperations::*function) {
  return static_cast<Function HostPanel::*>(function);
}

TableBuilder MakeTable() {
  using Ops = PanelOperations;
  TableBuilder table;
  table.Plain(32, &Construct);
  table.Plain(40, &Destruct);
  table.Member(96, OfPanel(&Ops::SetProperty));
  table.Member(112, OfPanel(&Ops::GetProperty));
  table.Member(128, OfPanel(&Ops::SetPanelSize));
  table.Member(144, OfPanel(&Ops::GetPanelSize));
  table.Member(160, OfPanel(&Ops::SetPanelTitle));
  table.Member(176, OfPanel(&Ops::GetPanelTitle));
  table.Member(352, OfPanel(&Ops::AddControl));
  table.Member(368, OfPanel(&Ops::GetController));
  table.Member(384, OfPanel(&Ops::GetControllerCount));
  table.Member(480, OfPanel(&Ops::OpenModalDialog));
  table.Member(496, OfPanel(&Ops::CloseDialog));
  return table;
}

}  // namespace

HostPanel::HostPanel(AKGUIDesc* wrapper, const AKString& description) : wrapper_(wrapper) {
  ParseDescription(description, [this](const AKString& item) { return TakeItem(item); });
}

HostPanel* HostPanel::Of(const AKGUIDesc* wrapper) {
  return wrapper == nullptr ? nullptr : static_cast<HostPanel*>(wrapper->HostObject());
}

void* HostPanel::Table() {
  static TableBuilder table = MakeTable();
  return table.Table();
}

bool HostPanel::TakeItem(const AKString& item) {
  AKString value;
  unsigned int number = 0;
  if (item.StartsWith("-multisel:", &value) && ParseUnsigned(value, &number)) {
    multipleSelection_ = number != 0;
    return true;
  }
  if (item.StartsWith("-id:", &value)) return ParseUnsigned(value, &id);
  if (item.StartsWith("-flags:", &value)) return ParseUnsigned(value, &flags);
  if (item.StartsWith("-title:", &value)) {
    title_ = value;
    return true;
  }
  return false;
}

const HostControl& HostPanel::ControlAt(unsigned int index) const { return *HostControl::Of(controls_[index].get()); }
HostControl& HostPanel::ControlAt(unsigned int index) { return *HostControl::Of(controls_[index].get()); }

HostControl* HostPanel::FindControl(unsigned int controlID) const { return HostControl::Of(GetController(controlID)); }

void HostPanel::SetProperty(unsigned int selector, unsigned int value) {
  if (selector == kAKGUIPropertyFlags) flags = value;
}

unsigned int HostPanel::GetProperty(unsigned int selector) const {
  if (selector == kAKGUIPropertyID) return id;
  return selector == kAKGUIPropertyFlags ? flags : 0;
}

void HostPanel::SetPanelSize(int width, int height) {
  width_ = width;
  height_ = height;
}

void HostPanel::GetPanelSize(int* width, int* height) const {
  if (width != nullptr) *width = width_;
  if (height != nullptr) *height = height_;
}

void HostPanel::AddControl(AKGUICtrl* control) {
  const HostControl* own = HostControl::Of(control);
  if (own == nullptr) return;
  controls_.emplace_back(control);
  byID_.try_emplace(own->id, control);
}

AKGUICtrl* HostPanel::GetController(unsigned int controlID) const {
  const auto found = byID_.find(controlID);
  return found == byID_.end() ? nullptr : found->second;
}

int HostPanel::OpenModalDialog(AKGUIDesc::ModalProc proc, AKObject* object, int* result) {
  UserInterface* const interface = Host::Instance().userInterface;
  if (interface == nullptr || proc == nullptr || object == nullptr || wrapper_ == nullptr) return -1;
  const auto send = [&](AKGUIEvent& event) { return (object->*proc)(*wrapper_, event); };
  AKGUIEvent fill;
  fill.kind = AKGUIEvent::kFillControls;
  send(fill);
  const int answer = interface->RunDialog(*this, send);
  if (result != nullptr) *result = answer;
  return 0;
}

void HostPanel::CloseDialog(int result) {
  if (UserInterface* const interface = Host::Instance().userInterface) interface->CloseDialog(*this, result);
}

}  // namespace host
