#include "kit/panels/AKGUIDesc.h"

#include <memory>

const AKPanelTable* AKGUIDesc::sWrapper = nullptr;

AKGUIDesc::AKGUIDesc() {
  if (sWrapper != nullptr) sWrapper->construct(this, nullptr, nullptr);
}

AKGUIDesc::AKGUIDesc(const char* format, ...) {
  if (sWrapper == nullptr) return;
  va_list list;
  va_start(list, format);
  sWrapper->construct(this, format, list);
  va_end(list);
}

AKGUIDesc::~AKGUIDesc() {
  if (sWrapper != nullptr) sWrapper->destruct(this);
}

unsigned int AKGUIDesc::DescID() const { return Call(&AKPanelTable::getProperty, kAKGUIPropertyID); }
unsigned int AKGUIDesc::Flags() const { return Call(&AKPanelTable::getProperty, kAKGUIPropertyFlags); }

void AKGUIDesc::SetDescFlag(unsigned int flags, bool on) {
  const unsigned int old = Flags();
  Call(&AKPanelTable::setProperty, kAKGUIPropertyFlags, on ? (old | flags) : (old & ~flags));
}

bool AKGUIDesc::IsDescFlag(unsigned int flags) const { return (Flags() & flags) == flags; }
void AKGUIDesc::SetIdling(bool on) { SetDescFlag(kFlagIdling, on); }
void AKGUIDesc::SetYielding(bool on) { SetDescFlag(kFlagYielding, on); }
bool AKGUIDesc::IsIdling() const { return IsDescFlag(kFlagIdling); }
bool AKGUIDesc::IsYielding() const { return IsDescFlag(kFlagYielding); }

void AKGUIDesc::SetPanelSize(int width, int height) { Call(&AKPanelTable::setPanelSize, width, height); }
void AKGUIDesc::GetPanelSize(int* width, int* height) const {
  if (!IsHosted()) return AKSetNeutral(width, height);
  Call(&AKPanelTable::getPanelSize, width, height);
}
void AKGUIDesc::SetPanelTitle(const AKString& title) { Call(&AKPanelTable::setPanelTitle, title); }
AKString AKGUIDesc::GetPanelTitle() const { return Call(&AKPanelTable::getPanelTitle); }

AKGUICtrl* AKGUIDesc::NewController(const char* format, ...) {
  va_list list;
  va_start(list, format);
  auto control = std::make_unique<AKGUICtrl>(this, format, list);
  va_end(list);
  Call(&AKPanelTable::addController, control.get());  // which may throw
  return control.release();
}

AKGUICtrl* AKGUIDesc::GetController(unsigned int id) const { return Call(&AKPanelTable::getController, id); }
unsigned int AKGUIDesc::GetControllerCount() const { return Call(&AKPanelTable::getControllerCount); }

int AKGUIDesc::OpenModalDialog(ModalProc proc, AKObject* object, int* result) {
  return Call(&AKPanelTable::openModalDialog, proc, object, result);
}
void AKGUIDesc::CloseDialog(int result) { Call(&AKPanelTable::closeDialog, result); }
