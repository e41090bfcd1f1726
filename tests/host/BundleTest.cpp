// Bundles that load, bundles that don't, and what unloading leaves behind.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "host/bundles/Bundle.h"

namespace host {
namespace {

bool IsMapped(const char* name) {
  std::ifstream maps("/proc/self/maps");
  std::stringstream text;
  text << maps.rdbuf();
  return text.str().find(name) != std::string::npos;
}

TEST(BundleTest, Load_RegistersTheRectangle) {
  std::string error;
  const auto bundle = Bundle::Load(AK_BUNDLE, &error);
  ASSERT_NE(bundle, nullptr) << error;
  ASSERT_EQ(bundle->Classes().size(), 1U);
  const AKClass& cls = *bundle->Classes()[0]->record;
  EXPECT_TRUE(DisplayName(cls) == "Rectangle");
  EXPECT_TRUE(cls.names[0] == "CStdRect");
  EXPECT_EQ(cls.parentLink, Host::Instance().Classes().Find(AKClassID("_syVect")));

  const auto second = Bundle::Load(AK_BUNDLE, &error);
  EXPECT_EQ(second, nullptr) << "the bundle is set up already";
  EXPECT_NE(Host::Instance().Classes().Find(AKClassID("stdRect")), nullptr);
}

TEST(BundleTest, Load_WhatIsNoBundle_SaysWhy) {
  const std::string folder = AK_TEST_BUNDLES;
  const struct {
    std::string path;
    const char* reason;
  } cases[] = {{folder + "/missing.so", "No such file"},
               {"/proc/self/environ", "is no bundle"},
               {folder + "/NoEntry.so", "it has no pluginMain"},
               {folder + "/Refuses.so", "returned status -4321"},
               {folder, "is no bundle"}};
  for (const auto& c : cases) {
    std::string error;
    EXPECT_EQ(Bundle::Load(c.path, &error), nullptr) << c.path;
    EXPECT_NE(error.find(c.reason), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  }
}

TEST(BundleTest, LoadAndUnload_HundredTimes_LeavesNothing) {
  [[maybe_unused]] std::size_t before = 0;  // a sanitizer's allocator is not asked
  for (int i = 0; i < 100; ++i) {
    std::string error;
    auto bundle = Bundle::Load(AK_BUNDLE, &error);
    ASSERT_NE(bundle, nullptr) << error;
    EXPECT_TRUE(IsMapped("StdRectangle.so"));
    bundle.reset();
    ASSERT_FALSE(IsMapped("StdRectangle.so")) << i;
    ASSERT_EQ(Host::Instance().Classes().Find(AKClassID("stdRect")), nullptr);
    // The first rounds warm up what the process keeps for itself.
    if (i == 9) before = mallinfo2().uordblks;
  }
#if !defined(AK_SANITIZED)  // a sanitizer's allocator counts otherwise
  // The dynamic loader's own tables grow by a kilobyte or so in the first hundreds of rounds and then no more; one
  // leaked block a round would be more than this.
  EXPECT_LE(mallinfo2().uordblks, before + 90 * 24) << "bytes in use have grown";
#endif
}

}  // namespace
}  // namespace host
