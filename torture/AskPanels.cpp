// Panels.
#include <climits>
#include <memory>

#include "kit/panels/AKGUIDesc.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Entries.h"
#include "torture/Examiner.h"

namespace torture {
namespace {

std::unique_ptr<AKGUIDesc> NewPanel(const char* description) {
  std::unique_ptr<AKGUIDesc> panel;
  Call call("panel.construct",
            "make a panel: " + (description == nullptr ? "no description" : TextOf(std::string_view(description))),
            kPanelSection);
  call([&] {
    panel = description == nullptr ? std::make_unique<AKGUIDesc>() : std::make_unique<AKGUIDesc>("%s", description);
  });
  const bool isThere = panel != nullptr && panel->HostObject() != nullptr;
  call.Expect(isThere, "the wrapper filled", "it empty");
  if (!isThere) panel.reset();
  return panel;
}

void End(std::unique_ptr<AKGUIDesc> panel) {
  Call call("panel.destruct", "end a panel with its controls", kPanelSection);
  call([&] { panel.reset(); });
}

void AskSettings() {
  auto panel = NewPanel("-id:4294967295 -title:\"A title\" -flags:6");
  if (panel == nullptr) return;
  Call get("panel.getProperty", "ask for the ID and flags of its description", kPanelSection);
  get.ExpectIs(0xFFFFFFFFU, get([&] { return panel->DescID(); }));
  get.ExpectIs(true, panel->IsDescFlag(6));
  get.ExpectIs(false, panel->IsDescFlag(1));
  for (const bool on : {true, false, true}) {
    Call set("panel.setProperty", std::string("set idling ") + (on ? "on" : "off"), kPanelSection);
    set([&] { panel->SetIdling(on); });
    set.ExpectIs(on, panel->IsIdling());
    set.ExpectIs(false, panel->IsYielding());
    set.ExpectIs(true, panel->IsDescFlag(6));
  }
  for (const unsigned int selector : {0U, 1U, 2U, 4U, 99U, 0xFFFFFFFFU}) {
    const auto ask = [&] { return AKGUIDesc::sWrapper->getProperty.Call(panel->HostObject(), selector); };
    Call one("panel.getProperty", "ask for property " + TextOf(selector), kPanelSection);
    const unsigned int before = one(ask);
    if (selector != 2) one.ExpectIs(0U, before);
    Call set("panel.setProperty", "set property " + TextOf(selector) + ", which can't be set", kPanelSection);
    set([&] { AKGUIDesc::sWrapper->setProperty.Call(panel->HostObject(), selector, 5); });
    set.ExpectIs(before, one(ask));
  }
  Call title("panel.getPanelTitle", "ask for the title of its description", kPanelSection);
  title.ExpectIs(AKString("A title"), title([&] { return panel->GetPanelTitle(); }));
  for (const AKString& one : {AKString("Another"), OddText(), LongText(), AKString("")}) {
    AKString borrowed(one.CStr(), one.Length());
    Call set("panel.setPanelTitle", "set the title " + TextOf(one) + " and overwrite it", kPanelSection);
    set([&] { panel->SetPanelTitle(borrowed); });
    borrowed = "overwritten";
    set.ExpectIs(one, title([&] { return panel->GetPanelTitle(); }));
  }
  End(std::move(panel));
}

void AskSizes() {
  auto panel = NewPanel(nullptr);
  if (panel == nullptr) return;
  for (const int edge : {0, 1, -1, 100000, INT_MAX, INT_MIN}) {
    Call set("panel.setPanelSize", "set the size to " + TextOf(edge) + " by 28", kPanelSection);
    set([&] { panel->SetPanelSize(edge, 28); });
    int width = 77;
    int height = 77;
    Call get("panel.getPanelSize", "ask for the width " + TextOf(edge), kPanelSection);
    get([&] { panel->GetPanelSize(&width, &height); });
    get.ExpectIs(edge, width);
    get.ExpectIs(28, height);
    get([&] { panel->GetPanelSize(nullptr, nullptr); });
  }
  End(std::move(panel));
}

void AskControlsOf() {
  auto panel = NewPanel("-multisel:1");
  if (panel == nullptr) return;
  Call none("panel.getControllerCount", "count the controls of an empty panel", kPanelSection);
  none.ExpectIs(0U, none([&] { return panel->GetControllerCount(); }));
  constexpr unsigned int kIDs[] = {5, 0, 0xFFFFFFFF, 5};
  AKGUICtrl* controls[4] = {};
  for (int i = 0; i < 4; ++i) {
    Call add("panel.addController", "add a control of ID " + TextOf(kIDs[i]), kPanelSection);
    controls[i] = add([&] { return panel->NewController("-id:%u -type:Slider", kIDs[i]); });
    Call count("panel.getControllerCount", "count them", kPanelSection);
    count.ExpectIs(static_cast<unsigned int>(i) + 1, count([&] { return panel->GetControllerCount(); }));
  }
  for (int i = 0; i < 3; ++i) {
    Call call("panel.getController",
              "ask for the control of ID " + TextOf(kIDs[i]) + ", the first of two or the only one", kPanelSection);
    call.Expect(call([&] { return panel->GetController(kIDs[i]); }) == controls[i], "the control that was added",
                "another one, or null");
  }
  for (const unsigned int id : {1U, 6U, 0x7FFFFFFFU}) {
    Call call("panel.getController", "ask for an ID that no control has", kPanelSection);
    call.ExpectNull(call([&] { return panel->GetController(id); }));
  }
  for (unsigned int i = 0; i < 500; ++i) panel->NewController("-id:%u -type:Button", 1000 + i);
  Call many("panel.getControllerCount", "count 504 controls", kPanelSection);
  many.ExpectIs(504U, many([&] { return panel->GetControllerCount(); }));
  End(std::move(panel));
}

// Where the answer is -1 whatever window there is.
void AskDialogsRefused(const Moment& moment) {
  auto panel = NewPanel("-title:\"Refuse This\"");
  if (panel == nullptr) return;
  constexpr int kBefore = 12345;
  auto* const object = const_cast<AKObject*>(moment.Object());
  const auto proc = static_cast<AKModalProc>(&Examiner::CloseAtOnce);
  const auto refuse = [&](const char* done, AKModalProc one, AKObject* of, const char* section) {
    int result = kBefore;
    Call call("panel.openModalDialog", done, section);
    call.ExpectStatus(-1, call([&] { return panel->OpenModalDialog(one, of, &result); }));
    call.ExpectIs(kBefore, result);
  };
  refuse("open a dialog without a procedure", nullptr, object, kPanelSection);
  refuse("open a dialog without an object", proc, nullptr, kPanelSection);
  if (moment.ID() != MomentID::kStart && !Moment::MayEdit()) {
    refuse("open a dialog from a method that only looks", proc, object, kWithinSection);
  }
  Call close("panel.closeDialog", "close a dialog that is not open", kPanelSection);
  close([&] { panel->CloseDialog(3); });
  End(std::move(panel));
}

}  // namespace

void AskPanels(const Moment& moment) {
  if (!HasTable(TableID::kPanel) || !IsCallable("panel.construct") || !IsCallable("panel.destruct")) return;
  for (const char* description : {"-multisel:", "-id:x -title:\"never ends", "%s%n", ""}) {
    if (auto panel = NewPanel(description)) End(std::move(panel));
  }
  AskSettings();
  AskSizes();
  AskControlsOf();
  AskDialogsRefused(moment);
}

}  // namespace torture
