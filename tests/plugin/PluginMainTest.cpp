// The bundle's entry, called as a host calls it, with host tables laid out word by word.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "kit/objects/AKClass.h"
#include "kit/panels/AKGUIDesc.h"

namespace {

std::vector<std::string> sCalls;
std::vector<std::string> sLog;
AKClass* sRecord = nullptr;
int sPanelObject = 0;
std::uint32_t sFlagsOfNewRecords = 0;
int sSetupStatus = 0;

std::string Formatted(const char* format, va_list list) {
  char text[256];
  std::vsnprintf(text, sizeof(text), format, list);
  return text;
}

int ClassSetup(const AKClassInfo& info, unsigned int word, AKClass** out) {
  sCalls.push_back("setup " + std::to_string(word) + " " + info.classID.chars + " " + info.parentClassID.chars + " " +
                   info.className + " " + std::to_string(info.instanceSize));
  if (sSetupStatus != 0) return sSetupStatus;
  sRecord = new AKClass(info, false, nullptr);
  sRecord->flags |= sFlagsOfNewRecords;
  for (AKMethodSlot& slot : sRecord->methods) slot = {0x1000, 0x20};  // what a host puts there for the parent class
  *out = sRecord;
  return 0;
}

// Functions of member entries need an even address, since bit 0 marks virtual ones.
__attribute__((aligned(2))) void NoteSize(void*, int width, int height) {
  sCalls.push_back("size " + std::to_string(width) + " " + std::to_string(height));
}
__attribute__((aligned(2))) void DropControl(void*, AKGUICtrl* control) { delete control; }

// A host with the least that a bundle needs. Control and panel wrappers point at this object.
class PluginMainTest : public testing::Test {
 protected:
  void SetUp() override {
    sCalls.clear();
    sLog.clear();
    sRecord = nullptr;
    sFlagsOfNewRecords = 0;
    sSetupStatus = 0;
    const auto put = [](std::uintptr_t* table, std::size_t offset, auto* function) {
      table[offset / 8] = reinterpret_cast<std::uintptr_t>(function);
    };
    put(
        general_, 48, +[](const char* domain) { sCalls.push_back(std::string("domain ") + domain); });
    put(
        general_, 56, +[](const char* text) -> const char* {
          sCalls.push_back(std::string("lookup ") + text);
          return std::strcmp(text, "Rectangle") == 0 ? "Rechteck" : text;
        });
    put(
        general_, 96, +[](const char* line) { sLog.emplace_back(line); });
    put(class_, 4 * 8, &ClassSetup);
    put(
        class_, 5 * 8, +[](AKClass*, const AKString& name, const AKString& second) {
          sCalls.push_back(std::string("name ") + name.CStr() + "/" + second.CStr());
        });
    put(
        class_, 7 * 8, +[](AKClass* cls, AKGUIDesc* panel) {
          sCalls.push_back(cls == sRecord ? "panel attached" : "panel to another class");
          delete panel;
        });
    put(
        panel_, 32, +[](AKGUIDesc* panel, const char* format, va_list list) {
          panel->SetHostObject(&sPanelObject);
          sCalls.push_back("panel " + Formatted(format, list));
        });
    put(
        panel_, 40, +[](AKGUIDesc*) {});
    put(panel_, 128, &NoteSize);
    put(panel_, 352, &DropControl);
    put(
        control_, 32, +[](AKGUICtrl*, AKGUIDesc*, const char* format, va_list list) {
          sCalls.push_back("control " + Formatted(format, list));
        });
    put(
        control_, 40, +[](AKGUICtrl*) {});
    AKGUIDesc::sWrapper = reinterpret_cast<const AKPanelTable*>(
        panel_);  // this program's own copy of the kit deletes what the bundle made
    AKGUICtrl::sWrapper = reinterpret_cast<const AKControlTable*>(control_);

    library_ = dlopen(AK_BUNDLE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library_, nullptr) << dlerror();
    main_ = reinterpret_cast<int (*)(void*)>(dlsym(library_, "pluginMain"));
    ASSERT_NE(main_, nullptr);
    Put<std::uint32_t>(0, 0x41434F53);
    Put<std::uint32_t>(4, 0x00030800);
    Put<std::uint32_t>(8, 1234);
    Put<double>(16, 2.0);
    Put<void*>(24, general_);
    Put<void*>(32, class_);
    Put<void*>(40, handler_);
    Put<void*>(48, control_);
    Put<void*>(56, panel_);
  }

