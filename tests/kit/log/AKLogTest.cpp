#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "kit/log/AKLog.h"

namespace {

std::vector<std::string> sLines;

void Collect(const char* line) { sLines.emplace_back(line); }

class AKLogTest : public testing::Test {
 protected:
  void SetUp() override {
    sLines.clear();
    AKSetCustomLogMessageProc(&Collect, false);
  }
  void TearDown() override {
    while (AKLogErrorUnmute() != 0) {
    }
    AKSetCustomLogMessageProc(nullptr, false);
  }
};

TEST_F(AKLogTest, Lines_EveryForm_AreAsTheHostExpects) {
  AKLogError(-5, "bad %s", "thing");
  AKLogWarning(5, nullptr);
  AKLogWarning(-7, "negative");
  AKLog("free %d", 3);
  AKLog("%s", "");
  errno = 2;
  AKLogErrorWithErrno(-891, nullptr);
  errno = 0;
  AKLogErrorWithErrno(-1, "x");
  const std::vector<std::string> expected = {
      "# AKLib Error -5: bad thing.\n",
      "# AKLib Warning 5.\n",
      "# AKLib Error -7: negative.\n",
      "free 3",
      "# AKLib Error -891. (errno 2: ENOENT: No such file or directory).\n",
      "# AKLib Error -1: x.\n",
  };
  EXPECT_EQ(sLines, expected);
}

TEST_F(AKLogTest, ErrnoNames_TableAndBeyond) {
  const struct {
    int number;
    const char* part;
  } cases[] = {{1, "(errno 1: EPERM: Operation not permitted)."},
               {11, "(errno 11: EDEADLK: Resource deadlock avoided)."},
               {32, "(errno 32: EPIPE: Broken pipe)."},
               {33, "(errno 33: UNKNOWN)."},
               {-1, "(errno -1: UNKNOWN)."}};
  for (const auto& c : cases) {
    sLines.clear();
    errno = c.number;
    AKLogErrorWithErrno(-1, nullptr);
    EXPECT_EQ(errno, c.number);
    ASSERT_EQ(sLines.size(), 1U);
    EXPECT_NE(sLines[0].find(c.part), std::string::npos) << sLines[0];
  }
}

TEST_F(AKLogTest, LongMessage_IsCutWithoutStopAndLineEnd) {
  const std::string longText(40000, 'x');
  AKLogError(-1, "%s", longText.c_str());
  AKLog("%s", longText.c_str());
  ASSERT_EQ(sLines.size(), 2U);
  EXPECT_EQ(sLines[0].size(), 32767U);
  EXPECT_EQ(sLines[0].back(), 'x');
  EXPECT_EQ(sLines[1].size(), 32767U);

  // The message just fits, then only the stop, then the stop and the line end; the errno part is cut.
  const std::string header = "# AKLib Error -1: ";
  for (unsigned int room = 0; room < 40; ++room) {
    sLines.clear();
    errno = 2;
    const std::string message(32767 - header.size() - room, 'y');
    AKLogErrorWithErrno(-1, "%s", message.c_str());
    const std::string whole = header + message + ". (errno 2: ENOENT: No such file or directory).\n";
    EXPECT_EQ(sLines.back(), whole.substr(0, 32767)) << "room " << room;
  }
}

TEST_F(AKLogTest, Muting_Nests_AndLeavesFreeLines) {
  AKLogErrorMute();
  AKLogErrorMute();
  EXPECT_EQ(AKLogErrorUnmute(), 1U);
  EXPECT_EQ(AKLogError(-3, "silent"), -3);
  AKLogWarning(1, "silent");
  AKLog("heard");
  EXPECT_EQ(AKLogErrorUnmute(), 0U);
  EXPECT_EQ(AKLogErrorUnmute(), 0U);
  AKLogError(-3, "heard");
  EXPECT_EQ(sLines.size(), 2U);
}

TEST_F(AKLogTest, Threads_AreHeardOnlyWhenDeclaredSafe) {
  std::thread([] { AKLogError(-1, "other thread"); }).join();
  EXPECT_TRUE(sLines.empty());
  AKSetCustomLogMessageProc(&Collect, true);
  std::thread([] { AKLogError(-1, "other thread"); }).join();
  EXPECT_EQ(sLines.size(), 1U);
}

TEST_F(AKLogTest, WithoutProcedure_StatusStillPasses) {
  AKSetCustomLogMessageProc(nullptr, true);
  EXPECT_EQ(AKLogError(-5, "x"), -5);
  EXPECT_EQ(AKLogError(7, "x"), 0);
}

}  // namespace
