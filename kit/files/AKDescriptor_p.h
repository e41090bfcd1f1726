// A descriptor of the system that closes with its owner, which leaves errno alone.
#pragma once

#include <unistd.h>

#include <cerrno>

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
