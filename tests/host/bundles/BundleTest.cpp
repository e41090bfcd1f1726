// Bundles that load, bundles that don't, and what unloading leaves behind.
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/bundles/BundleProbe.h"
#include "host/bundles/BundleSet.h"
#include "tests/host/ResultTestSupport.h"

namespace host {
namespace {

bool IsMapped(const char* name) {
  std::ifstream maps("/proc/self/maps");
  std::stringstream text;
  text << maps.rdbuf();
  return text.str().find(name) != std::string::npos;
}

TEST(BundleTest, Load_RegistersTheRectangle) {
  const auto bundle = Taken(Bundle::Load(AK_BUNDLE));
  ASSERT_EQ(bundle->Classes().size(), 1U);
  const AKClass& cls = *bundle->Classes()[0]->record;
  EXPECT_TRUE(DisplayName(cls) == "Rectangle");
  EXPECT_TRUE(cls.names[0] == "CStdRect");
  EXPECT_EQ(cls.parentLink, Host::Instance().Classes().Find(AKClassID("_syVect")));

  const auto second = Bundle::Load(AK_BUNDLE);
  EXPECT_FALSE(second) << "the bundle is set up already";
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
    const std::string error = Said(Bundle::Load(c.path));
    EXPECT_NE(error.find(c.reason), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
  }
}

TEST(BundleProbeTest, Probe_TellsWhatABundleDoes) {
  const std::string folder = AK_TEST_BUNDLES;
  const struct {
    std::string path;
    const char* reason;  // null for a bundle that can be used
  } cases[] = {
    {AK_BUNDLE, nullptr},
    {folder + "/missing.so", "No such file"},
    {folder + "/Refuses.so", "returned status -4321"},
#if !defined(AK_SANITIZED)  // a sanitizer turns the crash into an exit
    {folder + "/Crashes.so", "crashes: Segmentation fault"},
#endif
    {folder + "/Crashes.so", "Crashes.so"}
  };
  for (const auto& c : cases) {
    const std::string error = Said(ProbeBundle(AK_OBJECTHOST, c.path, kProbeLimit));
    EXPECT_EQ(error.empty(), c.reason == nullptr) << c.path << error;
    if (c.reason != nullptr) {
      EXPECT_NE(error.find(c.reason), std::string::npos) << error;
    }
    EXPECT_EQ(error.find('\n'), std::string::npos);
  }
  const std::string error = Said(ProbeBundle(AK_OBJECTHOST, folder + "/Hangs.so", std::chrono::milliseconds(400)));
  EXPECT_NE(error.find("hangs: it was not done after 0.40 seconds"), std::string::npos) << error;
  EXPECT_FALSE(ProbeBundle("/no/such/host", AK_BUNDLE, kProbeLimit));
}

TEST(BundleSetTest, SearchPath_SkipsWhatIsBroken) {
  // The folders of the variable come first, and a name that was found hides the same name behind it.
  const std::string folder = testing::TempDir() + "bundles" + std::to_string(getpid());
  std::filesystem::create_directories(folder);
  std::filesystem::copy(AK_BUNDLE, folder + "/StdRectangle.so");
  std::filesystem::copy(std::string(AK_TEST_BUNDLES) + "/Refuses.so", folder + "/ARefuses.so");
  std::ofstream(folder + "/text.so") << "no library";
  std::ofstream(folder + "/readme.txt") << "not looked at";
  setenv("OBJECTHOST_PLUGINS", ("/no/such/folder::" + folder).c_str(), 1);
  {
    BundleSet bundles(AK_OBJECTHOST);
    bundles.LoadFound();
    ASSERT_EQ(bundles.Loaded().size(), 2U);  // and the picture, which lies beside the program
    EXPECT_EQ(bundles.Loaded()[0]->Path(), folder + "/StdRectangle.so");
    ASSERT_EQ(bundles.NotLoaded().size(), 2U);
    EXPECT_EQ(bundles.NotLoaded()[0].path, folder + "/ARefuses.so");
    EXPECT_EQ(bundles.NotLoaded()[1].path, folder + "/text.so");
    EXPECT_FALSE(bundles.Load(AK_BUNDLE)) << "the class is there already";
    EXPECT_NE(Host::Instance().Classes().Find(AKClassID("stdRect")), nullptr);
  }
  EXPECT_EQ(Host::Instance().Classes().Find(AKClassID("stdRect")), nullptr);
  unsetenv("OBJECTHOST_PLUGINS");
  std::filesystem::remove_all(folder);
}

TEST(BundleTest, LoadAndUnload_HundredTimes_LeavesNothing) {
  [[maybe_unused]] std::size_t before = 0;  // a sanitizer's allocator is not asked
  for (int i = 0; i < 100; ++i) {
    auto bundle = Taken(Bundle::Load(AK_BUNDLE));
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
