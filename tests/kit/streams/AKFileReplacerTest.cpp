// Most of what a replacement keeps shows only to users without all rights: those cases run in a child process that
// gives its own away.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <functional>

#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileReplacer.h"
#include "kit/values/AKDictionary.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::LogLines;
using file_test::ReadBytes;
using file_test::TempFolder;
using file_test::WriteBytes;

constexpr uid_t kUser = 12345;
constexpr gid_t kGroup = 23456;
constexpr gid_t kOtherGroup = 34567;

struct stat StatusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status;
}

/// Runs the work as kUser of kGroup, which is in kOtherGroup too; its result becomes the child's exit code.
int AsUser(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (::setgroups(1, &kOtherGroup) != 0 || ::setresgid(kGroup, kGroup, kGroup) != 0 ||
        ::setresuid(kUser, kUser, kUser) != 0) {
      ::_exit(77);
    }
    ::_exit(work());
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int SaveAsUser(const TempFolder& folder, const std::string& name) {
  return AsUser([&] { return AKFileSaveContentOfString(folder.KitPath(name), "new") == 0 ? 0 : 1; });
}

class AKFileReplacerTest : public testing::Test {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
    ASSERT_EQ(::chmod(folder_.Path(".").c_str(), 0777), 0);
  }
  void Make(const std::string& name, uid_t user, gid_t group, mode_t mode) const {
    WriteBytes(folder_.Path(name), "a longer old content");
    ASSERT_EQ(::chown(folder_.Path(name).c_str(), user, group), 0);
    ASSERT_EQ(::chmod(folder_.Path(name).c_str(), mode), 0);
  }
  const TempFolder folder_;
};

TEST_F(AKFileReplacerTest, OwnerGroupAndMode_AreKeptOrNarrowed) {
  const struct {
    uid_t oldUser;
    gid_t oldGroup;
    mode_t oldMode;
    bool asRoot;
    uid_t user;
    gid_t group;
    mode_t mode;
  } cases[] = {
      {kUser, kGroup, 06755, true, kUser, kGroup, 0755},  // root may give everything; set-ID bits go
      {kUser, kGroup, 0640, false, kUser, kGroup, 0640},
      {kUser, kOtherGroup, 02664, false, kUser, kOtherGroup, 0664},
      {kUser, 99, 0664, false, kUser, kGroup, 0644},  // neither the new group nor the old one gets more
      {kUser, 99, 0604, false, kUser, kGroup, 0600},
      {99, kOtherGroup, 0660, false, kUser, kOtherGroup, 0660},  // the owner cannot be kept
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "user " << c.oldUser << " group " << c.oldGroup << " mode " << std::oct
                                    << c.oldMode);
    Make("file", c.oldUser, c.oldGroup, c.oldMode);
    const std::string path = folder_.Path("file");
    EXPECT_EQ(c.asRoot ? AKFileSaveContentOfString(folder_.KitPath("file"), "new") : SaveAsUser(folder_, "file"), 0);
    const struct stat status = StatusOf(path);
    EXPECT_EQ(status.st_uid, c.user);
    EXPECT_EQ(status.st_gid, c.group);
    EXPECT_EQ(status.st_mode & 07777, c.mode);
    EXPECT_EQ(ReadBytes(path), "new");
  }
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

TEST_F(AKFileReplacerTest, AttributesAndAccessList_AreKept) {
  Make("file", kUser, kGroup, 0640);
  const std::string path = folder_.Path("file");
  // Version 2; owner rw, user 99 rw, group r, mask rw, others none: tag, rights, ID.
  const std::string list =
      file_test::Bytes("02000000 01000600FFFFFFFF 0200060063000000 04000400FFFFFFFF 10000600FFFFFFFF 20000000FFFFFFFF");
  if (::setxattr(path.c_str(), "user.note", "kept", 4, 0) != 0 ||
      ::setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0) {
    GTEST_SKIP() << "the file system has no attributes";
  }
  ASSERT_EQ(SaveAsUser(folder_, "file"), 0);
  char value[256];
  EXPECT_EQ(::getxattr(path.c_str(), "user.note", value, sizeof(value)), 4);
  ASSERT_EQ(::getxattr(path.c_str(), "system.posix_acl_access", value, sizeof(value)),
            static_cast<ssize_t>(list.size()));
  EXPECT_EQ(std::string(value, list.size()), list);
  // Without the right to the group the list goes, and with it every access but the owner's.
  ASSERT_EQ(::chown(path.c_str(), kUser, 99), 0);
  ASSERT_EQ(SaveAsUser(folder_, "file"), 0);
  EXPECT_LT(::getxattr(path.c_str(), "system.posix_acl_access", value, sizeof(value)), 0);
  EXPECT_EQ(StatusOf(path).st_mode & 0777, 0600U);
}

