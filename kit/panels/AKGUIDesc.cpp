#include "kit/panels/AKGUIDesc.h"

namespace {

enum Offset : std::size_t {
  kSetProperty = 96,
  kGetProperty = 112,
  kSetPanelSize = 128,
  kGetPanelSize = 144,
  kSetPanelTitle = 160,
  kGetPanelTitle = 176,
  kAddController = 352,
  kGetController = 368,
  kGetControllerCount = 384,
  kOpenModalDialog = 480,
  kCloseDialog = 496,
};

using ConstructorEntry = void (*)(AKGUIDesc*, const char*, va_list);

ConstructorEntry Constructor() {
  return reinterpret_cast<ConstructorEntry>(AKHostTableWord(AKGUIDesc::sWrapper, kAKWrapperConstructorOffset));
}

}  // namespace

void* AKGUIDesc::sWrapper = nullptr;

AKGUIDesc::AKGUIDesc() {
  if (sWrapper != nullptr) Constructor()(this, nullptr, nullptr);
}

AKGUIDesc::AKGUIDesc(const char* format, ...) {
  if (sWrapper == nullptr) return;
  va_list list;
  va_start(list, format);
  Constructor()(this, format, list);
  va_end(list);
}

AKGUIDesc::~AKGUIDesc() {
  if (sWrapper != nullptr) AKHostCallPlain<void, AKGUIDesc*>(sWrapper, kAKWrapperDestructorOffset, this);
}

unsigned int AKGUIDesc::DescID() const { return Call<unsigned int, unsigned int>(kGetProperty, kAKGUIPropertyID); }
unsigned int AKGUIDesc::Flags() const { return Call<unsigned int, unsigned int>(kGetProperty, kAKGUIPropertyFlags); }

void AKGUIDesc::SetDescFlag(unsigned int flags, bool on) {
  const unsigned int old = Flags();
  Call<void, unsigned int, unsigned int>(kSetProperty, kAKGUIPropertyFlags, on ? (old | flags) : (old & ~flags));
}

bool AKGUIDesc::IsDescFlag(unsigned int flags) const { return (Flags() & flags) == flags; }
void AKGUIDesc::SetIdling(bool on) { SetDescFlag(kFlagIdling, on); }
void AKGUIDesc::SetYielding(bool on) { SetDescFlag(kFlagYielding, on); }
bool AKGUIDesc::IsIdling() const { return IsDescFlag(kFlagIdling); }
bool AKGUIDesc::IsYielding() const { return IsDescFlag(kFlagYielding); }

void AKGUIDesc::SetPanelSize(int width, int height) { Call<void, int, int>(kSetPanelSize, width, height); }
void AKGUIDesc::GetPanelSize(int* width, int* height) const { Call<void, int*, int*>(kGetPanelSize, width, height); }
void AKGUIDesc::SetPanelTitle(const AKString& title) { Call<void, const AKString&>(kSetPanelTitle, title); }
AKString AKGUIDesc::GetPanelTitle() const { return Call<AKString>(kGetPanelTitle); }

AKGUICtrl* AKGUIDesc::NewController(const char* format, ...) {
  va_list list;
  va_start(list, format);
  auto* control = new AKGUICtrl(this, format, list);
  va_end(list);
  Call<void, AKGUICtrl*>(kAddController, control);
  return control;
}

AKGUICtrl* AKGUIDesc::GetController(unsigned int id) const {
  return Call<AKGUICtrl*, unsigned int>(kGetController, id);
}
unsigned int AKGUIDesc::GetControllerCount() const { return Call<unsigned int>(kGetControllerCount); }

int AKGUIDesc::OpenModalDialog(ModalProc proc, AKObject* object, int* result) {
  return Call<int, ModalProc, AKObject*, int*>(kOpenModalDialog, proc, object, result);
}
void AKGUIDesc::CloseDialog(int result) { Call<void, int>(kCloseDialog, result); }
