#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <new>

#include "host/Program.h"

namespace {

constexpr char kNoMemory[] = "objecthost: there is not enough memory\n";

int EndWithoutMemory() { return write(STDERR_FILENO, kNoMemory, sizeof(kNoMemory) - 1) < 0 ? 2 : 1; }

// What can't be caught: constants that are made before the program begins, and what must not throw.
[[noreturn]] void Terminate() {
  const bool noMemory = errno == ENOMEM;  // a library may have called this without an exception
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::bad_alloc&) {
    _exit(EndWithoutMemory());
  } catch (...) {
  }
  if (noMemory && std::current_exception() == nullptr) _exit(EndWithoutMemory());
  std::abort();
}

__attribute__((constructor(101))) void WatchMemory() { std::set_terminate(&Terminate); }

}  // namespace

// Whatever was begun is taken back on the way here: a file that was being written is as it was.
int main(int argc, char** argv) {
  try {
    return host::RunProgram(argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>());
  } catch (const std::bad_alloc&) {
    return EndWithoutMemory();
  }
}
