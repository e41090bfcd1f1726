// A descriptor of the system that closes with its owner, and calls for it that signals do not make fail.
#pragma once

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

/// open with O_CLOEXEC, repeated while a signal interrupts it. -1 and errno when it fails.
inline int OpenRetrying(const char* path, int flags, mode_t mode = 0) {
  for (;;) {
    const int descriptor = ::open(path, flags | O_CLOEXEC, mode);
    if (descriptor >= 0 || errno != EINTR) return descriptor;
  }
}

/// fsync, the same.
inline bool SyncRetrying(int descriptor) {
  while (::fsync(descriptor) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }
  /// False when the system reports a late failure to write.
  bool Close() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0 || errno == EINTR;  // it is closed all the same
  }

 private:
  int number_;
};

}  // namespace platform
