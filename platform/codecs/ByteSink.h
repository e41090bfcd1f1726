// Bytes that a codec writes.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace platform {

/// A growing block from malloc. Nothing here throws, since it is called from below C code, which exceptions must not
/// pass through: a lack of memory is a false result.
class ByteSink {
 public:
  const unsigned char* Data() const { return bytes_.get(); }
  std::size_t Size() const { return size_; }

  bool Append(const void* data, std::size_t count) { return WriteAt(size_, data, count); }
  /// Overwrites and, at the end, grows; what lies between the old end and `position` becomes zeros.
  bool WriteAt(std::size_t position, const void* data, std::size_t count);
  /// Makes the size `size`; new bytes are not set.
  bool Resize(std::size_t size);
  unsigned char* MutableData() { return bytes_.get(); }

  /// Hands the block over, to be freed with free.
  void* Release() {
    size_ = capacity_ = 0;
    return bytes_.release();
  }

 private:
  struct Deleter {
    void operator()(unsigned char* bytes) const { std::free(bytes); }
  };

  std::unique_ptr<unsigned char, Deleter> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace platform
