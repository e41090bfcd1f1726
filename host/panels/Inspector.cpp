#include "host/panels/Inspector.h"

#include "host/Host.h"
#include "host/tables/SlotCall.h"

namespace host {

bool Inspector::Open(DocumentObject* object, std::string* error) {
  RegisteredClass const* entry = Host::Instance().Classes().FindEntry(object->classID);
  const bool usable = !object->IsPlaceholder() && entry != nullptr && entry->panel != nullptr &&
                      HostPanel::Of(entry->panel.get()) != nullptr && HasSlot(*entry->record, kAKMethodInspector);
  if (!usable) {
    *error = std::string("class \"") + object->classID.chars + "\" has no inspector panel";
    return false;
  }
  object_ = object;
  panel_ = entry->panel.get();
  return true;
}

int Inspector::Send(AKGUIEvent* event) {
  return CallSlot<int, AKGUIDesc&, AKGUIEvent&>(*object_->instance->Class(), kAKMethodInspector,
                                                object_->instance.get(), *panel_, *event);
}

int Inspector::Fill() {
  AKGUIEvent event;
  event.kind = AKGUIEvent::kFillControls;
  return Send(&event);
}

int Inspector::Change(unsigned int controlID, double value, std::string* actionName) {
  panel_->SetValueAsFloat64(controlID, value);
  AKGUIEvent event;
  event.kind = AKGUIEvent::kControlChanged;
  event.ctrlID = controlID;
  const int status = Send(&event);
  Host::Instance().actionName = event.actionName;
  *actionName = event.actionName.CStr();
  return status;
}

}  // namespace host
