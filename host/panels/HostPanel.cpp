#include "host/panels/HostPanel.h"

#include <dlfcn.h>

#include <cstdarg>
#include <filesystem>
#include <optional>
#include <utility>

#include "host/Host.h"
#include "host/UserInterface.h"
#include "host/model/InstanceCall.h"
#include "host/panels/Description.h"
#include "kit/log/AKLog.h"
#include "kit/objects/AKClass.h"

namespace host {
namespace {

// The file name of the bundle that a class came from.
std::string BundleOf(const AKClass& cls) {
  Dl_info where{};
  if (dladdr(reinterpret_cast<void*>(cls.constructor), &where) == 0 || where.dli_fname == nullptr) return "objecthost";
  return std::filesystem::path(where.dli_fname).filename();
}

// A dialog that is filled for the first time: its procedure may close it before it is shown.
struct Opening {
  explicit Opening(const HostPanel* opened) : panel(opened), outer(std::exchange(innermost, this)) {}
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;
  ~Opening() { innermost = outer; }

  const HostPanel* panel;
  Opening* outer;
  std::optional<int> result;  // what it was closed with

  static inline Opening* innermost = nullptr;
};

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

AKPanelTable MakeTable() {
  AKPanelTable table;
  table.construct = &Construct;
  table.destruct = &Destruct;
  table.setProperty.Set<HostPanel>(&HostPanel::SetProperty);
  table.getProperty.Set<HostPanel>(&HostPanel::GetProperty);
  table.setPanelSize.Set<HostPanel>(&HostPanel::SetPanelSize);
  table.getPanelSize.Set<HostPanel>(&HostPanel::GetPanelSize);
  table.setPanelTitle.Set<HostPanel>(&HostPanel::SetPanelTitle);
  table.getPanelTitle.Set<HostPanel>(&HostPanel::GetPanelTitle);
  table.addController.Set<HostPanel>(&HostPanel::AddControl);
  table.getController.Set<HostPanel>(&HostPanel::GetController);
  table.getControllerCount.Set<HostPanel>(&HostPanel::GetControllerCount);
  table.openModalDialog.Set<HostPanel>(&HostPanel::OpenModalDialog);
  table.closeDialog.Set<HostPanel>(&HostPanel::CloseDialog);
  return table;
}

}  // namespace

HostPanel::HostPanel(AKGUIDesc* wrapper, const AKString& description) : wrapper_(wrapper) {
  static constexpr DescriptionItem<HostPanel> kItems[] = {
      {"-id:", [](HostPanel* panel, const AKString& value) { return ParseUnsigned(value, &panel->id_); }},
      {"-title:", [](HostPanel* panel, const AKString& value) { return panel->title_ = value, true; }},
      {"-flags:", [](HostPanel* panel, const AKString& value) { return ParseUnsigned(value, &panel->flags_); }},
      {"-multisel:",
       [](HostPanel* panel, const AKString& value) { return ParseSwitch(value, &panel->multipleSelection_); }},
  };
  Complain("panel", ReadDescription(description, kItems, this));
}

HostPanel::~HostPanel() {
  for (const std::string& complaint : complaints_) AKLog("a panel of no class, %s", complaint.c_str());
}

void HostPanel::Complain(const std::string& part, const AKString& complaint) {
  if (complaint.IsEmpty()) return;
  const std::string line = part + ": not understood in its description: " + complaint.CStr();
  if (owner_.empty()) {
    complaints_.push_back(line);
  } else {
    AKLog("%s, %s", owner_.c_str(), line.c_str());
  }
}

void HostPanel::SetOwner(const AKClass& cls) {
  owner_ = BundleOf(cls) + ": class " + cls.names[0].CStr();
  for (const std::string& complaint : complaints_) AKLog("%s, %s", owner_.c_str(), complaint.c_str());
  complaints_.clear();
}

HostPanel* HostPanel::Of(const AKGUIDesc* wrapper) {
  return wrapper == nullptr ? nullptr : static_cast<HostPanel*>(wrapper->HostObject());
}

const AKPanelTable* HostPanel::Table() {
  static const AKPanelTable table = MakeTable();
  return &table;
}

const HostControl& HostPanel::ControlAt(unsigned int index) const { return *HostControl::Of(controls_[index].get()); }
HostControl& HostPanel::ControlAt(unsigned int index) { return *HostControl::Of(controls_[index].get()); }

void HostPanel::SetProperty(unsigned int selector, unsigned int value) {
  if (selector == kAKGUIPropertyFlags) flags_ = value;
}

unsigned int HostPanel::GetProperty(unsigned int selector) const {
  if (selector == kAKGUIPropertyID) return id_;
  return selector == kAKGUIPropertyFlags ? flags_ : 0;
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
  // The control becomes the panel's once nothing can fail any more.
  controls_.emplace_back();
  try {
    byID_.try_emplace(own->ID(), control);
  } catch (...) {
    controls_.pop_back();
    throw;
  }
  controls_.back().reset(control);
  Complain("control " + std::to_string(own->ID()), own->Complaint());
}

AKGUICtrl* HostPanel::GetController(unsigned int controlID) const {
  const auto found = byID_.find(controlID);
  return found == byID_.end() ? nullptr : found->second;
}

int HostPanel::OpenModalDialog(AKGUIDesc::ModalProc proc, AKObject* object, int* result) {
  UserInterface* const interface = Host::Instance().userInterface;
  if (interface == nullptr || proc == nullptr || object == nullptr || wrapper_ == nullptr) return -1;
  if (!InstanceCall::MayEdit("OpenModalDialog")) return -1;
  const InstanceCall open(*object->Class(), InstanceCall::kDialog, object);
  if (!open.MayRun()) return -1;
  if (owner_.empty()) SetOwner(*object->Class());
  const auto send = [&](AKGUIEvent& event) { return (object->*proc)(*wrapper_, event); };
  AKGUIEvent fill;
  fill.kind = AKGUIEvent::kFillControls;
  std::optional<int> closed;
  {
    const Opening opening(this);
    send(fill);
    closed = opening.result;
  }
  const int answer = closed ? *closed : interface->RunDialog(*this, send);
  if (result != nullptr) *result = answer;
  return 0;
}

void HostPanel::CloseDialog(int result) {
  for (Opening* opening = Opening::innermost; opening != nullptr; opening = opening->outer) {
    if (opening->panel != this) continue;
    opening->result = result;
    return;
  }
  if (UserInterface* const interface = Host::Instance().userInterface) interface->CloseDialog(*this, result);
}

}  // namespace host
