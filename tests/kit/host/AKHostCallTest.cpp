// Host tables laid out by hand: plain entries, member entries called directly and through a virtual table, adjustments.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>

#include "kit/files/AKFilePath.h"
#include "kit/host/AKHostCall.h"
#include "kit/host/AKHostServices.h"
#include "kit/objects/AKClass.h"
#include "kit/objects/AKHandler.h"
#include "kit/panels/AKGUIDesc.h"
#include "kit/values/AKValue.h"

namespace {

std::uintptr_t sTable[128];

template <typename Function>
void PutPlain(std::size_t offset, Function* function) {
  sTable[offset / 8] = reinterpret_cast<std::uintptr_t>(function);
}

// What stands at the adjusted address of a host object.
struct Part {
  const std::uintptr_t* virtualTable;
  int seen;
};

// The part that is called lies 24 bytes into the object.
struct HostObject {
  char front[24];
  Part part;
};

// Functions of member entries need an even address, since bit 0 marks virtual ones; those of classes always have one.
#define AK_MEMBER_FUNCTION __attribute__((aligned(2)))

AK_MEMBER_FUNCTION int Record(void* part, int value) {
  static_cast<Part*>(part)->seen = value;
  return value * 2;
}

TEST(AKHostCallTest, MemberEntry_DirectAndVirtual_GoToTheAdjustedObject) {
  std::uintptr_t virtualTable[4] = {0, 0, reinterpret_cast<std::uintptr_t>(&Record), 0};
  HostObject object{{}, {virtualTable, 0}};
  for (const std::uintptr_t first : {reinterpret_cast<std::uintptr_t>(&Record), std::uintptr_t{2 * 8 + 1}}) {
    object.part.seen = 0;
    const std::uintptr_t entry[2] = {first, offsetof(HostObject, part)};
    AKHostMember<int(int)> member;
    std::memcpy(static_cast<void*>(&member), entry, sizeof(entry));
    EXPECT_EQ(member.Call(&object, 21), 42);
    EXPECT_EQ(object.part.seen, 21);
  }
}

// A host class whose second base has the functions: the compiler's own adjustments and virtual tables.
struct FirstBase {
  virtual ~FirstBase() = default;
  char front[40] = {};
};
struct SecondBase {
  virtual ~SecondBase() = default;
  virtual int Virtual(int value) { return factor * value; }
  int Direct(int value) const { return factor + value; }
  int factor = 3;
};
struct TwoBases final : FirstBase, SecondBase {
  int Virtual(int value) override { return -SecondBase::Virtual(value); }
};

TEST(AKHostCallTest, Set_FunctionsOfASecondBase_AreAdjustedFromTheHostsClass) {
  TwoBases host;
  const auto words = [](const auto& member) { return std::bit_cast<AKMemberWords>(member); };
  AKHostMember<int(int)> member;
  member.Set<TwoBases>(&SecondBase::Virtual);
  EXPECT_EQ(words(member).function & 1, 1U);
  EXPECT_EQ(words(member).adjustment, 48);
  EXPECT_EQ(member.Call(&host, 5), -15);
  member.Set<TwoBases>(&TwoBases::Direct);
  EXPECT_EQ(words(member).function & 1, 0U);
  EXPECT_EQ(words(member).adjustment, 48);
  EXPECT_EQ(member.Call(&host, 5), 8);
}

// What must not compile: a function of another signature, of a class that the host's does not derive from, or without
// the host's class.
template <typename Member, typename Host, typename Method>
constexpr bool kCanSet = requires(Member member, Method method) {
  member.template Set<Host>(method);
};
template <typename Member, typename Method>
constexpr bool kCanSetWithoutHost = requires(Member member, Method method) {
  member.Set(method);
};
using IntMember = AKHostMember<int(int)>;
static_assert(kCanSet<IntMember, TwoBases, int (SecondBase::*)(int)>);
static_assert(kCanSet<IntMember, TwoBases, int (SecondBase::*)(int) const>);
static_assert(!kCanSet<IntMember, TwoBases, int (SecondBase::*)(long)>);
static_assert(!kCanSet<IntMember, TwoBases, void (SecondBase::*)(int)>);
static_assert(!kCanSet<IntMember, FirstBase, int (SecondBase::*)(int)>);
static_assert(!kCanSetWithoutHost<IntMember, int (SecondBase::*)(int)>);

TEST(AKHostCallTest, WithoutHost_EveryServiceFallsBack) {
  ASSERT_EQ(gAKWrap, nullptr);
  const char* text = "Rectangle";
  AKFilePath path;
  EXPECT_EQ(NKGetApplicationProperty("x", nullptr), -1);
  EXPECT_TRUE(NKGetStandardPath(3).IsEmpty());
  EXPECT_TRUE(NKGetStandardFilePath(3, "name.txt") == AKFilePath("name.txt"));
  NKLocaleSetDomain("domain");
  EXPECT_EQ(NKLocaleGetString(text), text);
  EXPECT_EQ(AKGUIDialogSaveFile(path, "a", "b"), 0);
  EXPECT_EQ(AKGUIDialogOpenFile(path, "a", "b"), 0);
  EXPECT_EQ(AKGUIWindowProgress(1, 0.5, "c"), 0);
  EXPECT_EQ(AKClass::GetClassOfID(kAKNullClassID), nullptr);
  EXPECT_FALSE(AKHandler(nullptr).IsActive());
  const AKGUIDesc panel("-multisel:1");
  EXPECT_TRUE(panel.GetValueAsAGColor(1) == kAGColorBlack);
  int size[2] = {7, 7};
  panel.GetPanelSize(&size[0], &size[1]);
  EXPECT_EQ(size[0] + size[1], 0);
}

class GeneralTableTest : public testing::Test {
 protected:
  void SetUp() override {
    std::memset(sTable, 0, sizeof(sTable));
    gAKWrap = reinterpret_cast<const AKGeneralTable*>(sTable);
  }
  void TearDown() override { gAKWrap = nullptr; }
};

TEST_F(GeneralTableTest, Services_GoToTheirEntries_WithTheirArguments) {
  PutPlain(
      32, +[](const AKString& key, AKValue* out) {
        out->SetasAKString(key);
        return 77;
      });
  PutPlain(
      40, +[](unsigned int kind) -> const AKFilePath& {
        static const AKFilePath folder("/standard/folder");
        static const AKFilePath none;
        return kind == 5 ? folder : none;
      });
  PutPlain(
      56, +[](const char* text) { return text + 1; });
  AKValue value;
  EXPECT_EQ(NKGetApplicationProperty("key", &value), 77);
  EXPECT_TRUE(*value.GetasAKString() == "key");
  EXPECT_TRUE(NKGetStandardFilePath(5, "n.txt") == AKFilePath("/standard/folder/n.txt"));
  EXPECT_STREQ(NKLocaleGetString("xRest"), "Rest");
}

TEST_F(GeneralTableTest, Dialogs_AreOptionalOneByOne) {
  PutPlain(
      128, +[](AKFilePath& path, const AKString& a, const AKString& b) {
        path.SetFileName(a + b);
        return 1;
      });
  AKFilePath path("/folder/");
  EXPECT_EQ(AKGUIDialogSaveFile(path, "a", "b"), 1);
  EXPECT_TRUE(path == AKFilePath("/folder/ab"));
  EXPECT_EQ(AKGUIDialogOpenFile(path, "a", "b"), 0);
  EXPECT_EQ(AKGUIWindowProgress(1, 0.5, "c"), 0);
}

// A handler table whose host object only notes what it was asked.
struct HandlerNotes {
  unsigned int added = 99;
  unsigned int deleted = 99;
  AKHandlerLinkMode mode = 0;
};

AK_MEMBER_FUNCTION int NoteAdded(void* object, const AKObjectArray& objects, AKObject*, AKHandlerLinkMode mode) {
  auto* self = static_cast<HandlerNotes*>(object);
  self->added = objects.Count();
  self->mode = mode;
  return 11;
}

AK_MEMBER_FUNCTION int NoteDeleted(void* object, const AKObjectArray& objects) {
  static_cast<HandlerNotes*>(object)->deleted = objects.Count();
  return 12;
}

TEST(AKHandlerTest, SingleObjects_TravelAsArrays) {
  std::memset(sTable, 0, sizeof(sTable));
  HandlerNotes notes;
  static HandlerNotes* sNotes;
  sNotes = &notes;
  PutPlain(
      32, +[](AKHandler* handler, NKTreeHandler*) { handler->SetHostObject(sNotes); });
  PutPlain(
      40, +[](AKHandler*) {});
  PutPlain(224, &NoteAdded);
  PutPlain(240, &NoteDeleted);
  AKHandler::sWrapper = reinterpret_cast<const AKHandlerTable*>(sTable);
  {
    AKHandler handler(nullptr);
    AKObject* stranger = reinterpret_cast<AKObject*>(&notes);
    EXPECT_EQ(handler.AddObject(stranger, nullptr, 7), 11);
    EXPECT_EQ(notes.added, 1U);
    EXPECT_EQ(notes.mode, 7U);
    EXPECT_EQ(handler.DeleteObject(nullptr), 12);
    EXPECT_EQ(notes.deleted, 0U);
  }
  AKHandler::sWrapper = nullptr;
}

}  // namespace
