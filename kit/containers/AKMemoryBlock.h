// AKMemoryBlock: a shared, copy-on-write block of unsigned bytes (AKSharedBytes.h). Sizes are 32-bit.
#pragma once

#include <cstring>

#include "kit/containers/AKSharedBytes.h"

class AKFile;

class AKMemoryBlock {
 public:
  constexpr AKMemoryBlock() noexcept = default;
  /// A copy of `size` bytes; null or 0 gives the empty block.
  AKMemoryBlock(const void* data, unsigned int size) { Assign(data, size); }

  /// Copies `size` bytes, which may be part of this block; null or 0 frees the block.
  void Assign(const void* data, unsigned int size) { bytes_.Assign(data, size); }
  /// Shares the other block's bytes.
  void Assign(const AKMemoryBlock& other) { bytes_ = other.bytes_; }
  /// Size 0 frees. Otherwise resizes, keeping old bytes and zeroing new ones, or all of them when `zero` is set.
  void Allocate(unsigned int size, bool zero);
  /// Drops the buffer.
  void Free() { bytes_.Free(); }
  /// Size 0; the buffer may be kept.
  void Clear() { bytes_.Clear(); }
  /// Sets every byte to 0.
  void Zeroset();
  /// Exchanges the bytes of two blocks; nothing is copied.
  void Swap(AKMemoryBlock* other) noexcept { bytes_.Swap(&other->bytes_); }

  /// True when there are no bytes.
  bool IsEmpty() const { return bytes_.IsEmpty(); }
  /// The number of bytes.
  unsigned int Size() const { return bytes_.Length(); }
  /// The bytes, null for an empty block; valid until the block is modified or dies.
  const unsigned char* Data() const {
    return IsEmpty() ? nullptr : reinterpret_cast<const unsigned char*>(bytes_.Data());
  }
  /// The bytes for the caller to write, private to this block, null for an empty block.
  unsigned char* MutableData() { return IsEmpty() ? nullptr : reinterpret_cast<unsigned char*>(bytes_.Writable()); }

  ///@{
  /// True when both have the same bytes.
  bool IsEqual(const AKMemoryBlock& other) const {
    return Size() == other.Size() && std::memcmp(bytes_.Data(), other.bytes_.Data(), Size()) == 0;
  }
  bool operator==(const AKMemoryBlock& other) const { return IsEqual(other); }
  ///@}

  ///@{
  /// The record of a block, a "bina" chunk. Each returns the status of the first file operation that failed, 0 on
  /// success; a failed read frees the block.
  int WriteToFile(AKFile& file) const;
  int ReadFromFile(const AKFile& file);
  static int SkipFromFile(const AKFile& file);
  ///@}

 private:
  AKSharedBytes bytes_;
};
