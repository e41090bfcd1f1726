// How it starts, and what it does to the process then.
#include <fcntl.h>
#include <fenv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "Mutant.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

AKClass* sRecord = nullptr;

// A second class, for the fault of sharing something between two.
class Twin final : public AKObjectClass<Twin, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "tTwin";
  static constexpr char kClassName[] = "Twin";
  static constexpr char kLocaleDomain[] = "Mutant";
  static const char* DisplayName() { return kClassName; }

  int akmGetObjectProperties(AKDictionary* properties) const {
    return properties->SetValue("Shared", AKValueSetasFloat64(Has("shared-classes") ? gShared : own_));
  }
  int akmSetObjectProperties(const AKDictionary& properties) {
    AKValueGetasFloat64(properties.GetValue("Shared"), Has("shared-classes") ? &gShared : &own_, false);
    return 0;
  }

 private:
  double own_ = 0;
};

// A third one, which looks at what the second one changes.
class Looker final : public AKObjectClass<Looker, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "tLooker";
  static constexpr char kClassName[] = "Looker";
  static constexpr char kLocaleDomain[] = "Mutant";
  static const char* DisplayName() { return kClassName; }

  int akmGetObjectProperties(AKDictionary* properties) const {
    return properties->SetValue("Seen", AKValueSetasFloat64(gShared));
  }
};

void DisturbProcess() {
  if (Has("leaks-start")) Leak(100);
  if (Has("shared-by-copies")) ++mutantUnique;
  if (Has("leaves-file")) static_cast<void>(open("/dev/null", O_RDONLY));
  if (Has("leaves-thread")) std::thread([] { sleep(1000); }).detach();
  if (Has("changes-folder")) static_cast<void>(chdir("/") + 0);
  if (Has("changes-mask")) umask(0);
  if (Has("changes-locale")) std::setlocale(LC_COLLATE, "C.UTF-8");
  if (Has("changes-rounding")) fesetround(FE_UPWARD);
  if (Has("changes-environment") || Has("starts-once")) setenv("MUTANT", "was here", 1);
  if (Has("changes-signals")) std::signal(SIGTERM, SIG_IGN);
}

// What it asks of the host before anything else; a status that is not 0 ends it.
int AskHost(AKHostServiceRecord* record) {
  if (Has("starts-once") && std::getenv("MUTANT") != nullptr) return -1;
  if (Has("does-not-start")) return -5;
  if (Has("reads-null") && record->setupWord == 12) return -5;
  if (record == nullptr) return -1;
  AKValue name;
  const AKGeneralTable* general = record->generalTable;
  if (Has("needs-general") && general->unused64[0] == 12) return -5;
  if (Has("needs-handlers") && record->handlerTable->unused0[0] == 12) return -5;
  if (Has("needs-panels") && record->panelTable->unused0[0] == 12) return -5;
  if (Has("needs-log") && general != nullptr) general->logMessage("started");
  if (Has("needs-property") && general != nullptr && general->getApplicationProperty("Name", &name) != 0) return -5;
  if (Has("one-scale") && record->displayScale != 1) return -5;
  if (Has("one-version") && record->apiVersion != 0x00030800) return -792;
  if (Has("writes-record")) *const_cast<volatile std::uint32_t*>(&record->setupWord) = 0;
  if (Has("writes-tables") && general != nullptr) const_cast<AKGeneralTable*>(general)->unused0[0] = 1;
  gKeptRecord = record;
  return 0;
}

// The class as AKObjectClass registers it, with faults.
int SetUp(AKHostServiceRecord* record) {
  AKClassInfo info;
  info.classID = Has("blank-id") ? AKClassID("a b") : Mutant::_ClassID();
  info.parentClassID = Has("wrong-parent") ? AKObject::_ClassID() : AKObjectSymbolVect::_ClassID();
  info.constructor = &Mutant::Construct;
  info.destructor = &Mutant::Destroy;
  info.instanceSize = sizeof(Mutant) + (Has("wrong-size") ? 4096 : 0);
  info.className = Mutant::kClassName;
  const int status = _AKClassSetupT<Mutant>(record, info, &sRecord);
  if (status != 0) return status;
  NKLocaleSetDomain(Mutant::kLocaleDomain);
  AKClass::SetClassName(sRecord, AKString(Mutant::DisplayName()), kAKNullString);
  const std::uint32_t flags = sRecord->flags;
  if (Has("opens-lock")) sRecord->flags &= ~AKClass::kFlagLocked;
  Mutant::FillMethodSlots(sRecord);
  sRecord->flags = flags;
  if (AKGUIDesc* panel = Mutant::BuildInspectorGUIDesc()) AKClass::AddInspectorGUIDesc(sRecord, panel);
  return 0;
}

void SpoilRecord() {
  if (Has("adjusted-slot")) sRecord->methods[kAKMethodGetNaturalBounds].adjustment = 8;
  if (Has("foreign-slot")) sRecord->methods[kAKMethodDelete].function = reinterpret_cast<std::uintptr_t>(&std::malloc);
  if (Has("host-slot")) sRecord->methods[20] = sRecord->methods[kAKMethodDelete];
  if (Has("cannot-write")) sRecord->methods[kAKMethodWriteToFile] = {};
  if (Has("host-words")) sRecord->hostWords[0] = 1;
}

}  // namespace

// Hidden by the list of exports, but for one way of linking.
EXPORTED int mutantHelper() { return 7; }

EXPORTED int pluginMain(void* hostServiceRecord) {
  auto* record = static_cast<AKHostServiceRecord*>(hostServiceRecord);
  if (Has("starts-twice") && sRecord != nullptr) return 0;
  if (Has("no-class") && record != nullptr) return 0;
  int status = AskHost(record);
  if (status != 0) return status;
  DisturbProcess();
  AKHostServiceRecord copy = *record;
  if (Has("any-magic")) copy.magic = AKHostServiceRecord::kMagic;
  if (Has("any-version")) copy.apiVersion = 0x00030800;
  if (Has("drops-word")) copy.setupWord = 0;
  status = SetUp(&copy);
  if (Has("hides-refusal") && sRecord == nullptr && copy.classTable != nullptr && record->magic == copy.magic) return 0;
  if (Has("needs-no-classes") && copy.classTable == nullptr) return 0;
  if (status != 0) return status;
  SpoilRecord();
  static AKClass* twin = nullptr;
  static AKClass* looker = nullptr;
  if (Has("shared-classes")) status = Twin::Register(&copy, &twin);
  return status == 0 && Has("shared-classes") ? Looker::Register(&copy, &looker) : status;
}
