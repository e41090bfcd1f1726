#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "host/storage/OpenMark.h"

namespace host {
namespace {

class OpenMarkTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() / ("marks" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_ / "documents");
    std::ofstream(Path()) << "a document";
    setenv("XDG_DATA_HOME", folder_.c_str(), 1);
  }
  void TearDown() override {
    unsetenv("XDG_DATA_HOME");
    std::filesystem::remove_all(folder_);
  }

  std::string Path() const { return (folder_ / "documents" / "page.akd").string(); }
  auto Marks() const { return std::distance(std::filesystem::directory_iterator(folder_ / "objecthost" / "open"), {}); }

  std::filesystem::path folder_;
};

TEST_F(OpenMarkTest, EachLaterOneSeesAnyThatIsLeft) {
  auto first = std::make_unique<OpenMark>(Path());
  EXPECT_FALSE(first->WasOpen());
  std::filesystem::create_symlink(Path(), folder_ / "link.akd");
  std::filesystem::remove(Path());  // as a save puts another file in its place
  std::ofstream(Path()) << "the same document";
  const auto second = std::make_unique<OpenMark>((folder_ / "link.akd").string());
  EXPECT_TRUE(second->WasOpen());
  first.reset();
  EXPECT_TRUE(OpenMark(Path()).WasOpen()) << "the second is still there";
  EXPECT_FALSE(OpenMark(Path() + "x").WasOpen());
  EXPECT_FALSE(OpenMark("").WasOpen());
  EXPECT_EQ(Marks(), 1);
}

TEST_F(OpenMarkTest, NothingStaysBehind) {
  { const OpenMark mark(Path()); }
  EXPECT_EQ(Marks(), 0);
  const pid_t child = fork();
  if (child == 0) {
    const OpenMark mark(Path());
    _exit(mark.WasOpen() ? 1 : 0);  // as a crash: nobody takes the mark away
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Marks(), 1);
  { EXPECT_FALSE(OpenMark(Path()).WasOpen()); }
  EXPECT_EQ(Marks(), 0);
}

TEST_F(OpenMarkTest, AFolderThatTakesNoMarksIsInNobodysWay) {
  std::ofstream(folder_ / "objecthost") << "no folder";
  EXPECT_FALSE(OpenMark(Path()).WasOpen());
}

}  // namespace
}  // namespace host
