// Translations, and the threads on which a host is called.
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>

#include "host/text/Localisation.h"
#include "host/validator/Controls.h"
#include "host/validator/Picture.h"

namespace host::validator {
namespace {

// A host whose general services note what is asked of them; one at a time.
struct Watch {
  std::string domain;                                    // empty: set by nobody since the call began
  std::string looseText;                                 // looked up without a domain
  std::string elsewhere;                                 // asked for on another thread
  std::string (*translate)(const char* text) = nullptr;  // null: as the host does
  pid_t thread = 0;
};
Watch sWatch;

pid_t ThisThread() { return static_cast<pid_t>(syscall(SYS_gettid)); }

void NoteThread(const char* entry) {
  if (ThisThread() != sWatch.thread && sWatch.elsewhere.empty()) sWatch.elsewhere = entry;
}

void SetDomain(const char* domain) {
  NoteThread("the localisation domain");
  sWatch.domain = domain == nullptr ? "" : domain;
  GeneralTable()->localeSetDomain(domain);
}

const char* GetString(const char* text) {
  NoteThread("a translation");
  if (sWatch.domain.empty() && sWatch.looseText.empty()) sWatch.looseText = text == nullptr ? "null" : text;
  if (sWatch.translate == nullptr || text == nullptr) return GeneralTable()->localeGetString(text);
  return strdup(sWatch.translate(text).c_str());  // valid as long as the process
}

const AKHostServiceRecord* WatchingServices() {
  static AKGeneralTable general = *GeneralTable();
  static AKClassTable classes = *ClassTable();
  static AKHostServiceRecord record = Host::Instance().ServiceRecord();
  sWatch = Watch();
  sWatch.thread = ThisThread();
  general.localeSetDomain = &SetDomain;
  general.localeGetString = &GetString;
  general.getApplicationProperty = [](const AKString& key, AKValue* out) {
    NoteThread("an application property");
    return GeneralTable()->getApplicationProperty(key, out);
  };
  general.getStandardPath = [](unsigned int kind) -> const AKFilePath& {
    NoteThread("a standard path");
    return GeneralTable()->getStandardPath(kind);
  };
  general.logMessage = [](const char* line) {
    NoteThread("a log line");
    GeneralTable()->logMessage(line);
  };
  classes.getClassOfID = [](AKClassID id) {
    NoteThread("a class of an ID");
    return ClassTable()->getClassOfID(id);
  };
  record.generalTable = &general;
  record.classTable = &classes;
  gServices = &record;
  gBeforeCall = [] { sWatch.domain.clear(); };
  return &record;
}

// All that may look up texts.
void UseAll(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    StateOf(cls, object);
    cls.Set(object, cls.Get(object));
    const Picture picture(cls, object, DrawJob());
    if (cls.Panel() == nullptr) return;
    for (HostControl* control : UsableControls(*cls.Panel())) {
      for (const ControlValue& value : UsualValues(*control)) {
        Change(trial, cls, *cls.Panel(), object, control, value);
      }
    }
  });
}

void Domain(Trial& trial) {
  WatchingServices();
  UseAll(trial);
  trial.Do("look texts up in pluginMain, draw and akmInspector");
  trial.Expect(sWatch.looseText.empty(), "NKLocaleSetDomain before each look-up of the same call",
               "\"" + sWatch.looseText + "\" was looked up in whatever domain was set before");
}

std::string sBadDomain;

void DomainNames(Trial& trial) {
  auto* general = const_cast<AKGeneralTable*>(WatchingServices()->generalTable);
  general->localeSetDomain = [](const char* domain) {
    const std::string name = domain == nullptr ? "" : domain;
    const bool isFile = !name.empty() && name.find('/') == std::string::npos && name[0] != '.' && name != "objecthost";
    if (!isFile && sBadDomain.empty()) sBadDomain = name.empty() ? "(empty)" : name;
  };
  UseAll(trial);
  trial.Do("set the domain in pluginMain and akmInspector");
  trial.Expect(sBadDomain.empty(), "domains that can be names of files, and are not the host's",
               "\"" + sBadDomain + "\"");
}

void UseTranslated(Trial& trial, std::string (*translate)(const char* text)) {
  WatchingServices();
  sWatch.translate = translate;
  UseAll(trial);
}

void Long(Trial& trial) {
  UseTranslated(trial, [](const char* text) { return std::string(text) + std::string(20000, 'w'); });
}

void Formats(Trial& trial) {
  UseTranslated(trial, [](const char* text) { return std::string(text) + " 100%n %s%s%s%n"; });
}

void Quotes(Trial& trial) {
  UseTranslated(trial, [](const char* text) { return "-id:7 -type:Dial " + std::string(text); });
  ForEachPanel(trial, [&](const ClassCalls&, HostPanel& panel) {
    trial.Do("build the panel with translations that look like a part of a description");
    for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
      const std::string complaint = panel.ControlAt(i).Complaint().CStr();
      trial.Expect(complaint.empty(), "titles in double quotes: -title:\\\"%s\\\"", "not understood: " + complaint);
    }
  });
}

void Threads(Trial& trial) {
  WatchingServices();
  UseAll(trial);
  trial.Do("start and use the bundle");
  trial.Expect(sWatch.elsewhere.empty(), "the host is called on its own thread",
               "on another one it was asked for " + sWatch.elsewhere);
}

}  // namespace

std::vector<Check> TranslationChecks() {
  return {
      {"translate-domain", "The domain is set right before each look-up: other bundles set theirs.", 1, &Domain},
      {"translate-domain-name", "A domain is the name of a file of translations.", 1, &DomainNames},
      {"translate-long", "Translations may be of any length.", 2, &Long},
      {"translate-formats", "Translations are no formats: a percent sign in one is a percent sign.", 2, &Formats},
      {"translate-quotes", "Translations stand in quotes within descriptions, since they may have blanks.", 2, &Quotes},
      {"thread-host", "The host is called on its own thread alone: nothing in it is locked.", 2, &Threads},
  };
}

}  // namespace host::validator
