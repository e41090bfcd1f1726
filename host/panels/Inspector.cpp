#include "host/panels/Inspector.h"

#include <algorithm>

#include "host/Host.h"
#include "host/model/EditRules.h"
#include "host/model/ObjectRecord.h"
#include "host/tables/SlotCall.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

const RegisteredClass* ClassWithPanel(const DocumentObject& object) {
  const RegisteredClass* entry = Host::Instance().Classes().FindEntry(object.classID);
  const bool usable = object.instance != nullptr && entry != nullptr && HostPanel::Of(entry->panel.get()) != nullptr &&
                      HasSlot(*entry->record, kAKMethodInspector);
  return usable ? entry : nullptr;
}

Result<> ResultOf(int status) {
  if (status != 0) return Problem(N_("the object returned status %s"), {std::to_string(status)});
  return {};
}

}  // namespace

Result<> Inspector::Open(DocumentSession* session, const ObjectIDs& ids) {
  const RegisteredClass* entry = nullptr;
  for (const ObjectID id : ids) {
    if (const auto done = CheckEditable(session->Doc(), {id}); !done) return done.Why();
    const DocumentObject* object = session->Doc().Find(id);
    const RegisteredClass* own = ClassWithPanel(*object);
    if (object->IsPlaceholder()) return WhyPlaceholder(*object);
    if (own == nullptr) {
      return Problem(N_("class \"%s\" has no inspector panel"), {object->classID.chars});
    }
    if (entry != nullptr && own != entry) {
      return Problem(N_("objects of several classes have no panel in common"));
    }
    entry = own;
  }
  if (entry == nullptr || (ids.size() > 1 && !HostPanel::Of(entry->panel.get())->AllowsMultipleSelection())) {
    return Problem(ids.empty() ? N_("there is no object to inspect")
                               : N_("the inspector panel is for one object at a time"));
  }
  session_ = session;
  ids_ = ids;
  panel_ = entry->panel.get();
  return {};
}

// An object that is gone meanwhile, perhaps by its own wish, is passed over.
int Inspector::SendTo(ObjectID id, AKGUIEvent* event) {
  const DocumentObject* object = session_->Doc().Find(id);
  if (object == nullptr || !object->instance) return 0;
  AKObject* instance = object->instance.get();
  Host::Instance().Sessions().MakeCurrent(*session_);
  return CallSlot<int, AKGUIDesc&, AKGUIEvent&>(*instance->Class(), kAKMethodInspector, instance, *panel_, *event);
}

Result<> Inspector::SendToAll(unsigned int kind, unsigned int controlID, const Prepare& prepare,
                              std::string* actionName) {
  session_->Steps().SetActionName("");
  session_->Steps().Begin("");
  int status = 0;
  std::string name;
  for (const ObjectID id : ids_) {
    AKGUIEvent event;
    event.kind = kind;
    event.ctrlID = controlID;
    prepare();
    const int own = SendTo(id, &event);
    if (status == 0) status = own;
    if (!event.actionName.IsEmpty()) name = DisplayText(event.actionName);
  }
  if (name.empty()) name = session_->Steps().ActionName();  // through a handler
  session_->Steps().SetActionName(name);
  const auto noticed = session_->Objects().NoticeChanges(ids_);
  session_->Steps().End();
  session_->Steps().SetActionName("");
  if (actionName != nullptr) *actionName = std::move(name);
  if (!noticed) return noticed.Why();
  return ResultOf(status);
}

std::vector<AKString> Inspector::ShownValues() const {
  std::vector<AKString> values;
  for (unsigned int i = 0; i < Panel().GetControllerCount(); ++i) {
    values.push_back(Panel().ControlAt(i).DisplayedValue());
  }
  return values;
}

// The first object is asked last, so that the panel shows it.
Result<> Inspector::Fill() {
  mixed_.clear();
  std::vector<AKString> first;
  int status = 0;
  for (std::size_t i = ids_.size() + 1; i > 0; --i) {
    const bool isAgain = i > ids_.size();
    AKGUIEvent event;
    event.kind = AKGUIEvent::kFillControls;
    if (isAgain && ids_.size() == 1) continue;
    const int own = SendTo(ids_[isAgain ? 0 : i - 1], &event);
    if (status == 0) status = own;
    const std::vector<AKString> shown = ShownValues();
    if (first.empty()) first = shown;
    // An object may add controls while it fills the panel.
    for (unsigned int c = 0; c < std::min(first.size(), shown.size()); ++c) {
      if (!(shown[c] == first[c])) mixed_.insert(Panel().ControlAt(c).ID());
    }
  }
  return ResultOf(status);
}

Result<> Inspector::Send(unsigned int kind, unsigned int controlID, std::string* actionName) {
  return SendToAll(
      kind, controlID, [] {}, actionName);
}

Result<> Inspector::Change(unsigned int controlID, const std::function<void(AKGUIDesc&, unsigned int)>& set,
                           std::string* actionName) {
  mixed_.clear();
  return SendToAll(
      AKGUIEvent::kControlChanged, controlID, [&] { set(*panel_, controlID); }, actionName);
}

Result<> Inspector::Enter(unsigned int controlID, const std::string& text, std::string* actionName) {
  HostControl* control = HostControl::Of(panel_->GetController(controlID));
  const AKString value = TextForBundles(text);
  if (control == nullptr || !control->Enter(value)) {
    const std::string number = std::to_string(controlID);
    return control == nullptr ? Problem(N_("the panel has no control %s"), {number})
                              : Problem(N_("control %s does not take \"%s\""), {number, text});
  }
  return Change(
      controlID, [&](AKGUIDesc&, unsigned int) { control->Enter(value); }, actionName);
}

Result<> Inspector::Change(unsigned int controlID, double value, std::string* actionName) {
  const auto set = [value](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsFloat64(id, value); };
  return Change(controlID, set, actionName);
}

}  // namespace host
