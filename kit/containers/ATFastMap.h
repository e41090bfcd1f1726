// A map kept as one sorted array: small, quick to search and to walk through.
//
// It owns its keys and values, in ascending order of the keys. New keys wait in a short array of their own, sorted too,
// until there are as many as the square root of all or somebody walks through the map; so 100,000 that come in any
// order cost no time that grows with the square of their number. A walk sorts them in, also through a const map:
// threads that share one take turns. Counts and indexes are 32-bit unsigned. Nothing here throws but the allocator.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

template <typename K, typename V>
class ATFastMap {
 public:
  using value_type = std::pair<K, V>;

  unsigned int Count() const { return static_cast<unsigned int>(items_.size() + recent_.size()); }
  bool IsEmpty() const { return items_.empty() && recent_.empty(); }
  void Reserve(unsigned int count) { items_.reserve(count); }
  /// Count becomes 0; the storage is kept.
  void Clear() {
    items_.clear();
    recent_.clear();
  }
  /// Count becomes 0 and the storage is released.
  void Free() {
    std::vector<value_type>().swap(items_);
    std::vector<value_type>().swap(recent_);
  }
  void Swap(ATFastMap* other) {
    items_.swap(other->items_);
    recent_.swap(other->recent_);
  }

  /// Null when there is none; valid until the map is changed or walked through.
  V* Find(const K& key) {
    for (auto* array : {&items_, &recent_}) {
      const auto at = PlaceOf(array, key);
      if (at != array->end() && at->first == key) return &at->second;
    }
    return nullptr;
  }
  const V* Find(const K& key) const { return const_cast<ATFastMap*>(this)->Find(key); }

  /// The value of the key, a value-initialised one for a new key; valid as long.
  V& operator[](const K& key) {
    if (V* found = Find(key)) return *found;
    if (recent_.size() >= kFewest && recent_.size() * recent_.size() > items_.size()) Merged();
    return recent_.insert(PlaceOf(&recent_, key), value_type(key, V()))->second;
  }

  /// False when there was none.
  bool Remove(const K& key) {
    for (auto* array : {&items_, &recent_}) {
      const auto at = PlaceOf(array, key);
      if (at == array->end() || !(at->first == key)) continue;
      array->erase(at);
      return true;
    }
    return false;
  }

  value_type* begin() { return Merged().data(); }
  value_type* end() { return Merged().data() + items_.size(); }
  const value_type* begin() const { return Merged().data(); }
  const value_type* end() const { return Merged().data() + items_.size(); }

 private:
  static constexpr std::size_t kFewest = 16;  // recent keys that are worth a merge

  static typename std::vector<value_type>::iterator PlaceOf(std::vector<value_type>* array, const K& key) {
    return std::lower_bound(array->begin(), array->end(), key,
                            [](const value_type& item, const K& wanted) { return item.first < wanted; });
  }

  std::vector<value_type>& Merged() const {
    if (recent_.empty()) return items_;
    const auto old = static_cast<std::ptrdiff_t>(items_.size());
    items_.insert(items_.end(), std::make_move_iterator(recent_.begin()), std::make_move_iterator(recent_.end()));
    recent_.clear();
    std::inplace_merge(items_.begin(), items_.begin() + old, items_.end(),
                       [](const value_type& a, const value_type& b) { return a.first < b.first; });
    return items_;
  }

  mutable std::vector<value_type> items_;
  mutable std::vector<value_type> recent_;  // that are not among them yet
};
