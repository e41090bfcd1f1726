#include "host/bundles/BundleProbe.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

class SpawnActions {
 public:
  SpawnActions() {
    posix_spawn_file_actions_init(&files_);
    posix_spawnattr_init(&attributes_);
    // A group of its own, so that whatever the bundle starts ends with it.
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }

  void SendOutputTo(int file) { posix_spawn_file_actions_adddup2(&files_, file, STDOUT_FILENO); }

  /// 0, or an errno.
  int Start(const std::string& program, char* const* words, pid_t* process) const {
    return posix_spawn(process, program.c_str(), &files_, &attributes_, words, environ);
  }

 private:
  posix_spawn_file_actions_t files_;
  posix_spawnattr_t attributes_;
};

// Reads until the other end is closed or the time is up.
std::string ReadUntil(int file, Clock::time_point end) {
  std::string text;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return text;
    pollfd entry{file, POLLIN, 0};
    if (poll(&entry, 1, static_cast<int>(left)) <= 0) continue;
    char buffer[512];
    const ssize_t count = read(file, buffer, sizeof(buffer));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    if (text.size() < 4096) text.append(buffer, static_cast<std::size_t>(count));
  }
}

// The status of a process that ended, or false when the time was up first and it was ended by force.
bool WaitUntil(pid_t process, Clock::time_point end, int* status) {
  while (waitpid(process, status, WNOHANG) == 0) {
    if (Clock::now() >= end) {
      kill(-process, SIGKILL);
      waitpid(process, status, 0);
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  kill(-process, SIGKILL);  // what it may have left behind
  return true;
}

// The process says what is wrong in a line of English and a line in the user's language.
Problem::Part SaidTwice(const std::string& text) {
  const std::size_t first = text.find('\n');
  if (first == std::string::npos || first + 1 == text.size()) return text.substr(0, first);
  return {text.substr(0, first), text.substr(first + 1, text.find('\n', first + 1) - first - 1)};
}

}  // namespace

Result<> ProbeBundle(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return Problem(N_("bundle \"%s\" can't be tried: %s"), {bundle, std::strerror(errno)});
  }
  SpawnActions actions;
  actions.SendOutputTo(ends[1]);
  std::string words[] = {program, "--probe", bundle};
  char* const arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
  pid_t process = 0;
  const int failure = actions.Start(program, arguments, &process);
  close(ends[1]);
  if (failure != 0) {
    close(ends[0]);
    return Problem(N_("bundle \"%s\" can't be tried: %s"), {bundle, std::strerror(failure)});
  }
  const Clock::time_point end = Clock::now() + limit;
  const std::string said = ReadUntil(ends[0], end);
  close(ends[0]);
  int status = 0;
  if (!WaitUntil(process, end, &status)) {
    const std::string seconds = std::to_string(static_cast<double>(limit.count()) / 1000).substr(0, 4);
    return Problem(N_("bundle \"%s\" hangs: it was not done after %s seconds"), {bundle, seconds});
  }
  if (WIFSIGNALED(status)) {
    return Problem(N_("bundle \"%s\" crashes: %s"), {bundle, strsignal(WTERMSIG(status))});
  }
  if (WEXITSTATUS(status) == 0) return {};
  if (!said.empty()) return Problem(N_("%s"), {SaidTwice(said)});
  return Problem(N_("bundle \"%s\" ended the process with code %s"), {bundle, std::to_string(WEXITSTATUS(status))});
}

}  // namespace host
