#include "kit/host/AKHostServices.h"

#include "kit/files/AKFilePath.h"
#include "kit/host/AKHostCall.h"

void* gAKWrap = nullptr;
double gAGDisplayScale = 1.0;

namespace {

bool HasEntry(std::size_t offset) { return gAKWrap != nullptr && AKHostTableWord(gAKWrap, offset) != 0; }

int CallFileDialog(std::size_t offset, AKFilePath& path, AKString const& first, AKString const& second) {
  if (!HasEntry(offset)) return 0;
  return AKHostCallPlain<int, AKFilePath&, AKString const&, AKString const&>(gAKWrap, offset, path, first, second);
}

}  // namespace

int NKGetApplicationProperty(AKString const& key, AKValue* out) {
  if (gAKWrap == nullptr) return -1;
  return AKHostCallPlain<int, AKString const&, AKValue*>(gAKWrap, kAKServiceApplicationProperty, key, out);
}

AKFilePath const& NKGetStandardPath(unsigned int kind) {
  if (gAKWrap == nullptr) return kAKNullFilePath;
  return AKHostCallPlain<AKFilePath const&, unsigned int>(gAKWrap, kAKServiceStandardPath, kind);
}

AKFilePath NKGetStandardFilePath(unsigned int kind, AKString const& fileName) {
  AKFilePath path;
  path.SetPath(NKGetStandardPath(kind).Text());
  path.SetFileName(fileName);
  return path;
}

void NKLocaleSetDomain(char const* domain) {
  if (gAKWrap != nullptr) AKHostCallPlain<void, char const*>(gAKWrap, kAKServiceLocaleSetDomain, domain);
}

char const* NKLocaleGetString(char const* text) {
  if (gAKWrap == nullptr) return text;
  return AKHostCallPlain<char const*, char const*>(gAKWrap, kAKServiceLocaleGetString, text);
}

int AKGUIDialogSaveFile(AKFilePath& path, AKString const& first, AKString const& second) {
  return CallFileDialog(kAKServiceDialogSaveFile, path, first, second);
}

int AKGUIDialogOpenFile(AKFilePath& path, AKString const& first, AKString const& second) {
  return CallFileDialog(kAKServiceDialogOpenFile, path, first, second);
}

int AKGUIWindowProgress(unsigned int command, double fraction, AKString const& text) {
  if (!HasEntry(kAKServiceWindowProgress)) return 0;
  return AKHostCallPlain<int, unsigned int, double, AKString const&>(gAKWrap, kAKServiceWindowProgress, command,
                                                                     fraction, text);
}
