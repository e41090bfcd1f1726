// Panels and handlers: the bundle's wrappers, and the host's objects behind them.
#include <cstdarg>
#include <cstdio>
#include <map>

#include "kit/objects/AKHandler.h"
#include "kit/panels/AKGUIDesc.h"

namespace {

// The host's side of a control, a panel and a handler, as small as can be.
struct HostControl {
  unsigned int id = 0;
  double value = 0;

  void SetValue(double number) { value = number; }
  double GetValue() const { return value; }
  unsigned int Property(unsigned int selector) const { return selector == kAKGUIPropertyID ? id : 0; }
};
struct HostPanel {
  std::map<unsigned int, AKGUICtrl*> controls;

  void Add(AKGUICtrl* control) { controls[control->CtrlID()] = control; }
  AKGUICtrl* Find(unsigned int id) const { return controls.count(id) != 0 ? controls.at(id) : nullptr; }
};
struct HostHandler {
  AKString name;

  bool IsActive() const { return true; }
  void SetName(const AKString& text) { name = text; }
  AKString Name() const { return name; }
};

void MakeControl(AKGUICtrl* wrapper, AKGUIDesc*, const char* format, va_list list) {
  auto* control = new HostControl;
  AKString text;
  text.Assignv(format, list);
  text.AfterFirst("-id:").Scanf(0, "%u", &control->id);
  wrapper->SetHostObject(control);
}
void EndControl(AKGUICtrl* wrapper) { delete static_cast<HostControl*>(wrapper->HostObject()); }
void MakePanel(AKGUIDesc* wrapper, const char*, va_list) { wrapper->SetHostObject(new HostPanel); }
void EndPanel(AKGUIDesc* wrapper) {
  auto* panel = static_cast<HostPanel*>(wrapper->HostObject());
  for (const auto& [id, control] : panel->controls) delete control;
  delete panel;
}
void MakeHandler(AKHandler* wrapper, NKTreeHandler*) { wrapper->SetHostObject(new HostHandler); }
void EndHandler(AKHandler* wrapper) { delete static_cast<HostHandler*>(wrapper->HostObject()); }

// Both signatures of an entry are checked by the compiler: the host's function here, the wrapper's call in the kit.
void FillTables(AKControlTable* controls, AKPanelTable* panels, AKHandlerTable* handlers) {
  controls->construct = &MakeControl;
  controls->destruct = &EndControl;
  controls->getProperty.Set<HostControl>(&HostControl::Property);
  controls->setValueAsFloat64.Set<HostControl>(&HostControl::SetValue);
  controls->getValueAsFloat64.Set<HostControl>(&HostControl::GetValue);
  panels->construct = &MakePanel;
  panels->destruct = &EndPanel;
  panels->addController.Set<HostPanel>(&HostPanel::Add);
  panels->getController.Set<HostPanel>(&HostPanel::Find);
  handlers->construct = &MakeHandler;
  handlers->destruct = &EndHandler;
  handlers->isActive.Set<HostHandler>(&HostHandler::IsActive);
  handlers->setActionName.Set<HostHandler>(&HostHandler::SetName);
  handlers->actionName.Set<HostHandler>(&HostHandler::Name);
}

// What a class does with an event: fill the controls, or take what the user chose and name the change.
void Inspect(AKGUIDesc& panel, AKGUIEvent& event, double* radius) {
  if (event.kind == AKGUIEvent::kFillControls) panel.SetValueAsFloat64(2, *radius);
  if (event.kind != AKGUIEvent::kControlChanged || event.ctrlID != 2) return;
  *radius = panel.GetValueAsFloat64(2);
  event.actionName = "Change Radius";
}

}  // namespace

int main() {
  AKControlTable controls;
  AKPanelTable panels;
  AKHandlerTable handlers;
  FillTables(&controls, &panels, &handlers);
  AKGUICtrl::sWrapper = &controls;
  AKGUIDesc::sWrapper = &panels;
  AKHandler::sWrapper = &handlers;

  AKGUIDesc panel("-multisel:1");
  AKGUICtrl* slider = panel.NewController("-id:%d -type:Slider -range:(0;1)", 2);
  double radius = 0.5;
  AKGUIEvent event;
  event.kind = AKGUIEvent::kFillControls;
  Inspect(panel, event, &radius);
  std::printf("%g\n", slider->GetValueAsFloat64());  // prints: 0.5

  slider->SetValueAsFloat64(0.75);  // the user drags
  event.kind = AKGUIEvent::kControlChanged;
  event.ctrlID = 2;
  Inspect(panel, event, &radius);
  std::printf("%g, %s\n", radius, event.actionName.CStr());  // prints: 0.75, Change Radius
  // For a control that the panel has not got, everything is neutral.
  std::printf("%g\n", panel.GetValueAsFloat64(9));  // prints: 0

  // What such an entry is by itself.
  AKHostMember<double()> entry;
  entry.Set<HostControl>(&HostControl::GetValue);
  std::printf("%g\n", entry.Call(slider->HostObject()));  // prints: 0.75

  AKHandler handler(nullptr);
  handler.SetActionName("Add a Dot");
  std::printf("%d, %s\n", handler.IsActive(), handler.ActionName().CStr());  // prints: 1, Add a Dot
  // All three are one pointer, to the host's object: what AKWrapper holds.
  const AKWrapper<AKHandler>& wrapper = handler;
  std::printf("%d\n", wrapper.HostObject() != nullptr && sizeof(wrapper) == sizeof(void*));  // prints: 1
}
