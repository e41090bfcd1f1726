// A descriptor of the system that closes with its owner, which leaves errno alone; and calls for it that signals do not
// make fail.
#pragma once

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

/// openat with O_CLOEXEC, repeated while a signal interrupts it. -1 and errno when it fails.
inline int AKOpenRetrying(int folder, const char* path, int flags, mode_t mode = 0) {
  for (;;) {
    const int descriptor = ::openat(folder, path, flags | O_CLOEXEC, mode);
    if (descriptor >= 0 || errno != EINTR) return descriptor;
    errno = 0;
  }
}

/// fsync, repeated while a signal interrupts it.
inline bool AKSyncRetrying(int descriptor) {
  while (::fsync(descriptor) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

/// ftruncate, repeated while a signal interrupts it.
inline bool AKTruncateRetrying(int descriptor, off_t size) {
  while (::ftruncate(descriptor, size) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

class AKDescriptor {
 public:
  /// Takes the descriptor over; a negative number stands for none.
  explicit AKDescriptor(int number = -1) : number_(number) {}
  AKDescriptor(const AKDescriptor&) = delete;
  AKDescriptor& operator=(const AKDescriptor&) = delete;
  ~AKDescriptor() { Replace(-1); }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }
  /// Hands the descriptor to the caller.
  int Release() {
    const int number = number_;
    number_ = -1;
    return number;
  }
  void Replace(int number) {
    const int reason = errno;
    if (number_ >= 0) ::close(number_);
    number_ = number;
    errno = reason;
  }

 private:
  int number_;
};
