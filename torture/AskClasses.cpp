// Look-ups of classes.
#include <set>
#include <string>

#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Examiner.h"
#include "torture/Puppet.h"

namespace torture {
namespace {

struct OwnClass {
  AKClassID id;
  AKClassID parent;
};

void AskIDs() {
  const OwnClass known[] = {{AKObject::_ClassID(), kAKNullClassID},
                            {AKObjectShape::_ClassID(), AKObject::_ClassID()},
                            {AKObjectSymbol::_ClassID(), AKObjectShape::_ClassID()},
                            {AKObjectSymbolVect::_ClassID(), AKObjectSymbol::_ClassID()},
                            {AKClassID("_layer"), AKObject::_ClassID()},
                            {Puppet::_ClassID(), AKObjectSymbolVect::_ClassID()},
                            {Bare::_ClassID(), Puppet::_ClassID()}};
  for (const OwnClass& own : known) {
    Call call("class.getClassOfID", "ask for the class " + TextOf(std::string_view(own.id.chars)), kClassSection);
    const AKClass* record = call([&] { return AKClass::GetClassOfID(own.id); });
    call.Expect(record != nullptr, "its record", "null");
    if (record == nullptr) continue;
    call.Expect(record->classID == own.id, "a record of that ID", "one of another");
    call.Expect(record->parentClassID == own.parent, "the parent " + TextOf(std::string_view(own.parent.chars)),
                TextOf(std::string_view(record->parentClassID.chars, sizeof(AKClassID))));
    call.Expect(call([&] { return AKClass::GetClassOfID(own.id); }) == record, "the same record again", "another one");
  }
  AKClassID whole;
  for (char& byte : whole.chars) byte = 'x';
  for (const AKClassID& none :
       {kAKNullClassID, AKClassID("noClass"), AKClassID("akpuppt"), AKClassID("akPupp"), whole}) {
    Call call("class.getClassOfID", "ask for an ID that no class has", kClassSection);
    call.ExpectNull(call([&] { return AKClass::GetClassOfID(none); }));
  }
}

// What came out, as a set; each once.
std::set<AKClass*> Collection(const AKClass* from, unsigned int selection) {
  AKClassArray classes{nullptr, nullptr};
  Call call("class.getClassCollection",
            std::string("collect the classes from ") + (from == nullptr ? "null" : TextOf(from->names[0])) +
                " down, selection " + TextOf(selection),
            kClassSection);
  call([&] { AKClass::GetClassCollection(&classes, from, selection); });
  std::set<AKClass*> found(classes.begin(), classes.end());
  call.Expect(found.size() == classes.Count(), "each class once", "one several times");
  call.Expect(!found.contains(nullptr), "records, and nothing of what the array held", "null among them");
  found.erase(nullptr);
  for (const AKClass* one : found) {
    call.Expect(AKClass::GetClassOfID(one->classID) == one, "records that are found by their IDs", "another");
  }
  return found;
}

void AskCollections() {
  AKClass* const puppet = Puppet::_Class();
  AKClass* const bare = Bare::_Class();
  const auto expect = [](bool holds, const char* done, const char* expected) {
    Call("class.getClassCollection", done, kClassSection).Expect(holds, expected, "others");
  };
  const std::set<AKClass*> all = Collection(nullptr, 0);
  const std::set<AKClass*> belowTop = Collection(AKClass::GetTopClass(), 0);
  expect(all.contains(puppet) && all.contains(bare) && all.contains(Examiner::_Class()), "collect all classes",
         "those of this bundle among them");
  expect(all == belowTop, "collect the classes from the top down", "all that there are");
  expect(Collection(puppet, 0) == std::set<AKClass*>{puppet, bare}, "collect a class with one below it", "the two");
  expect(Collection(bare, 0) == std::set<AKClass*>{bare}, "collect a class with none below it", "that class alone");
  for (const unsigned int selection : {1U, 2U, 0x7FFFFFFFU, 0xFFFFFFFFU}) Collection(nullptr, selection);
}

}  // namespace

void AskClasses() {
  Call call("class.getTopClass", "ask for the top class", kClassSection);
  const AKClass* top = call([] { return AKClass::GetTopClass(); });
  call.Expect(top != nullptr && top->classID == AKObject::_ClassID(), "the record of \"_object\"",
              top == nullptr ? "null" : "another one");
  call.Expect(call([] { return AKClass::GetTopClass(); }) == top, "the same record again", "another one");
  AskIDs();
  AskCollections();
}

}  // namespace torture
