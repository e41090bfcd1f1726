#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>

#include "host/Program.h"

namespace {

constexpr char kNoMemory[] = "objecthost: there is not enough memory\n";

// Nothing that runs at the end of a program may need memory again, and say so a second time.
[[noreturn]] void EndWithoutMemory() { _exit(write(STDERR_FILENO, kNoMemory, sizeof(kNoMemory) - 1) < 0 ? 2 : 1); }

// What can't be caught: constants that are made before the program begins, and what must not throw.
[[noreturn]] void Terminate() {
  const bool noMemory = errno == ENOMEM;  // a library may have called this without an exception
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::bad_alloc&) {
    EndWithoutMemory();
  } catch (...) {
  }
  if (noMemory && std::current_exception() == nullptr) EndWithoutMemory();
  std::abort();
}

__attribute__((constructor(101))) void WatchMemory() { std::set_terminate(&Terminate); }

}  // namespace

// Whatever was begun is taken back on the way here: a file that was being written is as it was.
int main(int argc, char** argv) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file beyond the user's limit is refused like any other write
  try {
    return host::RunProgram(argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>());
  } catch (const std::bad_alloc&) {
    EndWithoutMemory();
  }
}
