#include "kit/host/AKHostServices.h"

#include "kit/files/AKFilePath.h"
#include "kit/host/AKHostCall.h"

void* gAKWrap = nullptr;
double gAGDisplayScale = 1.0;

namespace {

bool HasEntry(std::size_t offset) { return gAKWrap != nullptr && AKHostTableWord(gAKWrap, offset) != 0; }

int CallFileDialog(std::size_t offset, AKFilePath& path, const AKString& first, const AKString& second) {
  if (!HasEntry(offset)) return 0;
  return AKHostCallPlain<int, AKFilePath&, const AKString&, const AKString&>(gAKWrap, offset, path, first, second);
}

}  // namespace

int NKGetApplicationProperty(const AKString& key, AKValue* out) {
  if (gAKWrap == nullptr) return -1;
  return AKHostCallPlain<int, const AKString&, AKValue*>(gAKWrap, kAKServiceApplicationProperty, key, out);
}

const AKFilePath& NKGetStandardPath(unsigned int kind) {
  if (gAKWrap == nullptr) return kAKNullFilePath;
  return AKHostCallPlain<const AKFilePath&, unsigned int>(gAKWrap, kAKServiceStandardPath, kind);
}

AKFilePath NKGetStandardFilePath(unsigned int kind, const AKString& fileName) {
  AKFilePath path;
  path.SetPath(NKGetStandardPath(kind).Text());
  path.SetFileName(fileName);
  return path;
}

void NKLocaleSetDomain(const char* domain) {
  if (gAKWrap != nullptr) AKHostCallPlain<void, const char*>(gAKWrap, kAKServiceLocaleSetDomain, domain);
}

const char* NKLocaleGetString(const char* text) {
  if (gAKWrap == nullptr) return text;
  return AKHostCallPlain<const char*, const char*>(gAKWrap, kAKServiceLocaleGetString, text);
}

int AKGUIDialogSaveFile(AKFilePath& path, const AKString& first, const AKString& second) {
  return CallFileDialog(kAKServiceDialogSaveFile, path, first, second);
}

int AKGUIDialogOpenFile(AKFilePath& path, const AKString& first, const AKString& second) {
  return CallFileDialog(kAKServiceDialogOpenFile, path, first, second);
}

int AKGUIWindowProgress(unsigned int command, double fraction, const AKString& text) {
  if (!HasEntry(kAKServiceWindowProgress)) return 0;
  return AKHostCallPlain<int, unsigned int, double, const AKString&>(gAKWrap, kAKServiceWindowProgress, command,
                                                                     fraction, text);
}
