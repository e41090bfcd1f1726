#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "kit/files/AKDirectoryParser.h"
#include "kit/files/AKFileUtils.h"
#include "kit/files/AKStandardFolders.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::TempFolder;
using file_test::WriteBytes;

// The value of an environment variable while the object lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::string& value) : name_(name) {
    const char* const old = std::getenv(name);
    wasSet_ = old != nullptr;
    if (wasSet_) old_ = old;
    ::setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() {
    if (wasSet_) {
      ::setenv(name_, old_.c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }

 private:
  const char* name_;
  std::string old_;
  bool wasSet_ = false;
};

std::vector<std::string> Names(const AKFilePathArray& paths, std::size_t prefix) {
  std::vector<std::string> names;
  for (const AKFilePath& path : paths) names.push_back(std::string(path.Text().CStr()).substr(prefix));
  return names;
}

TEST(AKDirectoryParser, Parse_OfEveryKindOfEntry_ListsOrReportsIt) {
  const TempFolder folder;
  const std::string root = folder.Path("root");
  ASSERT_TRUE(AKFileUtils::CreateFolder(folder.KitPath("root/sub/deep")));
  for (const char* name : {"/b", "/a", "/sub/c", "/na\xC3\xAFve", "/\xE6\x97\xA5", "/bad\xFF"}) {
    WriteBytes(root + name, "x");
  }
  std::filesystem::create_symlink(root, root + "/loop");
  std::filesystem::create_symlink("nowhere", root + "/broken");
  ASSERT_EQ(::mkfifo((root + "/pipe").c_str(), 0600), 0);
  AKDirectoryParser parser;
  ASSERT_TRUE(parser.Parse(folder.KitPath("root"), true));
  const std::size_t prefix = root.size() + 1;
  EXPECT_EQ(Names(parser.Files(), prefix), (std::vector<std::string>{"a", "b", "na\x95ve", "sub/c"}));
  EXPECT_EQ(Names(parser.Folders(), prefix), (std::vector<std::string>{"loop", "sub", "sub/deep"}));
  EXPECT_EQ(Names(parser.Others(), prefix), (std::vector<std::string>{"broken", "pipe"}));
  ASSERT_EQ(parser.Unrepresentable().Count(), 2U);
  EXPECT_EQ(parser.Unrepresentable()[0], AKString((root + "/bad\xFF").c_str()));
  EXPECT_EQ(parser.Unrepresentable()[1], AKString((root + "/\xE6\x97\xA5").c_str()));
  ASSERT_TRUE(parser.Parse(folder.KitPath("root"), false));
  EXPECT_EQ(parser.Files().Count() + parser.Folders().Count(), 5U);
  EXPECT_FALSE(parser.Parse(folder.KitPath("missing"), false));
  EXPECT_EQ(errno, ENOENT);
  // What is listed can be opened by its listed path.
  AKFile file(AKFilePath((root + "/na\x95ve").c_str()));
  EXPECT_EQ(file.OpenForRead(), 0);
}

TEST(AKFileUtils, FileInfo_OfAFreshFile_HasItsSizeAndTimes) {
  const TempFolder folder;
  WriteBytes(folder.Path("file"), "12345");
  unsigned long long size = 0;
  unsigned long long created = 0;
  unsigned long long modified = 0;
  ASSERT_TRUE(AKFileUtils::GetFileInfo(folder.KitPath("file"), &size, &created, &modified));
  struct stat status;
  ASSERT_EQ(::stat(folder.Path("file").c_str(), &status), 0);
  EXPECT_EQ(size, 5U);
  EXPECT_EQ(modified, static_cast<unsigned long long>(status.st_mtime));
  EXPECT_LE(modified - created, 2U);
  EXPECT_FALSE(AKFileUtils::GetFileInfo(folder.KitPath(""), &size, nullptr, nullptr));
  EXPECT_FALSE(AKFileUtils::Exists(AKFilePath(AKString("/tmp\0x", 6))));  // not cut at the NUL
}

TEST(AKFileUtils, UnusedNames_InTheTemporaryDirectory_AreThere) {
  const TempFolder folder;
  const ScopedVariable variable("TMPDIR", folder.Path(""));
  AKFilePath file;
  AKFilePath made;
  const int descriptor = AKFileUtils::CreateUnusedFileInTemporaryDir(&file);
  ASSERT_GE(descriptor, 0);
  ::close(descriptor);
  EXPECT_TRUE(AKFileUtils::IsFile(file));
  EXPECT_EQ(file.FileName().Length(), 10U);
  EXPECT_TRUE(AKFileUtils::CreateUnusedFolderInTemporaryDir(&made) && AKFileUtils::IsFolder(made));
  EXPECT_FALSE(AKFileUtils::Exists(AKFileUtils::GetUnusedFileNameInTemporaryDir()));
  EXPECT_EQ(folder.EntryCount(), 2U);
  EXPECT_TRUE(AKFileUtils::RemoveFolder(made) && AKFileUtils::RemoveFile(file));
}

TEST(AKStandardFolders, Paths_ByEnvironmentAndUserDirectories_FollowXdg) {
  const TempFolder folder;
  const std::string home = folder.Path("home");
  const ScopedVariable homeVariable("HOME", home + "/");
  const ScopedVariable config("XDG_CONFIG_HOME", "");
  const ScopedVariable data("XDG_DATA_HOME", "relative/is/ignored");
  const auto expect = [](const char* name, const std::string& path) {
    AKStandardFolder kind = AKStandardFolder::kUser;
    ASSERT_TRUE(AKStandardFolderFromName(name, &kind)) << name;
    EXPECT_EQ(AKStandardFolderGetName(kind), AKString(name));
    EXPECT_EQ(AKStandardFolderGetPath(kind).Text(), AKString(path.c_str())) << name;
  };
  expect("User", home);
  expect("Preferences", home + "/.config");
  expect("ApplicationSupport", home + "/.local/share");
  expect("Movies", home + "/Videos");
  ASSERT_TRUE(AKFileUtils::CreateFolder(folder.KitPath("home/.config")));
  WriteBytes(home + "/.config/user-dirs.dirs",
             "# XDG_MUSIC_DIR=\"/commented\"\nXDG_DESKTOP_DIR=\"$HOME/Tisch\"\n  XDG_MUSIC_DIR=\"/mnt/my\\\"music/\"\n"
             "XDG_PICTURES_DIR=\"relative\"\nXDG_DOCUMENTS_DIR=\"$HOME\"\n");
  expect("Desktop", home + "/Tisch");
  expect("Music", "/mnt/my\"music");
  expect("Pictures", home + "/Pictures");
  expect("Documents", home);
  const ScopedVariable moved("XDG_CONFIG_HOME", "/etc/config/");
  expect("Preferences", "/etc/config");
  expect("Desktop", home + "/Desktop");
  EXPECT_TRUE(AKStandardFolderGetPath(static_cast<AKStandardFolder>(8)).IsEmpty());
}

}  // namespace
