// Growable arrays with the kit's vocabulary.
//
// ATArray<T> owns its elements in one block, in order. Counts and indexes are 32-bit unsigned. Copying copies the
// elements. Nothing here throws but the allocator.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

template <typename T>
class ATArray {
 public:
  using value_type = T;

  ATArray() = default;
  /// `count` value-initialised elements.
  explicit ATArray(unsigned int count) : items_(count) {}
  ATArray(std::initializer_list<T> items) : items_(items) {}
  /// Copies `count` elements from `data`; null data or a count of 0 gives an empty array.
  ATArray(const T* data, unsigned int count) { Assign(data, count); }

  unsigned int Count() const { return static_cast<unsigned int>(items_.size()); }
  unsigned int Capacity() const { return static_cast<unsigned int>(items_.capacity()); }
  bool IsEmpty() const { return items_.empty(); }

  /// The first element, or null when the array is empty.
  T* Data() { return items_.empty() ? nullptr : items_.data(); }
  const T* Data() const { return items_.empty() ? nullptr : items_.data(); }

  /// The element at `index`, which must be below Count().
  T& operator[](unsigned int index) { return items_[index]; }
  const T& operator[](unsigned int index) const { return items_[index]; }

  void Assign(const T* data, unsigned int count) {
    if (data == nullptr || count == 0) {
      items_.clear();
      return;
    }
    std::vector<T> copy(data, data + count);  // `data` may lie inside this array
    items_.swap(copy);
  }

  void Append(const T& item) { items_.push_back(item); }
  void Append(T&& item) { items_.push_back(std::move(item)); }
  void Resize(unsigned int count) { items_.resize(count); }
  void Reserve(unsigned int count) { items_.reserve(count); }
  /// Drops the last element; an empty array is left as it is.
  void RemoveLast() {
    if (!items_.empty()) items_.pop_back();
  }
  /// Count becomes 0; the storage is kept.
  void Clear() { items_.clear(); }
  /// Count becomes 0 and the storage is released.
  void Free() { std::vector<T>().swap(items_); }
  void Swap(ATArray* other) { items_.swap(other->items_); }

  T* begin() { return items_.data(); }
  T* end() { return items_.data() + items_.size(); }
  const T* begin() const { return items_.data(); }
  const T* end() const { return items_.data() + items_.size(); }

  bool operator==(const ATArray& other) const { return items_ == other.items_; }

 private:
  std::vector<T> items_;
};
