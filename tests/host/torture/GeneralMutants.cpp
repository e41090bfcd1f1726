// Wrong general services, and a wrong record.
#include <cmath>
#include <cstring>

#include "kit/files/AKFilePath.h"
#include "kit/values/AKValue.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

using Tables = HostTables;

const char* sDomain = "";
AKFilePath sPath;
int sLines = 0;
std::string sTranslation;

}  // namespace

std::vector<HostMutant> GeneralMutants() {
  return {
      {"record", "no display scale", [](Tables* t) { t->record.displayScale = std::nan(""); }},
      {"class.getErrorNew", "a missing entry", [](Tables* t) { t->classes.getErrorNew = nullptr; }},
      {"control.refresh", "a missing member entry", [](Tables* t) { t->control.refresh = {}; }},
      {"handler.isActive", "no handler table", [](Tables* t) { t->record.handlerTable = nullptr; }},
      {"general.windowProgress", "an odd address",
       [](Tables* t) { std::memset(&t->general.windowProgress, 1, sizeof(void*)); }},
      {"general.getApplicationProperty", "writes its output when there is none",
       [](Tables* t) {
         t->general.getApplicationProperty = [](const AKString& key, AKValue* out) {
           const int status = gReal.general.getApplicationProperty(key, out);
           if (status != 0) out->Clear();
           return status;
         };
       }},
      {"general.getApplicationProperty", "knows every key, and gives nothing",
       [](Tables* t) { t->general.getApplicationProperty = [](const AKString&, AKValue*) { return 0; }; }},
      {"general.getStandardPath", "one path for all kinds",
       [](Tables* t) {
         t->general.getStandardPath = [](unsigned int kind) -> const AKFilePath& {
           sPath.SetText("/" + AKString(std::to_string(kind)));
           return sPath;
         };
       }},
      {"general.getStandardPath", "throws for unknown kinds",
       [](Tables* t) {
         t->general.getStandardPath = [](unsigned int kind) -> const AKFilePath& {
           if (kind > 99) throw kind;
           return gReal.general.getStandardPath(kind);
         };
       }},
      {"general.localeSetDomain", "does nothing", [](Tables* t) { t->general.localeSetDomain = [](const char*) {}; }},
      {"general.localeSetDomain", "keeps the name of another's",
       [](Tables* t) {
         t->general.localeSetDomain = [](const char* domain) { sDomain = domain; };
         t->general.localeGetString = [](const char* text) {
           static std::string last;
           last = std::strncmp(sDomain, "##", 2) == 0 ? "none" : sDomain;
           gReal.general.localeSetDomain(last.c_str());
           return gReal.general.localeGetString(text);
         };
       }},
      {"general.localeGetString", "null where there is no translation",
       [](Tables* t) {
         t->general.localeGetString = [](const char* text) -> const char* {
           const char* const given = gReal.general.localeGetString(text);
           return given == text ? nullptr : given;
         };
       }},
      {"general.localeGetString", "one buffer for all texts",
       [](Tables* t) {
         t->general.localeGetString = [](const char* text) {
           sTranslation = gReal.general.localeGetString(text);
           return sTranslation.c_str();
         };
       }},
      {"general.localeGetString", "the catalogue's header for the empty text",
       [](Tables* t) {
         t->general.localeGetString = [](const char* text) {
           return text[0] == '\0' ? "Language: de\n" : gReal.general.localeGetString(text);
         };
       }},
      {"general.logMessage", "drops each tenth line",
       [](Tables* t) {
         t->general.logMessage = [](const char* line) {
           if (++sLines % 10 != 0) gReal.general.logMessage(line);
         };
       }},
      {"general.logMessage", "cuts long lines",
       [](Tables* t) {
         t->general.logMessage = [](const char* line) {
           const std::string all = line;
           gReal.general.logMessage((all.size() < 9000 ? all : all.substr(0, 9000)).c_str());
         };
       }},
      {"general.dialogSaveFile", "asks from methods that only look",
       [](Tables* t) {
         t->general.dialogSaveFile = [](AKFilePath& path, const AKString&, const AKString&) {
           path.SetText("/chosen");
           return 1;
         };
       }},
      {"general.dialogOpenFile", "changes the path when nothing was chosen",
       [](Tables* t) {
         t->general.dialogOpenFile = [](AKFilePath& path, const AKString&, const AKString&) {
           path.Clear();
           return 0;
         };
       }},
      {"general.windowProgress", "gives back percent",
       [](Tables* t) { t->general.windowProgress = [](unsigned int, double, const AKString&) { return 100; }; }},
  };
}

}  // namespace host
