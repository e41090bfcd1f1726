// The record that the host hands over, and the set-up of classes.
#include <cmath>
#include <cstring>
#include <memory>
#include <string>

#include "kit/objects/AKClassSetup.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Entries.h"
#include "torture/Examiner.h"
#include "torture/Puppet.h"

namespace torture {
namespace {

AKObject* NoObject() { return nullptr; }
void NoDestructor(AKObject*) {}

AKClassInfo InfoOf(AKClassID id, AKClassID parent, const char* name) {
  AKClassInfo info;
  info.classID = id;
  info.parentClassID = parent;
  info.constructor = &NoObject;
  info.destructor = &NoDestructor;
  info.instanceSize = sizeof(AKObjectSymbolVect);
  info.className = name;
  return info;
}

// A set-up that fails leaves no class and the output as it was.
void ExpectRefused(const AKClassInfo& info, const std::string& done, int status, const char* section) {
  AKClass* const before = AKClass::GetTopClass();
  AKClass* record = before;
  const bool wasThere = AKClass::GetClassOfID(info.classID) != nullptr;
  Call call("class.classSetup", "set up a class " + done, section);
  const int seen = call([&] { return AKClass::ClassSetup(info, 0, &record); });
  call.ExpectStatus(status, seen);
  call.Expect(record == before, "the output as it was", "another record");
  call.Expect(wasThere || AKClass::GetClassOfID(info.classID) == nullptr, "no class of that ID", "one");
}

void AskBadSetups() {
  const AKClassID parent = AKObjectSymbolVect::_ClassID();
  const AKClassInfo good = InfoOf(AKClassID("akNone"), parent, "None");
  AKClassInfo info = good;
  info.classID = kAKNullClassID;
  ExpectRefused(info, "without an ID", kStatusBadInfo, kClassSection);
  (info = good).className = nullptr;
  ExpectRefused(info, "whose name is null", kStatusBadInfo, kClassSection);
  (info = good).className = "";
  ExpectRefused(info, "whose name is empty", kStatusBadInfo, kClassSection);
  (info = good).constructor = nullptr;
  ExpectRefused(info, "without a constructor", kStatusBadInfo, kClassSection);
  (info = good).destructor = nullptr;
  ExpectRefused(info, "without a destructor", kStatusBadInfo, kClassSection);
  (info = good).instanceSize = 0;
  ExpectRefused(info, "whose instances have no size", kStatusBadInfo, kClassSection);
  std::memset((info = good).classID.chars, 'x', sizeof(info.classID));
  ExpectRefused(info, "whose ID has no NUL", kStatusBadInfo, kClassSection);
  (info = good).classID.chars[7] = 'x';
  ExpectRefused(info, "whose ID has a character behind its NUL", kStatusBadInfo, kClassSection);
  for (const AKClassID& taken : {AKObject::_ClassID(), parent, AKClassID("_layer"), Puppet::_ClassID()}) {
    ExpectRefused(InfoOf(taken, parent, "Taken"), "of the ID " + TextOf(std::string_view(taken.chars)),
                  kStatusDuplicate, kClassSection);
  }
  for (const AKClassID& none : {kAKNullClassID, AKClassID("noClass"), AKClassID("_SYVECT"), good.classID}) {
    ExpectRefused(InfoOf(good.classID, none, "None"), "below the unknown ID " + TextOf(std::string_view(none.chars)),
                  kStatusNoParent, kClassSection);
  }
}

void CheckRecord(const AKClassInfo& info, const AKString& name, const AKClass& record) {
  const Call call("class.classSetup", "set up the class " + TextOf(name) + " and look at its record",
                  kClassRecordSection);
  call.Expect(record.classID == info.classID, "its class ID", "another one");
  call.Expect(record.parentClassID == info.parentClassID, "its parent's ID", "another one");
  call.Expect(record.constructor == info.constructor, "its constructor", "another one");
  call.Expect(record.destructor == info.destructor, "its destructor", "another one");
  call.Expect(record.instanceSize == info.instanceSize, "its instance size", TextOf(record.instanceSize));
  for (const AKString& own : record.names) {
    call.Expect(own == name, "four copies of its name, which is borrowed for the call", TextOf(own));
  }
  call.ExpectIs(AKString(), record.comments);
  const std::uint32_t bits = record.flags & (AKClass::kFlagHasConstructor | AKClass::kFlagNoConstructor);
  call.Expect(bits == AKClass::kFlagHasConstructor, "flag 0x20 and not 0x10, for it has a constructor",
              TextOf(record.flags));
  bool isEmpty = true;
  for (const AKMethodSlot& slot : record.methods) isEmpty = isEmpty && slot.function == 0 && slot.adjustment == 0;
  call.Expect(isEmpty, "empty slots: none is inherited", "one with a function");
}

// Returns the record; null when the host refuses.
template <typename Class>
AKClass* SetUp(AKClassCtor constructor, AKClassID parent, const char* name, unsigned int word, int* status) {
  AKClassInfo info = InfoOf(Class::_ClassID(), parent, nullptr);
  info.constructor = constructor;
  info.destructor = &Class::_ClassDtor;
  info.instanceSize = sizeof(Class);
  std::string borrowed = name;
  info.className = borrowed.c_str();
  AKClass* record = nullptr;
  Call call("class.classSetup", "set up the class " + TextOf(std::string_view(name)), kClassSection);
  *status = call([&] { return AKClass::ClassSetup(info, word, &record); });
  borrowed.assign(borrowed.size(), '#');
  call.ExpectStatus(0, *status);
  if (*status == 0 && record == nullptr) *status = -1;
  call.Expect(*status != -1, "a record with status 0", "null");
  if (*status != 0) return nullptr;
  call.Expect(AKClass::GetClassOfID(info.classID) == record, "the class, when it is asked for by its ID",
              "another one");
  CheckRecord(info, AKString(name), *record);
  Class::FillMethodSlots(record);
  return record;
}

void NameClass(AKClass* record) {
  for (const AKString& name : {OddText(), LongText(), AKString(""), AKString(Examiner::DisplayName())}) {
    Call call("class.setClassName", "name a class " + TextOf(name), kClassSection);
    call([&] { AKClass::SetClassName(record, name, kAKNullString); });
    call.ExpectIs(name, record->names[1]);
  }
  for (const AKString& comments : {OddText(), LongText(), AKString("Examines the host that loads it")}) {
    Call call("class.setClassComments", "comment a class with " + TextOf(comments), kClassSection);
    call([&] { AKClass::SetClassComments(record, comments); });
    call.ExpectIs(comments, record->comments);
  }
}

// The last one replaces the others, and one for a class that nobody has is ended.
void AttachPanels(AKClass* record) {
  const auto attach = [](AKClass* cls, const char* done, AKGUIDesc* panel) {
    Call call("class.addInspectorGUIDesc", done, kClassSection);
    call([&] { AKClass::AddInspectorGUIDesc(cls, panel); });
  };
  attach(record, "give a class an empty panel", new AKGUIDesc);
  attach(record, "give it another one", Examiner::BuildInspectorGUIDesc());
  attach(record, "give it a third one", Examiner::BuildInspectorGUIDesc());
  static AKClass stranger(InfoOf(AKClassID("akNone"), kAKNullClassID, "None"), false, nullptr);
  attach(&stranger, "give a panel to a record that the host did not make", Examiner::BuildInspectorGUIDesc());
}

}  // namespace

void AskRecord(const AKHostServiceRecord& record) {
  const Call call("record", "look at the record that pluginMain was given", kRecordSection);
  call.ExpectIs(AKHostServiceRecord::kMagic, record.magic);
  call.Expect(AKIsAPIVersionAccepted(record.apiVersion), "major version 3 with one of bits 11 to 15 set",
              TextOf(record.apiVersion));
  call.Expect(std::isfinite(record.displayScale) && record.displayScale > 0, "a display scale above 0",
              TextOf(record.displayScale));
  call.Expect(record.classTable != nullptr, "a class table: a host that registers classes has it", "null");
}

int AskSetup(unsigned int setupWord) {
  int status = 0;
  const AKClassID parent = AKObjectSymbolVect::_ClassID();
  AKClass* record = SetUp<Puppet>(&Puppet::Construct, parent, "Puppet", setupWord, &status);
  if (status == 0) SetUp<Bare>(&Bare::_ClassCtor, Puppet::_ClassID(), "Bare", setupWord, &status);
  if (status == 0) record = SetUp<Examiner>(&Examiner::_ClassCtor, parent, "HostExaminer", setupWord, &status);
  if (status != 0) return status;
  AskBadSetups();
  NameClass(record);
  AttachPanels(record);
  return 0;
}

void AskSetupAgain() {
  ExpectRefused(InfoOf(AKClassID("akNone"), AKObjectSymbolVect::_ClassID(), "None"), "from within a method",
                kStatusRefused, kWithinSection);
  Call call("class.addInspectorGUIDesc", "give a class a panel from within a method, which ends the panel",
            kWithinSection);
  call([] { AKClass::AddInspectorGUIDesc(Examiner::_Class(), new AKGUIDesc("-title:Refused")); });
}

}  // namespace torture
