// What is kept of unsaved documents, and of bundles at work, for the program that starts after a crash: processes of
// the test's own end without a word, and their leavings are looked at.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/storage/BundleAtWork.h"
#include "host/storage/Recovery.h"
#include "host/storage/RecoveryFolder.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

class RecoveryTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    ASSERT_EQ(setenv("XDG_DATA_HOME", folder_.Path("data").c_str(), 1), 0);
  }
  void TearDown() override { unsetenv("XDG_DATA_HOME"); }

  /// Runs `work` in a process that then dies.
  template <typename Work>
  static void RunAndDie(Work work) {
    const pid_t child = fork();
    if (child == 0) {
      work();
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
  }

  static std::size_t Files() {
    std::error_code none;
    const std::filesystem::directory_iterator files(RecoveryFolder(), none);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  file_test::TempFolder folder_;
};

TEST_F(RecoveryTest, WhatADeadProcessKept_ComesBackAsItWas) {
  std::string expected;
  for (const bool isSaved : {false, true}) {
    SCOPED_TRACE(isSaved);
    const std::string path = folder_.Path("page \xC3\xA4.akd");
    DocumentSession session(MakeDocument(2));
    ASSERT_TRUE(!isSaved || session.File().SaveAs(path));
    AddPlaceholder(&session);
    expected = Bytes(session);
    RunAndDie([&] {
      auto* const recovery = new Recovery(session, 0);  // never deleted: the process dies
      recovery->Update();
    });
    const auto found = FindRecoveries();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].original, isSaved ? path : "");
    const auto restored = Taken(OpenRecovery(found[0]));
    EXPECT_EQ(Bytes(*restored), expected);
    EXPECT_TRUE(restored->File().HasUnsavedChanges());
    EXPECT_EQ(restored->File().Path(), isSaved ? path : "");
    EXPECT_TRUE(DiscardRecovery(found[0]));
    EXPECT_FALSE(DiscardRecovery(found[0])) << "it is gone";
    EXPECT_FALSE(OpenRecovery(found[0]));
    EXPECT_EQ(Files(), 0U);
  }
}

// The file is there exactly while there is something unsaved, and is written no more often than agreed.
TEST_F(RecoveryTest, Update_FollowsTheDocument) {
  DocumentSession session(MakeDocument(1));
  {
    Recovery recovery(session, 1000);
    EXPECT_EQ(recovery.UntilDue(), Recovery::kNever);
    AddOne(&session);
    EXPECT_GT(recovery.UntilDue().count(), 900);
    recovery.Update();
    EXPECT_EQ(Files(), 0U) << "too early";
    recovery.UpdateNow();
    EXPECT_EQ(Files(), 1U);
    EXPECT_EQ(recovery.UntilDue(), Recovery::kNever) << "nothing new";
    EXPECT_TRUE(FindRecoveries().empty()) << "the program runs still";
    ASSERT_TRUE(session.File().SaveAs(folder_.Path("saved.akd")));
    recovery.Update();
    EXPECT_EQ(Files(), 0U);
    EXPECT_TRUE(recovery.Keep()) << "there is nothing to keep";
    AddOne(&session);
    recovery.UpdateNow();
    ASSERT_TRUE(session.File().SaveAs(folder_.Path("other.akd")));
    AddOne(&session);
    recovery.UpdateNow();
    EXPECT_EQ(Files(), 1U) << "under the new name alone";
  }
  EXPECT_EQ(Files(), 0U) << "closed in good order";
  {
    Recovery recovery(session, 0);
    EXPECT_EQ(recovery.UntilDue().count(), 0);
    EXPECT_TRUE(recovery.Keep());
  }
  EXPECT_EQ(Files(), 1U);
}

TEST_F(RecoveryTest, NoFolder_KeepsNothingAndSaysSo) {
  DocumentSession session(MakeDocument(1));
  AddOne(&session);
  file_test::WriteBytes(folder_.Path("data"), "a file, where the folder should be");
  Recovery recovery(session, 0);
  recovery.Update();
  EXPECT_FALSE(recovery.Keep());
  EXPECT_EQ(recovery.UntilDue().count(), 0) << "it is tried again";
  EXPECT_TRUE(FindRecoveries().empty() && BundleAtWork::TakeLeft().empty());
  int calls = 0;
  BundleAtWork work([&calls] { ++calls; });
  EXPECT_TRUE(Document::NewObject(AKClassID("stdRect"), ""));
  EXPECT_GT(calls, 0) << "what would be lost is kept all the same";
}

// Cut anywhere, or with a byte changed: a file is passed over, refused in one line or read, and nothing is taken for
// it.
TEST_F(RecoveryTest, DamagedFiles_ArePassedOverOrRefused) {
  DocumentSession session(MakeDocument(1));
  AddOne(&session);
  RunAndDie([&] { std::ignore = (new Recovery(session, 0))->Keep(); });
  const auto found = FindRecoveries();
  ASSERT_EQ(found.size(), 1U);
  const std::string whole = file_test::ReadBytes(found[0].file);
  unsigned int refused = 0;
  for (std::size_t i = 0; i < 2 * whole.size(); ++i) {
    std::string bytes = whole.substr(0, i < whole.size() ? i : whole.size());
    if (i >= whole.size()) bytes[i - whole.size()] = static_cast<char>(bytes[i - whole.size()] ^ 0x55);
    file_test::WriteBytes(found[0].file, bytes);
    for (const RecoveryFile& file : FindRecoveries()) {
      const auto restored = OpenRecovery(file);
      refused += restored ? 0 : 1;
      EXPECT_TRUE(i >= whole.size() || !restored) << "cut to " << i;
      EXPECT_EQ(Said(restored).find('\n'), std::string::npos);
    }
  }
  EXPECT_GT(refused, whole.size() / 2);
}

TEST_F(RecoveryTest, BundleAtWork_IsNamedWhenItsProcessEndsWithinAMethod) {
  const AKClass& cls = *Host::Instance().Classes().Find(AKClassID("stdRect"));
  const std::string path = std::filesystem::canonical(AK_BUNDLE);
  for (const bool isWithin : {true, false}) {
    RunAndDie([&] {
      auto* const work = new BundleAtWork([] { throw std::bad_alloc(); });  // no reason not to go on
      work->Begins(cls, 3);
      work->Begins(cls, 3);
      if (!isWithin) work->Ended(nullptr);
    });
    EXPECT_EQ(Files(), 1U);
    const std::vector<std::string> left = BundleAtWork::TakeLeft();
    ASSERT_EQ(left.size(), isWithin ? 1U : 0U);
    EXPECT_TRUE(!isWithin || std::filesystem::canonical(left[0]) == path);
    EXPECT_EQ(Files(), 0U) << "told once";
  }
  const BundleAtWork mine([] {});
  EXPECT_TRUE(BundleAtWork::TakeLeft().empty()) << "this process runs";
  EXPECT_EQ(Files(), 1U);
}

}  // namespace
}  // namespace host
