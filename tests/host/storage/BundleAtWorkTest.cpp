// What is known of a bundle that ended the program.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "host/bundles/Bundle.h"
#include "host/storage/BundleAtWork.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace host {
namespace {

// Loads a bundle in a process of its own, which ends without a word when the bundle has started.
void LoadElsewhere(const std::string& bundle) {
  const pid_t process = fork();
  if (process == 0) {
    std::signal(SIGSEGV, SIG_DFL);  // a sanitizer would say much
    int kept = 0;
    const BundleAtWork atWork([&kept] { ++kept; });
    const auto loaded = Bundle::Load(bundle);
    if (kept == 0) abort();  // what would be lost is kept before
    raise(SIGKILL);
  }
  waitpid(process, nullptr, 0);
}

TEST(BundleAtWorkTest, ABundleThatEndsTheProgramWhileItStarts_IsKnownAfterwards_AndNoOther) {
  const file_test::TempFolder folder;
  setenv("XDG_DATA_HOME", folder.Path("").c_str(), 1);
  LoadElsewhere(AK_BUNDLE);
  EXPECT_EQ(BundleAtWork::TakeLeft(), std::vector<std::string>()) << "it has started";
  LoadElsewhere(AK_TEST_BUNDLES "/Crashes.so");
  EXPECT_EQ(BundleAtWork::TakeLeft(), std::vector<std::string>{AK_TEST_BUNDLES "/Crashes.so"});
  EXPECT_EQ(BundleAtWork::TakeLeft(), std::vector<std::string>()) << "told once";
  unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace host
