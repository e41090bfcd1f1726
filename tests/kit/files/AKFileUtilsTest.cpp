#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "kit/files/AKDirectoryParser.h"
#include "kit/files/AKFileUtils.h"
#include "kit/files/AKStandardFolders.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileRecords.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::ReadBytes;
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
  EXPECT_EQ(Names(parser.Files(), prefix), (std::vector<std::string>{"a", "b", "na\x95ve", "sub/c",
                                                                     "\xEF\xBB\xBF"
                                                                     "bad\xFF",
                                                                     "\xEF\xBB\xBF\xE6\x97\xA5"}));
  EXPECT_EQ(Names(parser.Folders(), prefix), (std::vector<std::string>{"loop", "sub", "sub/deep"}));
  EXPECT_EQ(Names(parser.Others(), prefix), (std::vector<std::string>{"broken", "pipe"}));
  ASSERT_TRUE(parser.Parse(folder.KitPath("root"), false));
  EXPECT_EQ(parser.Files().Count() + parser.Folders().Count(), 7U);
  EXPECT_FALSE(parser.Parse(folder.KitPath("missing"), false));
  EXPECT_EQ(errno, ENOENT);
  // What is listed can be opened by its listed path.
  for (const AKFilePath& path : parser.Files()) EXPECT_EQ(AKFile(path).OpenForRead(), 0) << path.Text().CStr();
}

TEST(AKDirectoryParser, Parse_OfFoldersNestedDeeperThanDescriptorsReach_ListsThemAll) {
  const TempFolder folder;
  std::string deep = "root";
  for (int i = 0; i < 1500; ++i) deep += "/d";
  ASSERT_TRUE(AKFileUtils::CreateFolder(folder.KitPath(deep)));
  rlimit old{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &old), 0);
  rlimit few = old;
  few.rlim_cur = 64;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  AKDirectoryParser parser;
  EXPECT_TRUE(parser.Parse(folder.KitPath("root"), true));
  ::setrlimit(RLIMIT_NOFILE, &old);
  EXPECT_EQ(parser.Folders().Count(), 1500U);
}

TEST(AKFileUtils, CreateFolder_ThatFailsOnTheWay_LeavesNothingBehind) {
  const TempFolder folder;
  const std::string longest(255, 'n');
  std::string beyondAllPaths = "chain";
  while (beyondAllPaths.size() < 5000) beyondAllPaths += "/d";
  for (const std::string& path :
       {"a/b/../c/" + longest + "n/d", beyondAllPaths, std::string("file/a"), std::string()}) {
    WriteBytes(folder.Path("file"), "x");
    EXPECT_FALSE(AKFileUtils::CreateFolder(path.empty() ? AKFilePath() : folder.KitPath(path)));
    EXPECT_EQ(folder.EntryCount(), 1U) << path;
  }
  EXPECT_TRUE(AKFileUtils::CreateFolder(folder.KitPath("a//b/../" + longest + "/")));
  EXPECT_TRUE(AKFileUtils::IsFolder(folder.KitPath("a/b")) && AKFileUtils::IsFolder(folder.KitPath("a/" + longest)));
}

// Polish, Japanese, a decomposed accent, no UTF-8, and a name that begins with what marks such names.
const char* const kForeignNames[] = {"\xC5\x81ukasz", "\xE6\x97\xA5\xE6\x9C\xAC",  "e\xCC\x81",
                                     "bad\xFF",       "\xC3\x94\xC2\xAA\xC3\xB8x", "\xEF\xBB\xBFx"};

TEST(AKFileUtils, NamesBeyondMacRoman_AreOpenedSavedAndCreated) {
  const TempFolder folder;
  for (const std::string name : kForeignNames) {
    SCOPED_TRACE(name);
    AKFilePath path;
    ASSERT_TRUE(AKFileUtils::GetFromSystemPath(folder.Path(name + "/na\xC3\xAFve/" + name + ".txt").c_str(), &path));
    ASSERT_TRUE(AKFileUtils::CreateFolder(path.Folder()));
    ASSERT_EQ(AKFileSaveContentOfString(path, "content"), 0);
    EXPECT_EQ(ReadBytes(folder.Path(name + "/na\xC3\xAFve/" + name + ".txt")), "content");
    AKFile stream(AKFile::kModeMemory);
    AKFilePath read;
    ASSERT_EQ(stream.CreateForReadWrite() | AKFileWriteAKFilePath(stream, path) | stream.SetPos(0), 0);
    ASSERT_EQ(AKFileReadAKFilePath(stream, &read), 0);
    AKString text;
    EXPECT_EQ(AKFileLoadContentToString(read, &text), 0);
    EXPECT_EQ(text, "content");
    // Put together of its parts, each of which stands for itself.
    AKFilePath joined = path.Folder() / AKFilePath(path.FileNameWithoutExtension());
    joined.SetExtension(path.Extension());
    EXPECT_EQ(joined, path);
    joined.SetExtension(AKFilePath("x.\x8E").Extension());
    EXPECT_EQ(AKFileUtils::GetAsSystemPath(AKFilePath(joined.FileName())), (name + ".\xC3\xA9").c_str());
    AKFilePath other("x");
    ASSERT_TRUE(AKFileUtils::GetFromSystemPath(("a." + name).c_str(), &read));
    other.SetExtension(read.Extension());
    EXPECT_EQ(AKFileUtils::GetAsSystemPath(other), ("x." + name).c_str());
  }
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
  const ScopedVariable foreign("XDG_DATA_HOME", folder.Path("\xC5\x81ukasz"));
  ASSERT_TRUE(AKFileUtils::CreateFolder(AKStandardFolderGetPath(AKStandardFolder::kApplicationSupport)));
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path("\xC5\x81ukasz")));
  const ScopedVariable moved("XDG_CONFIG_HOME", "/etc/config/");
  expect("Preferences", "/etc/config");
  expect("Desktop", home + "/Desktop");
  EXPECT_TRUE(AKStandardFolderGetPath(static_cast<AKStandardFolder>(8)).IsEmpty());
}

}  // namespace