  void TearDown() override {
    delete sRecord;
    dlclose(library_);
    EXPECT_EQ(dlopen(AK_BUNDLE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the bundle stays in memory";
    AKGUIDesc::sWrapper = nullptr;
    AKGUICtrl::sWrapper = nullptr;
  }

  template <typename T>
  void Put(std::size_t offset, T value) {
    std::memcpy(record_ + offset, &value, sizeof(value));
  }

  void* library_ = nullptr;
  int (*main_)(void*) = nullptr;
  unsigned char record_[64] = {};
  std::uintptr_t general_[20] = {};
  std::uintptr_t class_[32] = {};
  std::uintptr_t handler_[34] = {};
  std::uintptr_t control_[126] = {};
  std::uintptr_t panel_[64] = {};
};

TEST_F(PluginMainTest, Start_CallsTheHostInOrder) {
  ASSERT_EQ(main_(record_), 0);
  const std::vector<std::string> expected = {
      "setup 1234 stdRect _syVect CStdRect 360",
      "domain StdRectangle",
      "lookup Rectangle",
      "name Rechteck/",
      "domain StdRectangle",
      "panel -multisel:1",
      "lookup Curvature",
      "control -id:0 -type:StaticText  -pos:(010;7) -dim:(068;016) -title:\"Curvature\"",
      "control -id:1 -type:EditNum     -pos:(082;2) -dim:(048;022) -prec:2",
      "control -id:2 -type:Slider      -pos:(130;2) -dim:(098;020) -range:(0;1)",
      "size 0 28",
      "panel attached",
  };
  EXPECT_EQ(sCalls, expected);
  EXPECT_TRUE(sLog.empty());
}

TEST_F(PluginMainTest, Slots_NinePlainMethods_TheOthersStay) {
  ASSERT_EQ(main_(record_), 0);
  const std::vector<unsigned int> filled = {0, 1, 2, 3, 7, 8, 11, 13, 23};
  for (unsigned int i = 0; i < 64; ++i) {
    const AKMethodSlot& slot = sRecord->methods[i];
    const bool own = std::find(filled.begin(), filled.end(), i) != filled.end();
    EXPECT_EQ(slot.function != 0x1000, own) << i;
    EXPECT_EQ(slot.adjustment, own ? 0 : 0x20) << i;
    if (!own) continue;
    Dl_info where{};
    EXPECT_EQ(slot.function & 1, 0U) << i;
    EXPECT_NE(dladdr(reinterpret_cast<void*>(slot.function), &where), 0);
    EXPECT_STREQ(where.dli_fname, AK_BUNDLE) << i;
  }
}

TEST_F(PluginMainTest, LockedSlots_StayTheHosts_ThePanelIsAttachedAllTheSame) {
  sFlagsOfNewRecords = 0x01;
  ASSERT_EQ(main_(record_), 0);
  for (const AKMethodSlot& slot : sRecord->methods) EXPECT_EQ(slot.function, 0x1000U);
  EXPECT_EQ(sCalls.back(), "panel attached");
}

TEST_F(PluginMainTest, Refusals_GiveTheirStatus_AndTouchNothing) {
  EXPECT_EQ(main_(nullptr), -1);
  Put<std::uint32_t>(0, 0x41434F54);
  Put<std::uint32_t>(4, 0);
  EXPECT_EQ(main_(record_), -1) << "the magic comes before the version";
  Put<std::uint32_t>(0, 0x41434F53);
  for (const std::uint32_t version : {0x000307FFU, 0x00040800U, 0x00020800U}) {
    Put<std::uint32_t>(4, version);
    EXPECT_EQ(main_(record_), -792) << std::hex << version;
  }
  EXPECT_TRUE(sCalls.empty());
  EXPECT_TRUE(sLog.empty()) << "no log procedure is known yet";

  Put<std::uint32_t>(4, 0x0003F800);
  sSetupStatus = -55;
  EXPECT_EQ(main_(record_), -55);
  EXPECT_EQ(sCalls.size(), 1U) << "a failed set-up goes no further";
}

TEST_F(PluginMainTest, SecondCall_FailsWithItsLine) {
  ASSERT_EQ(main_(record_), 0);
  sCalls.clear();
  EXPECT_EQ(main_(record_), -1);
  EXPECT_TRUE(sCalls.empty());
  ASSERT_EQ(sLog.size(), 1U);
  EXPECT_EQ(sLog[0], "# AKLib Error -1: Can't complete AKClassSetup() of class <CStdRect>.\n");
}

}  // namespace
