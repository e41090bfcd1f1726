#include "kit/host/AKHostServices.h"

#include "kit/files/AKFilePath.h"

const AKGeneralTable* gAKWrap = nullptr;
double gAGDisplayScale = 1.0;

int NKGetApplicationProperty(const AKString& key, AKValue* out) {
  return gAKWrap == nullptr ? -1 : gAKWrap->getApplicationProperty(key, out);
}

const AKFilePath& NKGetStandardPath(unsigned int kind) {
  return gAKWrap == nullptr ? kAKNullFilePath : gAKWrap->getStandardPath(kind);
}

AKFilePath NKGetStandardFilePath(unsigned int kind, const AKString& fileName) {
  AKFilePath path;
  path.SetPath(NKGetStandardPath(kind).Text());
  path.SetFileName(fileName);
  return path;
}

void NKLocaleSetDomain(const char* domain) {
  if (gAKWrap != nullptr) gAKWrap->localeSetDomain(domain);
}

const char* NKLocaleGetString(const char* text) { return gAKWrap == nullptr ? text : gAKWrap->localeGetString(text); }

int AKGUIDialogSaveFile(AKFilePath& path, const AKString& first, const AKString& second) {
  if (gAKWrap == nullptr || gAKWrap->dialogSaveFile == nullptr) return 0;
  return gAKWrap->dialogSaveFile(path, first, second);
}

int AKGUIDialogOpenFile(AKFilePath& path, const AKString& first, const AKString& second) {
  if (gAKWrap == nullptr || gAKWrap->dialogOpenFile == nullptr) return 0;
  return gAKWrap->dialogOpenFile(path, first, second);
}

int AKGUIWindowProgress(unsigned int command, double fraction, const AKString& text) {
  if (gAKWrap == nullptr || gAKWrap->windowProgress == nullptr) return 0;
  return gAKWrap->windowProgress(command, fraction, text);
}
