#include "host/validator/TrialProcess.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <new>
#include <sstream>
#include <thread>

#include "host/HostLog.h"
#include "host/validator/CrashTrace.h"

namespace host::validator {
namespace {

using Clock = std::chrono::steady_clock;

[[maybe_unused]] constexpr rlim_t kMostMemory = 4ULL << 30;
constexpr rlim_t kMostWritten = 64 << 20;                    // bytes of one file
constexpr off_t kMostRead = 64 << 10;                        // of what it printed last
constexpr auto kDyingTime = std::chrono::milliseconds(500);  // to say where it hangs

// The board, and files in memory for what the process prints and for where it crashed.
class Shared {
 public:
  Shared()
      : memory_(mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
        output_(memfd_create("output", MFD_CLOEXEC)),
        calls_(memfd_create("calls", MFD_CLOEXEC)) {
    if (memory_ != MAP_FAILED) new (memory_) Board;
  }
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;
  ~Shared() {
    if (memory_ != MAP_FAILED) munmap(memory_, sizeof(Board));
    if (output_ >= 0) close(output_);
    if (calls_ >= 0) close(calls_);
  }

  bool IsMade() const { return memory_ != MAP_FAILED && output_ >= 0 && calls_ >= 0; }
  Board* TheBoard() const { return static_cast<Board*>(memory_); }
  int Output() const { return output_; }
  int Calls() const { return calls_; }

 private:
  void* memory_;
  int output_;
  int calls_;
};

std::string LastOf(int file) {
  const off_t size = lseek(file, 0, SEEK_END);
  std::string text(static_cast<std::size_t>(std::clamp<off_t>(size, 0, kMostRead)), '\0');
  const ssize_t got = pread(file, text.data(), text.size(), std::max<off_t>(0, size - kMostRead));
  text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  return text;
}

void Limit(int what, rlim_t most) {
  rlimit limit{};
  getrlimit(static_cast<__rlimit_resource_t>(what), &limit);
  limit.rlim_cur = std::min(limit.rlim_max, most);
  setrlimit(static_cast<__rlimit_resource_t>(what), &limit);
}

void LimitAll(double seconds) {
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_FSIZE, kMostWritten);
  Limit(RLIMIT_CPU, static_cast<rlim_t>(seconds) + 5);  // when the program that waits is stopped
#if !defined(AK_SANITIZED)  // a sanitizer reserves terabytes of addresses, also one that is preloaded for a bundle
  if (dlsym(RTLD_DEFAULT, "__asan_init") == nullptr) Limit(RLIMIT_AS, kMostMemory);
#endif
}

// What a sanitizer says down to the calls of this program, or the last lines.
std::string EssenceOf(const std::string& text) {
  constexpr std::size_t kMostLines = 14;
  std::vector<std::string> lines;
  std::istringstream stream(text);
  bool isSanitizers = false;
  for (std::string line; std::getline(stream, line);) {
    const bool begins = line.find("ERROR: AddressSanitizer") != line.npos || line.find("runtime error: ") != line.npos;
    if (begins && !isSanitizers) lines.clear();
    isSanitizers = isSanitizers || begins;
    if (isSanitizers && (lines.size() == kMostLines || line.find("host::validator::") != line.npos)) break;
    lines.push_back(line);
  }
  std::string essence;
  for (std::size_t i = lines.size() - std::min(lines.size(), kMostLines); i < lines.size(); ++i) {
    essence += lines[i] + "\n";
  }
  return essence;
}

[[noreturn]] void RunInside(const Check& check, const TrialPlan& plan, const Shared& shared) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  LimitAll(plan.seconds);
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  close(nothing);
  dup2(shared.Output(), STDOUT_FILENO);
  dup2(shared.Output(), STDERR_FILENO);
  WriteCallsOnCrash(shared.Calls());
  // A bundle's log lines are shown when its check fails.
  HostLog::Instance().sink = [](const std::string& line) { dprintf(STDERR_FILENO, "log: %s\n", line.c_str()); };
  Board* const board = shared.TheBoard();
  Trial trial(check, plan, board);
  try {
    check.run(trial);
    board->state = Board::kPassed;
  } catch (const std::exception& thrown) {
    trial.Fail("no exception: failures are statuses", std::string("an exception: ") + thrown.what());
  } catch (...) {
    trial.Fail("no exception: failures are statuses", "an exception");
  }
  _exit(0);  // what the bundle would do at an exit is a check of its own
}

// False when it was not done in time, and was ended by force.
bool Wait(pid_t process, double seconds, int* status) {
  const int watched = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
  const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  bool asked = false;
  while (waitpid(process, status, WNOHANG) == 0) {
    if (Clock::now() >= end && !asked) kill(process, SIGABRT);
    if (Clock::now() >= end) asked = true;
    if (Clock::now() >= end + kDyingTime) {
      kill(process, SIGKILL);
      waitpid(process, status, 0);
      break;
    }
    pollfd entry{watched, POLLIN, 0};
    poll(&entry, watched >= 0 ? 1 : 0, watched >= 0 ? 100 : 1);
  }
  kill(-process, SIGKILL);  // what it may have left behind
  if (watched >= 0) close(watched);
  return !asked;
}

Outcome::End EndOf(int status, const Board& board, int* number) {
  if (WIFSIGNALED(status)) {
    *number = WTERMSIG(status);
    return Outcome::End::kKilled;
  }
  *number = WEXITSTATUS(status);
  switch (board.state) {
    case Board::kPassed:
      return *number == 0 ? Outcome::End::kPassed : Outcome::End::kExited;
    case Board::kFailed:
      return Outcome::End::kFailed;
    case Board::kSkipped:
      return Outcome::End::kSkipped;
    default:
      return Outcome::End::kExited;
  }
}

// What a thread of this process holds when another process is forked, as the lock of an allocator, is held there for
// ever. The text library reads fonts on threads of its own, which end by themselves.
void AwaitThreads() {
  constexpr auto kMost = std::chrono::seconds(10);
  const auto start = Clock::now();
  const auto count = [] {
    std::error_code none;
    const std::filesystem::directory_iterator threads("/proc/self/task", none);
    return std::distance(begin(threads), end(threads));
  };
  while (count() > 1 && Clock::now() - start < kMost) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace

Outcome RunTrial(const Check& check, const TrialPlan& plan) {
  Outcome outcome;
  const Shared shared;
  AwaitThreads();
  std::fflush(nullptr);  // or the process would print it again
  const auto start = Clock::now();
  const pid_t process = shared.IsMade() ? fork() : -1;
  if (process < 0) {
    outcome.number = errno;
    return outcome;
  }
  if (process == 0) RunInside(check, plan, shared);
  setpgid(process, process);
  int status = 0;
  const bool inTime = Wait(process, plan.seconds, &status);
  const Board& board = *shared.TheBoard();
  outcome.end = EndOf(status, board, &outcome.number);
  if (!inTime) outcome.end = Outcome::End::kHung;
  outcome.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  outcome.doing = board.doing;
  outcome.expected = board.expected;
  outcome.seen = board.seen;
  outcome.history = board.history;
  outcome.output = EssenceOf(LastOf(shared.Output()));
  if (outcome.end == Outcome::End::kKilled || !inTime) outcome.calls = NamedCalls(LastOf(shared.Calls()));
  if (board.hasStep != 0) outcome.step = board.step;
  outcome.operations = board.operations;
  outcome.operation = board.operation;
  return outcome;
}

}  // namespace host::validator
