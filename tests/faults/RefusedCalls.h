// System calls that a test refuses. The linker puts the functions named __wrap_* in the place of the calls that the
// program's link options name, so that the k-th of them can be refused, once or from then on.
//
// For one source file a program: what a call needs is defined here. Calls of its own are added by AK_WRAP.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

namespace faults {

/// How far away a refusal is.
struct Refusal {
  long left = -1;         ///< to go before it; 0 refuses, negative lets everything pass
  bool forGood = false;   ///< and everything from then on
  bool happened = false;  ///< something was refused

  /// Counts one; true when that is refused.
  bool Comes() {
    if (left < 0) return false;
    if (left-- > 0) return false;
    if (forGood) left = 0;
    return happened = true;
  }
};

inline Refusal sCall;
inline int sReason = EIO;

/// Counts one call; true, with errno, when it is refused.
inline bool Refuses() {
  if (!sCall.Comes()) return false;
  errno = sReason;
  return true;
}

}  // namespace faults

#define AK_WRAP(result, name, parameters, arguments) \
  result __real_##name parameters;                   \
  result __wrap_##name parameters { return faults::Refuses() ? -1 : __real_##name arguments; }

// Calls with an argument that may lack: there is always something in its place.
#define AK_WRAP_WITH_LAST(name, parameters, before, last, arguments) \
  int __real_##name parameters;                                      \
  int __wrap_##name parameters {                                     \
    va_list list;                                                    \
    va_start(list, before);                                          \
    const last more = va_arg(list, last);                            \
    va_end(list);                                                    \
    return faults::Refuses() ? -1 : __real_##name arguments;         \
  }

extern "C" {

AK_WRAP(ssize_t, pwrite, (int file, const void* data, size_t size, off_t at), (file, data, size, at))
AK_WRAP(int, fsync, (int file), (file))
AK_WRAP(int, ftruncate, (int file, off_t size), (file, size))
AK_WRAP(int, fchmod, (int file, mode_t mode), (file, mode))
AK_WRAP(int, stat, (const char* path, struct stat* status), (path, status))
AK_WRAP(int, lstat, (const char* path, struct stat* status), (path, status))
AK_WRAP(int, fstat, (int file, struct stat* status), (file, status))
AK_WRAP_WITH_LAST(open, (const char* path, int flags, ...), flags, mode_t, (path, flags, more))

// A close that fails has closed all the same.
int __real_close(int file);
int __wrap_close(int file) {
  const int result = __real_close(file);
  return faults::Refuses() ? -1 : result;
}

}  // extern "C"
