#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "kit/log/AKLog.h"
#include "kit/objects/AKClass.h"
#include "kit/objects/AKClassSetup.h"
#include "kit/objects/AKObjectClass.h"
#include "kit/streams/AKFile.h"

namespace {

AKObject* NoConstructor() { return nullptr; }

TEST(AKClassTest, Record_FromDescription_HasEveryFieldInPlace) {
  AKClassInfo info;
  info.classID = AKClassID("abcdefghij");  // cut to seven characters
  info.parentClassID = AKClassID("parent");
  info.instanceSize = 4711;
  info.className = "Name";
  const AKClass bare(info, false, nullptr);
  EXPECT_EQ(bare.flags, 0x50U);
  info.constructor = &NoConstructor;
  const auto quickCast = reinterpret_cast<AKClassQCast>(0x1234);
  const AKClass full(info, true, quickCast);
  EXPECT_EQ(full.flags, 0xA0U);

  const auto* bytes = reinterpret_cast<const unsigned char*>(&full);
  EXPECT_EQ(std::memcmp(bytes, "abcdefg\0parent\0\0\0\0\0\0\0\0\0\0", 24), 0);
  const auto word = [bytes](unsigned int offset) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes + offset, 8);
    return value;
  };
  EXPECT_EQ(word(40), 0x1234U);
  EXPECT_EQ(word(48), 0x1234U);
  EXPECT_EQ(word(104), 4711U);
  for (const AKString& name : full.names) EXPECT_TRUE(name == "Name");
  for (unsigned int offset = 112; offset < 1168; offset += 8) EXPECT_EQ(word(offset), 0U) << offset;
}

TEST(AKClassTest, APIVersion_MaskRule) {
  const struct {
    std::uint32_t version;
    bool accepted;
  } cases[] = {{0x00030800, true}, {0x000307FF, false}, {0x0003F800, true},  {0x0003FFFF, true},
               {0x00031000, true}, {0x000317FF, true},  {0x00040800, false}, {0x00020800, false},
               {0x0003, false},    {0x80030800, false}, {0x00038000, true}};
  for (const auto& c : cases) EXPECT_EQ(AKIsAPIVersionAccepted(c.version), c.accepted) << std::hex << c.version;
}

TEST(AKClassTest, OwnClasses_HaveTheirIDs_AndAskForTheirRecordsByThem) {
  static std::vector<std::string> sAsked;
  AKClassTable table;
  table.getClassOfID = [](AKClassID id) {
    sAsked.emplace_back(id.chars);
    return static_cast<AKClass*>(nullptr);
  };
  AKClass::sWrapper = &table;
  AKObject::_Class();
  AKObjectShape::_Class();
  AKObjectSymbol::_Class();
  AKObjectSymbolVect::_Class();
  AKObject::_Class();  // kept
  AKClass::sWrapper = nullptr;
  EXPECT_EQ(sAsked, (std::vector<std::string>{"_object", "_shape", "_symbol", "_syVect"}));
}

TEST(AKClassTest, ClassSetup_WithoutAClassTable_LogsALine) {
  static std::string sLine;
  AKSetCustomLogMessageProc([](const char* line) { sLine = line; }, false);
  AKClassInfo info;
  info.className = "Name";
  AKClass* record = nullptr;
  EXPECT_EQ(AKClass::ClassSetup(info, 0, &record), -1);
  AKSetCustomLogMessageProc(nullptr, false);
  EXPECT_EQ(sLine, "# AKLib Error -1: The host has no class table for class <Name>.\n");
}

struct OtherBase {
  int akmDelete() { return 0; }
  virtual ~OtherBase() = default;
};

// A class of the least: what it does not have stays the host's.
class Least : public AKObjectClass<Least, AKObjectSymbolVect>, public OtherBase {
 public:
  static constexpr char kClassID[] = "least12";
  static constexpr char kClassName[] = "Least";
  static constexpr char kLocaleDomain[] = "Least";
  static const char* DisplayName() { return "Least"; }
  int akmDelete() { return OtherBase::akmDelete(); }
  virtual int akmWriteToFile(AKFile&) const { return 17; }
  int Reading(AKFile&) { return 0; }
};

