// What a save leaves when its process dies in the middle of it, or its disk is full.
#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

constexpr int kPoints = 200;

class SaveKilledTest : public SessionFixture {};

std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Saves two documents in turn, for ever; tells when it begins.
[[noreturn]] void SaveForEver(const Document& one, const Document& other, const std::string& path, int pipe) {
  const char begun = 'b';
  if (write(pipe, &begun, 1) != 1) _exit(1);
  for (;;) {
    if (!WriteDocument(one, path) || !WriteDocument(other, path)) _exit(1);
  }
}

TEST_F(SaveKilledTest, KilledAnywhere_FileIsWhole_AndLeftoversAreCleared) {
  const file_test::TempFolder folder;
  const std::string path = folder.Path("killed.akd");
  const std::unique_ptr<Document> documents[] = {MakeDocument(500), MakeDocument(1500)};
  std::string contents[2];
  std::chrono::duration<double> both{0};
  for (int i = 0; i < 2; ++i) {
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(WriteDocument(*documents[i], path));
    both += std::chrono::steady_clock::now() - start;
    contents[i] = ContentOf(path);
  }
  int found[2] = {};
  for (int point = 0; point < kPoints; ++point) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) SaveForEver(*documents[0], *documents[1], path, pipes[1]);
    char begun = 0;
    ASSERT_EQ(read(pipes[0], &begun, 1), 1);
    usleep(static_cast<useconds_t>(both.count() * 1e6 * point / kPoints));
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    close(pipes[0]);
    close(pipes[1]);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
    const std::string content = ContentOf(path);
    ASSERT_TRUE(content == contents[0] || content == contents[1]) << "point " << point << ", " << content.size();
    ++found[content == contents[0] ? 0 : 1];
    ASSERT_TRUE(ReadDocument(path));
  }
  EXPECT_GT(found[0], 0);
  EXPECT_GT(found[1], 0) << "the points do not cover both saves";
  const std::size_t left = folder.EntryCount() - 1;
  EXPECT_LE(left, static_cast<std::size_t>(kPoints)) << "a killed save leaves one file at most";

  // An hour later the next save takes them away, and nothing else.
  std::ofstream(folder.Path(".tmp_notes")) << "mine";
  const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path(""))) {
    std::filesystem::last_write_time(entry.path(), old);
  }
  std::ofstream(folder.Path(".tmp_0123456789ABCDEF")) << "of a save that is going on";
  ASSERT_TRUE(WriteDocument(*documents[0], path));
  EXPECT_EQ(folder.EntryCount(), 3U);
}

// On a file system of 256 KiB, in a name space of a child's own; 77 where the system does not allow that.
int SaveOnSmallDisk(const Document& small, const Document& large, const std::string& folder) {
  const std::string path = folder + "/full.akd";
  if (unshare(CLONE_NEWNS) != 0) return 77;
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 && errno != EINVAL) return 77;
  if (mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=256k") != 0) return 77;
  if (!WriteDocument(small, path)) return 1;
  const std::string before = ContentOf(path);
  if (Said(WriteDocument(large, path)).find("No space left") == std::string::npos) return 2;
  if (ContentOf(path) != before) return 4;
  const auto entries = std::filesystem::directory_iterator(folder);
  return std::distance(begin(entries), end(entries)) == 1 ? 0 : 5;
}

TEST_F(SaveKilledTest, FullDisk_OldFileStays_AndNothingElse) {
  const file_test::TempFolder folder;
  const std::unique_ptr<Document> small = MakeDocument(200);
  const std::unique_ptr<Document> large = MakeDocument(4000);
  EXPECT_NE(Said(WriteDocument(*large, "/dev/full")).find("No space left"), std::string::npos);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(SaveOnSmallDisk(*small, *large, folder.Path("")));
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "no file system can be mounted here";
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace host
