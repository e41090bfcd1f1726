// The general service table.
#include <cmath>

#include "host/Host.h"
#include "host/HostLog.h"
#include "host/UserInterface.h"
#include "host/model/InstanceCall.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "kit/files/AKFileUtils.h"
#include "kit/host/AKHostServices.h"
#include "kit/values/AKValue.h"

namespace host {
namespace {

constexpr int kStatusUnknownProperty = -711;

int GetApplicationProperty(const AKString& key, AKValue* out) {
  if (out == nullptr || !(key == "Name")) return kStatusUnknownProperty;
  out->SetasAKString("objecthost");
  return 0;
}

// This host numbers no standard paths but 0, the temporary folder.
const AKFilePath& GetStandardPath(unsigned int kind) {
  static const AKFilePath temporary = AKFileUtils::GetTemporaryDir();
  static const AKFilePath none;
  return kind == 0 ? temporary : none;
}

void LocaleSetDomain(const char* domain) { Localisation::Instance().SetDomain(domain != nullptr ? domain : ""); }
const char* LocaleGetString(const char* text) { return Localisation::Instance().ForBundle(text); }

// The texts of the file dialogs are a title and a list of extensions such as "akd;png". Their result is 1 when the user
// chose, else 0.
template <bool (UserInterface::*choose)(AKFilePath*, const std::string&, const std::string&)>
int ChooseFile(AKFilePath& path, const AKString& title, const AKString& extensions) {
  UserInterface* const interface = Host::Instance().userInterface;
  return interface != nullptr && InstanceCall::MayEdit("a file dialog") &&
                 (interface->*choose)(&path, DisplayText(title), DisplayText(extensions))
             ? 1
             : 0;
}

// Of the progress window the command is 0 to show it and 1 to close it; the fraction runs from 0 to 1. The result is 1
// when the user wants the work to stop, else 0. What is no number counts as 0.
int ShowProgress(unsigned int command, double fraction, const AKString& text) {
  constexpr double kClose = 2;  // beyond the end
  UserInterface* const interface = Host::Instance().userInterface;
  if (interface == nullptr) return 0;
  return interface->ShowProgress(command == 0 ? std::fmin(std::fmax(0.0, fraction), 1.0) : kClose, DisplayText(text))
             ? 1
             : 0;
}

void LogMessage(const char* line) {
  if (line != nullptr) HostLog::Instance().Take(line, __builtin_return_address(0));
}

AKGeneralTable MakeTable() {
  AKGeneralTable table;
  table.getApplicationProperty = &GetApplicationProperty;
  table.getStandardPath = &GetStandardPath;
  table.localeSetDomain = &LocaleSetDomain;
  table.localeGetString = &LocaleGetString;
  table.logMessage = &LogMessage;
  table.dialogSaveFile = &ChooseFile<&UserInterface::ChooseFileToSave>;
  table.dialogOpenFile = &ChooseFile<&UserInterface::ChooseFileToOpen>;
  table.windowProgress = &ShowProgress;
  return table;
}

}  // namespace

const AKGeneralTable* GeneralTable() {
  static const AKGeneralTable table = MakeTable();
  return &table;
}

}  // namespace host
