// The entries of a dictionary, in ascending byte order of their keys.
#pragma once

#include <map>
#include <string_view>
#include <utility>

#include "kit/AKValue.h"

struct AKKeyOrder {
  using is_transparent = void;

  static std::string_view ViewOf(const AKString& key) { return {key.CStr(), key.Length()}; }
  static std::string_view ViewOf(std::string_view key) { return key; }
  template <typename First, typename Second>
  bool operator()(const First& first, const Second& second) const {
    return ViewOf(first) < ViewOf(second);
  }
};

class AKDictionaryStore {
 public:
  const AKValue* Find(std::string_view key) const {
    const auto found = entries.find(key);
    return found == entries.end() ? nullptr : &found->second;
  }
  AKValue* Find(std::string_view key) { return const_cast<AKValue*>(std::as_const(*this).Find(key)); }
  /// Adds or replaces an entry and returns its value.
  AKValue* Put(AKString&& key, AKValue&& value) {
    return &entries.insert_or_assign(std::move(key), std::move(value)).first->second;
  }
  void Remove(std::string_view key) { entries.erase(entries.find(key)); }

  std::map<AKString, AKValue, AKKeyOrder> entries;
};