TEST_F(AKFileReplacerTest, Saving_WhereOnlyWritingInPlaceWorks_WritesInPlace) {
  for (const char* name : {"closed", "sticky", "hidden"}) ASSERT_TRUE(AKFileUtils::CreateFolder(folder_.KitPath(name)));
  ASSERT_TRUE(AKFileUtils::CreateFolder(folder_.KitPath("hidden/below")));
  for (const char* name : {"closed/file", "sticky/file", "hidden/below/file"}) Make(name, 99, kOtherGroup, 06770);
  ::chmod(folder_.Path("closed").c_str(), 0755);
  ::chmod(folder_.Path("sticky").c_str(), 01777);
  const ino_t closed = StatusOf(folder_.Path("closed/file")).st_ino;
  EXPECT_EQ(SaveAsUser(folder_, "closed/file"), 0);
  EXPECT_EQ(SaveAsUser(folder_, "sticky/file"), 0);
  EXPECT_NE(SaveAsUser(folder_, "closed/missing"), 0);
  // A folder whose parent cannot be searched any more is still the current one.
  ::chmod(folder_.Path("hidden/below").c_str(), 0777);
  const int before = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(::chdir(folder_.Path("hidden/below").c_str()), 0);
  ::chmod(folder_.Path("hidden").c_str(), 0700);
  EXPECT_EQ(AsUser([] { return AKFileSaveContentOfString(AKFilePath("file"), "new") == 0 ? 0 : 1; }), 0);
  ASSERT_EQ(::fchdir(before), 0);
  ::close(before);
  for (const char* name : {"closed/file", "sticky/file", "hidden/below/file"}) {
    EXPECT_EQ(ReadBytes(folder_.Path(name)), "new") << name;
    EXPECT_EQ(StatusOf(folder_.Path(name)).st_mode & 07777, 0770U) << name;
  }
  EXPECT_EQ(StatusOf(folder_.Path("closed/file")).st_ino, closed);
  EXPECT_EQ(StatusOf(folder_.Path("closed/file")).st_uid, 99U);
}

TEST_F(AKFileReplacerTest, Failures_NameTheCallersPathAlone) {
  Make("locked", 99, 99, 0644);
  ASSERT_TRUE(AKFileUtils::CreateFolder(folder_.KitPath("closed")));
  for (const char* name : {"locked", "closed/missing", "nowhere/file"}) {
    EXPECT_EQ(AsUser([&] {
                const LogLines lines;
                const int status = AKFileSaveContentOfString(folder_.KitPath(name), "new");
                const std::vector<std::string> taken = LogLines::Take();
                const std::string wanted =
                    "# AKLib Error -891: Can't open file \"" + folder_.Path(name) + "\". (errno ";
                return status == -891 && taken.size() == 1 && taken[0].starts_with(wanted) ? 0 : 1;
              }),
              0)
        << name;
  }
  EXPECT_EQ(ReadBytes(folder_.Path("locked")), "a longer old content");
  const LogLines lines;
  EXPECT_EQ(AKDictionary().SaveToBinFile(AKFilePath()), AKFile(AKFilePath()).CreateForReadWrite());
  AKFileReplacer replacer(folder_.KitPath("file"));
  ASSERT_EQ(replacer.Open(), 0);
  EXPECT_EQ(replacer.File().Seek(-1, kAKFileWhenceBegin), -888);
  for (const std::string& line : LogLines::Take()) EXPECT_EQ(line.find("tmp_"), std::string::npos) << line;
}

TEST_F(AKFileReplacerTest, Links_AreFollowedToWhatTheyNameAndHardOnesLeft) {
  const std::string foreign = "\xE6\x97\xA5";
  std::filesystem::create_directory(folder_.Path(foreign));
  std::filesystem::create_symlink("other", folder_.Path(foreign + "/second"));
  std::filesystem::create_symlink(foreign + "/second", folder_.Path("link"));
  EXPECT_EQ(AKFileSaveContentOfString(folder_.KitPath("link"), "first"), 0);
  EXPECT_EQ(ReadBytes(folder_.Path(foreign + "/other")), "first");
  std::filesystem::create_hard_link(folder_.Path(foreign + "/other"), folder_.Path("hard"));
  EXPECT_EQ(AKFileSaveContentOfString(folder_.KitPath("link"), "second"), 0);
  EXPECT_EQ(ReadBytes(folder_.Path("link")) + ReadBytes(folder_.Path("hard")), "secondfirst");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link")));
  std::filesystem::create_symlink("circle", folder_.Path("circle"));
  EXPECT_EQ(AKFileSaveContentOfString(folder_.KitPath("circle"), "x"), -891);
}

TEST_F(AKFileReplacerTest, TwoAtOnceAndOneThatWasKilled_LeaveOneFile) {
  const pid_t child = ::fork();
  if (child == 0) {
    AKFileReplacer killed(folder_.KitPath("file"));
    ::_exit(killed.Open() == 0 ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
  ASSERT_EQ(folder_.EntryCount(), 1U);
  AKFileReplacer first(folder_.KitPath("file"));
  AKFileReplacer second(folder_.KitPath("file"));
  ASSERT_EQ(first.Open() | second.Open(), 0);
  EXPECT_EQ(folder_.EntryCount(), 2U);
  EXPECT_EQ(first.File().Write("1", 1) | second.File().Write("2", 1), 0);
  EXPECT_EQ(first.Commit(), 0);
  EXPECT_EQ(ReadBytes(folder_.Path("file")), "1");
  EXPECT_EQ(second.Commit(), 0);
  EXPECT_EQ(ReadBytes(folder_.Path("file")), "2");
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

}  // namespace
