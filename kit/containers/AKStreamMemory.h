// The bytes of a memory stream and the room behind them.
//
// Room is not touched before it is used: a large one costs no memory until then. Its bytes have no values.
#pragma once

#include <cstddef>

class AKStreamMemory {
 public:
  /// No memory.
  AKStreamMemory() = default;
  AKStreamMemory(const AKStreamMemory&) = delete;
  AKStreamMemory& operator=(const AKStreamMemory&) = delete;
  ~AKStreamMemory() { Free(); }

  ///@{
  /// The first byte; null before the first Grow.
  unsigned char* data() { return begin_; }
  const unsigned char* data() const { return begin_; }
  ///@}
  /// The bytes that may be used, those of no value yet included.
  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }

  /// Makes the size at least `size`. The bytes may move; those there are stay.
  void Grow(std::size_t size);
  /// Gives all memory back; the size is 0 then.
  void Free();

 private:
  unsigned char* begin_ = nullptr;
  unsigned char* end_ = nullptr;
  unsigned char* reserved_ = nullptr;  // keeps the size that programs and bundles agree on
};