TEST(AKClassTest, FillMethodSlots_WhatTheClassHas_TheOthersStay) {
  AKClass record(AKClassInfo{}, false, nullptr);
  for (AKMethodSlot& slot : record.methods) slot = {0x1000, 0x20};
  Least::FillMethodSlots(&record);
  for (unsigned int i = 0; i < kAKMethodCount; ++i) {
    EXPECT_EQ(record.methods[i].function == 0x1000, i != kAKMethodWriteToFile && i != kAKMethodDelete) << i;
  }
  EXPECT_EQ(record.methods[kAKMethodWriteToFile].function & 1, 1U) << "it is virtual";
  AKObject* object = Least::_ClassCtor();
  AKFile file(AKFile::kModeMemory);
  EXPECT_EQ((AKCallMember<int, AKFile&>(record.methods[kAKMethodWriteToFile], object, file)), 17);
  Least::_ClassDtor(object);
  Least::_ClassDtor(nullptr);
}

TEST(AKClassTest, Register_AClassWithoutInspector_HandsOverNoPanel) {
  static AKClass sRecord(AKClassInfo{}, false, nullptr);
  AKClassTable table;
  table.classSetup = [](const AKClassInfo& info, unsigned int, AKClass** out) {
    *out = &sRecord;
    return info.instanceSize == sizeof(Least) ? 0 : -1;
  };
  table.setClassName = [](AKClass* cls, const AKString& name, const AKString&) { cls->comments = name; };
  table.addInspectorGUIDesc = [](AKClass*, AKGUIDesc*) { ADD_FAILURE(); };
  AKHostServiceRecord host{};
  host.magic = AKHostServiceRecord::kMagic;
  host.apiVersion = 0x00030800;
  host.displayScale = 1;
  host.classTable = &table;
  AKClass* record = nullptr;
  EXPECT_EQ(Least::Register(&host, &record), 0);
  AKClass::sWrapper = nullptr;
  EXPECT_EQ(record, &sRecord);
  EXPECT_TRUE(sRecord.comments == "Least");
  EXPECT_NE(sRecord.methods[kAKMethodDelete].function, 0U);
}

// What must not compile: an inherited function, which may need another address of the object; another signature; a slot
// that is the host's, or none.
template <unsigned int index, typename Method>
constexpr bool kCanFill = requires(AKClass record, Method method) {
  record.SetMethod<index, Least>(method);
};
static_assert(kCanFill<kAKMethodDelete, int (Least::*)()>);
static_assert(kCanFill<kAKMethodDelete, int (Least::*)() noexcept>);
static_assert(!kCanFill<kAKMethodDelete, int (OtherBase::*)()>);
static_assert(!kCanFill<kAKMethodDelete, int (Least::*)() const>);
static_assert(!kCanFill<kAKMethodDelete, void (Least::*)()>);
static_assert(!kCanFill<kAKMethodDelete, int (*)()>);
static_assert(kCanFill<kAKMethodWriteToFile, decltype(&Least::akmWriteToFile)>);
static_assert(!kCanFill<kAKMethodWriteToFile, decltype(&Least::Reading)>);
static_assert(!kCanFill<4, int (Least::*)()>);
static_assert(!kCanFill<kAKMethodCount, int (Least::*)()>);

TEST(AKObjectTest, Alloc_ZeroedBehindHiddenPointer_AndSafeForNull) {
  AKClassInfo info;
  info.className = "Name";
  const AKClass record(info, false, nullptr);
  auto* memory = static_cast<unsigned char*>(_AKClassObjectAlloc(&record, 100));
  EXPECT_EQ(_AKClassObjectGetHiddenClassPtr(reinterpret_cast<AKObject*>(memory)), &record);
  for (unsigned int i = 0; i < 100; ++i) EXPECT_EQ(memory[i], 0);
  _AKClassObjectDealloc(memory);
  _AKClassObjectDealloc(nullptr);
  EXPECT_EQ(_AKClassObjectAlloc(&record, ~0UL), nullptr);
}

std::vector<AKObject*> sDeleted;

TEST(AKObjectTest, Deletes_LastFirst_KeepsStorage) {
  AKClassTable table;
  table.deleteObject = [](AKObject* object) { sDeleted.push_back(object); };
  AKClass::sWrapper = &table;
  char strangers[3];
  AKObjectArray objects;
  for (char& stranger : strangers) objects.Append(reinterpret_cast<AKObject*>(&stranger));
  const std::vector<AKObject*> reversed = {objects[2], objects[1], objects[0]};
  const unsigned int capacity = objects.Capacity();
  AKDeletes(objects);
  AKClass::sWrapper = nullptr;
  EXPECT_EQ(sDeleted, reversed);
  EXPECT_TRUE(objects.IsEmpty());
  EXPECT_EQ(objects.Capacity(), capacity);
}

}  // namespace
