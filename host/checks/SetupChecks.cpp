// pluginMain: which hosts it accepts and what it does with what they hand over.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Subject.h"

namespace host::validator {
namespace {

constexpr int kRefused = -4711;

std::size_t ClassCount() { return Host::Instance().Classes().Classes().size(); }

void Starts(Trial& trial) { Subject subject(trial); }

void RefusesNull(Trial& trial) {
  const Library library(trial);
  trial.Do("pluginMain with null");
  const int status = library.Start(nullptr);
  trial.Expect(status < 0, "a negative status", StatusText(status));
}

void ExpectRefused(Trial& trial, const AKHostServiceRecord& record) {
  const Library library(trial);
  const std::size_t before = ClassCount();
  AKHostServiceRecord own = record;
  char words[80];
  std::snprintf(words, sizeof(words), "pluginMain with magic 0x%08X and version 0x%08X", own.magic, own.apiVersion);
  trial.Do(words);
  const int status = library.Start(&own);
  trial.Expect(status < 0, "a negative status", StatusText(status));
  trial.Expect(ClassCount() == before, "no class is registered", "one is");
}

void RefusesMagic(Trial& trial) {
  for (const std::uint32_t magic : {0U, 0x534F4341U, AKHostServiceRecord::kMagic + 1}) {
    AKHostServiceRecord record = Host::Instance().ServiceRecord();
    record.magic = magic;
    ExpectRefused(trial, record);
  }
}

void RefusesVersion(Trial& trial) {
  for (const std::uint32_t version : {0x000307FFU, 0x00040800U, 0x00020800U, 0x00030000U, 0U, 0x80030800U}) {
    AKHostServiceRecord record = Host::Instance().ServiceRecord();
    record.apiVersion = version;
    ExpectRefused(trial, record);
  }
}

void AcceptsNewer(Trial& trial) {
  for (const std::uint32_t version : {0x00030801U, 0x00031000U, 0x00038123U, 0x0003F800U, 0x0003FFFFU}) {
    const Library library(trial);
    AKHostServiceRecord record = Host::Instance().ServiceRecord();
    record.apiVersion = version;
    char words[80];
    std::snprintf(words, sizeof(words), "pluginMain with version 0x%08X", version);
    trial.Do(words);
    const int status = library.Start(&record);
    trial.Expect(status == 0, "status 0", StatusText(status));
  }
}

void RefusesTwice(Trial& trial) {
  Subject subject(trial);
  const std::size_t before = ClassCount();
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  trial.Do("pluginMain a second time");
  const int status = subject.File().Start(&record);
  trial.Expect(status < 0, "a negative status", StatusText(status));
  trial.Expect(ClassCount() == before, "no further class", std::to_string(ClassCount() - before) + " more");
  for (const ClassCalls& cls : subject.Classes()) StateOf(cls, cls.Make());
}

// A record that is altered by `change`, with tables of its own.
struct Services {
  Services() {
    record = Host::Instance().ServiceRecord();
    general = *GeneralTable();
    classes = *ClassTable();
    record.generalTable = &general;
    record.classTable = &classes;
  }
  AKHostServiceRecord record;
  AKGeneralTable general;
  AKClassTable classes;
};

int sCallsAfterRefusal = 0;

void ClassRefused(Trial& trial) {
  static Services services;
  services.classes.classSetup = [](const AKClassInfo&, unsigned int, AKClass**) { return kRefused; };
  services.classes.setClassName = [](AKClass*, const AKString&, const AKString&) { ++sCallsAfterRefusal; };
  services.classes.addInspectorGUIDesc = [](AKClass*, AKGUIDesc*) { ++sCallsAfterRefusal; };
  const Library library(trial);
  trial.Do("pluginMain with a host whose class set-up returns -4711");
  const int status = library.Start(&services.record);
  trial.Expect(status == kRefused, StatusText(kRefused), StatusText(status));
  trial.Expect(sCallsAfterRefusal == 0, "no class is named and no panel attached",
               std::to_string(sCallsAfterRefusal) + " such calls");
}

unsigned int sWord = 0;

void HandsOnWord(Trial& trial) {
  constexpr unsigned int kWord = 0xC0FFEE42;
  static Services services;
  services.record.setupWord = kWord;
  services.classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
    sWord = word;
    return ClassTable()->classSetup(info, word, out);
  };
  const Library library(trial);
  trial.Do("pluginMain with the set-up word 0xC0FFEE42");
  library.Start(&services.record);
  trial.Expect(sWord == kWord, "the class set-up gets it", "it gets " + std::to_string(sWord));
}

constexpr AKMethodSlot kMark{0xABCDE0, 0};

void KeepsLockedSlots(Trial& trial) {
  static Services services;
  services.classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
    const int status = ClassTable()->classSetup(info, word, out);
    if (status != 0) return status;
    (*out)->flags |= AKClass::kFlagLocked;
    for (AKMethodSlot& slot : (*out)->methods) slot = kMark;
    return 0;
  };
  Subject subject(trial, services.record);
  trial.Do("pluginMain with a host that locks the slots (flag 0x01)");
  for (const ClassCalls& cls : subject.Classes()) {
    for (unsigned int i = 0; i < kAKMethodCount; ++i) {
      const bool isKept = std::memcmp(&cls.Record().methods[i], &kMark, sizeof(kMark)) == 0;
      trial.Expect(isKept, "the slots stay as the host left them", "slot " + std::to_string(i) + " was written");
    }
  }
}

