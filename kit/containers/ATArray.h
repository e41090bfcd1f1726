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
  /// The type of the elements.
  using value_type = T;

  /// An empty array, without storage.
  ATArray() = default;
  /// `count` value-initialised elements.
  explicit ATArray(unsigned int count) : items_(count) {}
  /// A copy of the listed elements.
  ATArray(std::initializer_list<T> items) : items_(items) {}
  /// Copies `count` elements from `data`; null data or a count of 0 gives an empty array.
  ATArray(const T* data, unsigned int count) { Assign(data, count); }

  /// The number of elements.
  unsigned int Count() const { return static_cast<unsigned int>(items_.size()); }
  /// How many elements fit into the storage that there is.
  unsigned int Capacity() const { return static_cast<unsigned int>(items_.capacity()); }
  /// True when there are no elements.
  bool IsEmpty() const { return items_.empty(); }

  /// The first element, or null when the array is empty.
  T* Data() { return items_.empty() ? nullptr : items_.data(); }
  /// The same for an array that is not changed.
  const T* Data() const { return items_.empty() ? nullptr : items_.data(); }

  /// The element at `index`, which must be below Count().
  T& operator[](unsigned int index) { return items_[index]; }
  /// The same for an array that is not changed.
  const T& operator[](unsigned int index) const { return items_[index]; }

  /// Replaces the elements by copies of `count` from `data`, which may lie inside this array; null or 0 empties it.
  void Assign(const T* data, unsigned int count) {
    if (data == nullptr || count == 0) {
      items_.clear();
      return;
    }
    std::vector<T> copy(data, data + count);  // `data` may lie inside this array
    items_.swap(copy);
  }

  /// Adds an element behind the last; storage grows geometrically.
  void Append(const T& item) { items_.push_back(item); }
  /// The same with an element that the caller gives up.
  void Append(T&& item) { items_.push_back(std::move(item)); }
  /// Makes the count `count`: new elements are value-initialised, surplus ones dropped.
  void Resize(unsigned int count) { items_.resize(count); }
  /// Gets storage for `count` elements; the count stays.
  void Reserve(unsigned int count) { items_.reserve(count); }
  /// Drops the last element; an empty array is left as it is.
  void RemoveLast() {
    if (!items_.empty()) items_.pop_back();
  }
  /// Count becomes 0; the storage is kept.
  void Clear() { items_.clear(); }
  /// Count becomes 0 and the storage is released.
  void Free() { std::vector<T>().swap(items_); }
  /// Exchanges the storage of two arrays; pointers to elements stay valid.
  void Swap(ATArray* other) { items_.swap(other->items_); }

  /// For range-based loops; valid until the array grows or dies.
  T* begin() { return items_.data(); }
  /// Behind the last element.
  T* end() { return items_.data() + items_.size(); }
  /// The same for an array that is not changed.
  const T* begin() const { return items_.data(); }
  /// The same for an array that is not changed.
  const T* end() const { return items_.data() + items_.size(); }

  /// True when both have equal elements in the same order.
  bool operator==(const ATArray& other) const { return items_ == other.items_; }

 private:
  std::vector<T> items_;
};
