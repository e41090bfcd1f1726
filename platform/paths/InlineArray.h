// A growable array of plain items that keeps its first items inside itself, so that a short one costs no allocation.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace platform {

/// Owns its items; not copyable, use Append to copy. Only the allocator throws.
template <typename T, std::size_t kInline>
class InlineArray {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_default_constructible_v<T>);

 public:
  InlineArray() = default;
  InlineArray(const InlineArray&) = delete;
  InlineArray& operator=(const InlineArray&) = delete;
  ~InlineArray() {
    if (data_ != inline_) std::free(data_);
  }

  std::size_t Count() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }
  T* Data() { return data_; }
  const T* Data() const { return data_; }
  const T* begin() const { return data_; }
  const T* end() const { return data_ + count_; }

  /// Count becomes 0; the storage is kept.
  void Clear() { count_ = 0; }

  /// Drops the last `count` items, of which there are at least as many.
  void RemoveLast(std::size_t count) { count_ -= count; }

  /// Makes room for `count` items more, so that adding them does not throw.
  void Ensure(std::size_t count) {
    if (count > capacity_ - count_) Reserve(std::max(count_ + count, 2 * capacity_));
  }

  /// Adds `count` uninitialised items and returns the first of them; the pointer holds until the next growth.
  T* Grow(std::size_t count) {
    Ensure(count);
    T* added = data_ + count_;
    count_ += count;
    return added;
  }

 private:
  void Reserve(std::size_t capacity) {
    const bool isInline = data_ == inline_;
    void* grown = std::realloc(isInline ? nullptr : data_, capacity * sizeof(T));
    if (grown == nullptr) throw std::bad_alloc();
    if (isInline) std::memcpy(grown, inline_, count_ * sizeof(T));
    data_ = static_cast<T*>(grown);
    capacity_ = capacity;
  }

  T* data_ = inline_;
  std::size_t count_ = 0;
  std::size_t capacity_ = kInline;
  T inline_[kInline];
};

}  // namespace platform
