// A map kept as one sorted array: small, quick to search and to walk through.
//
// It owns its keys and values, in ascending order of the keys. New keys wait in a short array of their own, sorted too,
// and removed ones keep their places, without their values, until there are as many as the square root of all or
// somebody walks through the map; so 100,000 that come and go in any order cost no time that grows with the square of
// their number. A walk tidies up, also through a const map: threads that share one take turns. Counts and indexes are
// 32-bit unsigned. Nothing here throws but the allocator.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

template <typename K, typename V>
class ATFastMap {
 public:
  /// A key and its value, as a walk meets them. Keys must not be changed.
  using value_type = std::pair<K, V>;

  /// The number of keys.
  unsigned int Count() const { return static_cast<unsigned int>(items_.size() - goneCount_ + recent_.size()); }
  /// True when there are no keys.
  bool IsEmpty() const { return Count() == 0; }
  /// Gets storage for `count` keys.
  void Reserve(unsigned int count) { items_.reserve(count); }
  /// Count becomes 0; the storage is kept.
  void Clear() {
    items_.clear();
    recent_.clear();
    gone_.clear();
    goneCount_ = 0;
  }
  /// Count becomes 0 and the storage is released.
  void Free() { ATFastMap().Swap(this); }
  /// Exchanges the contents of two maps.
  void Swap(ATFastMap* other) {
    items_.swap(other->items_);
    recent_.swap(other->recent_);
    gone_.swap(other->gone_);
    std::swap(goneCount_, other->goneCount_);
  }

  ///@{
  /// Null when there is none; valid until the map is changed or walked through.
  V* Find(const K& key) {
    const std::size_t old = IndexOf(items_, key);
    if (old < items_.size()) return IsGone(old) ? nullptr : &items_[old].second;
    const std::size_t index = IndexOf(recent_, key);
    return index < recent_.size() ? &recent_[index].second : nullptr;
  }
  const V* Find(const K& key) const { return const_cast<ATFastMap*>(this)->Find(key); }
  ///@}

  /// The value of the key, a value-initialised one for a new key; valid as long.
  V& operator[](const K& key) {
    if (V* found = Find(key)) return *found;
    if (const std::size_t old = IndexOf(items_, key); old < items_.size()) {
      gone_[old] = false;
      --goneCount_;
      return items_[old].second;
    }
    if (IsMany(recent_.size())) Tidied();
    return recent_.insert(PlaceOf(&recent_, key), value_type(key, V()))->second;
  }

  /// False when there was none.
  bool Remove(const K& key) {
    const std::size_t old = IndexOf(items_, key);
    if (old == items_.size()) {
      const std::size_t index = IndexOf(recent_, key);
      if (index == recent_.size()) return false;
      recent_.erase(recent_.begin() + static_cast<std::ptrdiff_t>(index));
      return true;
    }
    if (IsGone(old)) return false;
    gone_.resize(items_.size());
    gone_[old] = true;
    ++goneCount_;
    items_[old].second = V();
    if (IsMany(goneCount_)) Tidied();
    return true;
  }

  ///@{
  /// For range-based loops, in ascending order of the keys; valid until the map is changed.
  value_type* begin() { return Tidied().data(); }
  value_type* end() { return Tidied().data() + items_.size(); }
  const value_type* begin() const { return Tidied().data(); }
  const value_type* end() const { return Tidied().data() + items_.size(); }
  ///@}

 private:
  using Items = std::vector<value_type>;
  static constexpr std::size_t kFewest = 16;  // changes that are worth tidying up

  bool IsMany(std::size_t count) const { return count >= kFewest && count * count > items_.size(); }
  bool IsGone(std::size_t index) const { return index < gone_.size() && gone_[index]; }

  static typename Items::iterator PlaceOf(Items* array, const K& key) {
    return std::lower_bound(array->begin(), array->end(), key,
                            [](const value_type& item, const K& wanted) { return item.first < wanted; });
  }
  // The size where there is no such key.
  static std::size_t IndexOf(Items& array, const K& key) {
    const auto at = PlaceOf(&array, key);
    return at != array.end() && at->first == key ? static_cast<std::size_t>(at - array.begin()) : array.size();
  }

  void DropGone() const {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (IsGone(i)) continue;
      if (i != kept) items_[kept] = std::move(items_[i]);
      ++kept;
    }
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(kept), items_.end());
  }

  Items& Tidied() const {
    if (goneCount_ != 0) DropGone();
    gone_.clear();
    goneCount_ = 0;
    if (recent_.empty()) return items_;
    const auto old = static_cast<std::ptrdiff_t>(items_.size());
    items_.insert(items_.end(), std::make_move_iterator(recent_.begin()), std::make_move_iterator(recent_.end()));
    recent_.clear();
    std::inplace_merge(items_.begin(), items_.begin() + old, items_.end(),
                       [](const value_type& a, const value_type& b) { return a.first < b.first; });
    return items_;
  }

  mutable Items items_;
  mutable Items recent_;            // that are not among them yet
  mutable std::vector<bool> gone_;  // of the items, those that were removed; empty for none
  mutable std::size_t goneCount_ = 0;
};
