// A map kept as one sorted array: small, quick to search and to walk through, slow to build key by key beyond some
// thousand entries.
//
// It owns its keys and values, in ascending order of the keys. Counts and indexes are 32-bit unsigned. Nothing here
// throws but the allocator.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

template <typename K, typename V>
class ATFastMap {
 public:
  using value_type = std::pair<K, V>;

  unsigned int Count() const { return static_cast<unsigned int>(items_.size()); }
  bool IsEmpty() const { return items_.empty(); }
  void Reserve(unsigned int count) { items_.reserve(count); }
  /// Count becomes 0; the storage is kept.
  void Clear() { items_.clear(); }
  /// Count becomes 0 and the storage is released.
  void Free() { std::vector<value_type>().swap(items_); }
  void Swap(ATFastMap* other) { items_.swap(other->items_); }

  /// Null when there is none; valid until the map is changed.
  V* Find(const K& key) {
    const auto at = PlaceOf(key);
    return at != items_.end() && at->first == key ? &at->second : nullptr;
  }
  const V* Find(const K& key) const { return const_cast<ATFastMap*>(this)->Find(key); }

  /// The value of the key, a value-initialised one for a new key; valid until the map is changed.
  V& operator[](const K& key) {
    const auto at = PlaceOf(key);
    if (at != items_.end() && at->first == key) return at->second;
    return items_.insert(at, value_type(key, V()))->second;
  }

  /// False when there was none.
  bool Remove(const K& key) {
    const auto at = PlaceOf(key);
    if (at == items_.end() || !(at->first == key)) return false;
    items_.erase(at);
    return true;
  }

  value_type* begin() { return items_.data(); }
  value_type* end() { return items_.data() + items_.size(); }
  const value_type* begin() const { return items_.data(); }
  const value_type* end() const { return items_.data() + items_.size(); }

 private:
  typename std::vector<value_type>::iterator PlaceOf(const K& key) {
    return std::lower_bound(items_.begin(), items_.end(), key,
                            [](const value_type& item, const K& wanted) { return item.first < wanted; });
  }

  std::vector<value_type> items_;
};