// Memory of whole pages of its own, which can be locked.
template <typename T>
class LockedCopy {
 public:
  explicit LockedCopy(const T& original)
      : copy_(static_cast<T*>(mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    if (copy_ == MAP_FAILED) _exit(2);
    std::memcpy(static_cast<void*>(copy_), &original, sizeof(T));
  }
  T* Get() const { return copy_; }
  void Lock(int access) const { mprotect(copy_, sizeof(T), access); }

 private:
  T* copy_;
};

void KeepsRecord(Trial& trial) {
  const LockedCopy<AKHostServiceRecord> record(Host::Instance().ServiceRecord());
  const Library library(trial);
  record.Lock(PROT_READ);
  trial.Do("pluginMain with a record that can't be written");
  const int status = library.Start(record.Get());
  trial.Expect(status == 0, "status 0", StatusText(status));
}

void UseAll(Trial& trial, const ClassCalls& cls) {
  const Instance object = cls.Make();
  const State state = StateOf(cls, object);
  cls.Set(object, state.properties);
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  AKDrawEvent event;
  event.bounds = {8, 8, 56, 56};
  cls.Draw(object, bitmap.GetContextOfBitmap(), event);
  if (cls.Panel() != nullptr) cls.Send(object, AKGUIEvent::kFillControls, 0);
  static_cast<void>(trial);
}

void ForgetsRecord(Trial& trial) {
  const LockedCopy<AKHostServiceRecord> record(Host::Instance().ServiceRecord());
  const std::size_t first = ClassCount();
  const Library library(trial);
  trial.Do("pluginMain");
  library.Start(record.Get());
  record.Lock(PROT_NONE);
  const auto& all = Host::Instance().Classes().Classes();
  for (std::size_t i = first; i < all.size(); ++i) UseAll(trial, ClassCalls(trial, all[i]));
}

void KeepsTables(Trial& trial) {
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  const LockedCopy<AKGeneralTable> general(*GeneralTable());
  const LockedCopy<AKClassTable> classes(*ClassTable());
  const LockedCopy<AKHandlerTable> handlers(*HandlerTable());
  const LockedCopy<AKControlTable> controls(*HostControl::Table());
  const LockedCopy<AKPanelTable> panels(*HostPanel::Table());
  record.generalTable = general.Get();
  record.classTable = classes.Get();
  record.handlerTable = handlers.Get();
  record.controlTable = controls.Get();
  record.panelTable = panels.Get();
  general.Lock(PROT_READ);
  classes.Lock(PROT_READ);
  handlers.Lock(PROT_READ);
  controls.Lock(PROT_READ);
  panels.Lock(PROT_READ);
  Subject subject(trial, record);
  for (const ClassCalls& cls : subject.Classes()) UseAll(trial, cls);
}

}  // namespace

std::vector<Check> SetupChecks() {
  return {
      {"setup-starts", "pluginMain returns 0 for a host that offers everything, and a class is there.", 1, &Starts,
       Check::Kind::kNeeded},
      {"setup-null", "pluginMain refuses a null record by a negative status.", 1, &RefusesNull},
      {"setup-magic", "pluginMain refuses a record of another magic, which is no host's that it knows.", 1,
       &RefusesMagic},
      {"setup-old-version", "pluginMain refuses versions that lack what it needs, rather than crash with them.", 1,
       &RefusesVersion},
      {"setup-new-version", "pluginMain accepts newer versions of the same major number, which keep what there was.", 1,
       &AcceptsNewer},
      {"setup-twice", "A second call of pluginMain is refused and changes nothing, since the class is there already.",
       1, &RefusesTwice},
      {"setup-class-refused", "A class that the host refuses gives the host's own status, and nothing comes behind.", 1,
       &ClassRefused},
      {"setup-word", "The set-up word goes on to the class set-up, for which the host meant it.", 1, &HandsOnWord},
      {"setup-locked", "Slots that the host has locked (flag 0x01) stay as they are.", 1, &KeepsLockedSlots},
      {"setup-record-kept", "The record is read only: the host may hand the same one to others.", 2, &KeepsRecord},
      {"setup-record-forgotten", "The record is not looked at later: it is gone when pluginMain returns.", 2,
       &ForgetsRecord},
      {"setup-tables-kept", "The tables are read only: they serve all bundles.", 2, &KeepsTables},
  };
}

}  // namespace host::validator
