// Texts of a gigabyte, where AK_TORTURE_HUGE allows them: the host takes them whole or refuses them.
#include <cstdlib>
#include <memory>
#include <new>

#include "kit/host/AKHostServices.h"
#include "kit/objects/AKHandler.h"
#include "kit/panels/AKGUIDesc.h"
#include "kit/values/AKValue.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Objects.h"

namespace torture {
namespace {

constexpr int kHuge = 1 << 30;

// Texts that the host makes itself, of a few bytes of the bundle's.
void AskFormats() {
  {
    const Puppet::Ordered ordered({});
    Call call("class.newObjectWithArgs", "make an object with a gigabyte of arguments", kClassSection);
    AKObject* const object = call.MayLackMemory([] { return NewWithArgs(Puppet::_ClassID(), "%*s", kHuge, "x"); });
    call.Expect(object != nullptr || AKClass::GetErrorNew() < 0, "an object, or null with a status", "null");
    Delete(object);
  }
  AKGUIDesc panel;
  std::unique_ptr<AKGUICtrl> control;
  Call call("control.construct", "make a control with a title of a gigabyte", kControlSection);
  call.MayLackMemory([&] {
    control = std::make_unique<AKGUICtrl>(&panel, "-id:3 -title:\"%*s\"", kHuge, "x");
    return true;
  });
}

}  // namespace

void AskHuge() {
  if (std::getenv("AK_TORTURE_HUGE") == nullptr) return;
  AskFormats();
  AKString text;
  try {
    text = AKString(std::string(kHuge, 'x'));
  } catch (const std::bad_alloc&) {
    return;  // no room for it here: nothing that the host could be blamed for
  }
  AKGUIDesc panel;
  Call set("panel.setPanelTitle", "set a title of a gigabyte", kPanelSection);
  const bool isSet = set.MayLackMemory([&] { return panel.SetPanelTitle(text), true; });
  Call get("panel.getPanelTitle", "ask for the title of a gigabyte", kPanelSection);
  const AKString title = get.MayLackMemory([&] { return panel.GetPanelTitle(); });
  if (isSet) get.Expect(title == text || title.IsEmpty(), "the title, or none", "a part of it");
  AKHandler handler(nullptr);
  Call name("handler.setActionName", "name the change by a gigabyte", kHandlerSection);
  name.MayLackMemory([&] { return handler.SetActionName(text), true; });
  AKValue out;
  Call key("general.getApplicationProperty", "ask for a key of a gigabyte", kGeneralSection);
  key.Expect(key.MayLackMemory([&] { return NKGetApplicationProperty(text, &out); }) != 0 || out.IsEmpty(),
             "no such property", "one");
}

}  // namespace torture
