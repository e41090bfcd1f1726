#include "host/bundles/ProbeProcess.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

// The report's own file, so that nothing that a bundle prints is taken for a verdict. Lines of it begin with their
// kind.
constexpr int kReportFile = 3;
constexpr char kLogLine = 'l';
constexpr char kTranslated = 't';
constexpr char kVerdict = 'v';  // the last word, empty for a bundle that can be used
constexpr std::size_t kMostReported = 64 * 1024;
[[maybe_unused]] constexpr rlim_t kMostMemory = 4ULL << 30;
constexpr unsigned int kMostSeconds = 120;  // when the host that waits is gone or stopped

class SpawnActions {
 public:
  SpawnActions() {
    posix_spawn_file_actions_init(&files_);
    posix_spawnattr_init(&attributes_);
    // A group of its own, so that whatever the bundle starts ends with it.
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }

  void ReportTo(int file) { posix_spawn_file_actions_adddup2(&files_, file, kReportFile); }

  /// 0, or an errno.
  int Start(const std::string& program, char* const* words, pid_t* process) const {
    return posix_spawn(process, program.c_str(), &files_, &attributes_, words, environ);
  }

 private:
  posix_spawn_file_actions_t files_;
  posix_spawnattr_t attributes_;
};

class File {
 public:
  explicit File(int number) : number_(number) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { Close(); }

  int Number() const { return number_; }
  void Close() {
    if (number_ >= 0) close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

// Takes what there is to read and keeps the last lines of it all. False at the end of the file.
bool ReadSome(int file, std::string* text) {
  char buffer[4096];
  const ssize_t count = read(file, buffer, sizeof(buffer));
  if (count < 0) return errno == EINTR || errno == EAGAIN;
  text->append(buffer, static_cast<std::size_t>(count));
  if (text->size() > 2 * kMostReported) {
    const std::size_t lineEnd = text->find('\n', text->size() - kMostReported);
    text->erase(0, lineEnd == std::string::npos ? lineEnd : lineEnd + 1);
  }
  return count != 0;
}

// Reads until the process has ended or the time is up. The other end of the pipe is no sign: a child of the bundle may
// hold it open for ever, and the bundle may close it.
std::string ReadUntilEnd(int file, pid_t process, Clock::time_point end) {
  const File watched(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
  std::string text;
  bool open = true;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return text;
    // A kernel without process files: the pipe alone, a little at a time.
    const int wait = watched.Number() >= 0 ? static_cast<int>(left) : 1;
    pollfd entries[] = {{watched.Number(), POLLIN, 0}, {open ? file : -1, POLLIN, 0}};
    if (poll(entries, 2, wait) < 0 && errno != EINTR) return text;
    if (entries[1].revents != 0 && !ReadSome(file, &text)) open = false;
    siginfo_t info{};
    if (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid != 0) break;
  }
  fcntl(file, F_SETFL, O_NONBLOCK);
  for (std::size_t before = text.size() + 1; open && text.size() != before;) {
    before = text.size();
    open = ReadSome(file, &text);
  }
  return text;
}

// The status of a process that ended, or false when the time was up first and it was ended by force.
bool WaitUntil(pid_t process, Clock::time_point end, int* status) {
  while (waitpid(process, status, WNOHANG) == 0) {
    if (Clock::now() >= end) {
      kill(-process, SIGKILL);
      kill(process, SIGKILL);  // it may have left its group
      waitpid(process, status, 0);
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  kill(-process, SIGKILL);  // what it may have left behind
  return true;
}

// Sorts the report's lines; true when a verdict is among them.
bool TakeReport(const std::string& text, ProbeResult* result) {
  bool hasVerdict = false;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string line = text.substr(begin, end - begin);
    if (line[0] == kLogLine) result->log += line.substr(1) + "\n";
    if (line[0] == kTranslated) result->translated = line.substr(1);
    if (line[0] == kVerdict && end < text.size()) {
      result->text = line.substr(1);
      hasVerdict = true;
    }
    begin = end + 1;
  }
  return hasVerdict;
}

}  // namespace

ProbeResult RunProbeProcess(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit) {
  ProbeResult result;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    result.number = errno;
    return result;
  }
  const File reading(ends[0]);
  File writing(ends[1]);
  SpawnActions actions;
  actions.ReportTo(writing.Number());
  std::string words[] = {program, "--probe", bundle};
  char* const arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
  pid_t process = 0;
  result.number = actions.Start(program, arguments, &process);
  if (result.number != 0) return result;
  writing.Close();

  const Clock::time_point end = Clock::now() + limit;
  const bool hasVerdict = TakeReport(ReadUntilEnd(reading.Number(), process, end), &result);
  int status = 0;
  if (!WaitUntil(process, end, &status)) {
    result.end = ProbeResult::End::kHung;
  } else if (WIFSIGNALED(status)) {
    result.end = ProbeResult::End::kKilled;
    result.number = WTERMSIG(status);
  } else if (!hasVerdict || (result.text.empty() && WEXITSTATUS(status) != 0)) {
    result.end = ProbeResult::End::kExited;
    result.number = WEXITSTATUS(status);
  } else {
    result.end = result.text.empty() ? ProbeResult::End::kPassed : ProbeResult::End::kRefused;
  }
  return result;
}

ProbeReport::ProbeReport() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  alarm(kMostSeconds);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
#if !defined(AK_SANITIZED)  // a sanitizer reserves terabytes of addresses, also one that is preloaded for a bundle
  const rlimit memory{kMostMemory, kMostMemory};
  if (dlsym(RTLD_DEFAULT, "__asan_init") == nullptr) setrlimit(RLIMIT_AS, &memory);
#endif
  // Programs that the bundle starts do not get the report.
  fcntl(kReportFile, F_SETFD, FD_CLOEXEC);
}

void ProbeReport::Send(char kind, const std::string& line) const {
  std::string text = kind + line;
  std::replace(text.begin(), text.end(), '\n', ' ');
  text += '\n';
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t count = write(kReportFile, text.data() + sent, text.size() - sent);
    if (count < 0 && errno != EINTR) return;
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
}

void ProbeReport::Log(const std::string& line) const { Send(kLogLine, line); }

void ProbeReport::Pass() const { Send(kVerdict, ""); }

void ProbeReport::Refuse(const Problem& problem) const {
  Send(kTranslated, problem.Translated());
  Send(kVerdict, problem.English());
}

}  // namespace host
