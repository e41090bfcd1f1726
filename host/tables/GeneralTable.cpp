// The general service table.
#include <cstdio>
#include <string_view>

#include "host/Host.h"
#include "host/tables/TableBuilder.h"
#include "kit/AKHostServices.h"
#include "kit/AKValue.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

constexpr int kStatusUnknownProperty = -711;

int GetApplicationProperty(AKString const& key, AKValue* out) {
  if (out == nullptr || !(key == "Name")) return kStatusUnknownProperty;
  out->SetasAKString("objecthost");
  return 0;
}

// This host numbers no standard paths but 0, the temporary folder.
AKFilePath const& GetStandardPath(unsigned int kind) {
  static const AKFilePath temporary = AKFileUtils::GetTemporaryDir();
  static const AKFilePath none;
  return kind == 0 ? temporary : none;
}

void LocaleSetDomain(char const* domain) { Host::Instance().localeDomain = domain != nullptr ? domain : ""; }

// This host has no catalogues: a text stands for itself.
char const* LocaleGetString(char const* text) { return text; }

void LogMessage(char const* line) {
  Host& host = Host::Instance();
  if (host.quietCount != 0) return;
  if (host.collectedLog != nullptr) {
    host.collectedLog->emplace_back(line);
    return;
  }
  const std::string_view text(line);
  std::fprintf(stderr, "%s%s", line, text.ends_with('\n') ? "" : "\n");
}

TableBuilder MakeTable() {
  TableBuilder table;
  table.Plain(kAKServiceApplicationProperty, &GetApplicationProperty);
  table.Plain(kAKServiceStandardPath, &GetStandardPath);
  table.Plain(kAKServiceLocaleSetDomain, &LocaleSetDomain);
  table.Plain(kAKServiceLocaleGetString, &LocaleGetString);
  table.Plain(kAKServiceLogMessage, &LogMessage);
  // The three dialogs need a window; without one their entries stay null.
  return table;
}

}  // namespace

void* GeneralTable() {
  static TableBuilder table = MakeTable();
  return table.Table();
}

}  // namespace host
