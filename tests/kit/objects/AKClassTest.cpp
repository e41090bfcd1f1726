#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "kit/objects/AKClass.h"
#include "kit/objects/AKClassSetup.h"

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
