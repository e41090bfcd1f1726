// What a native dictionary is made of. Private to the native layer.
#pragma once

#include <utility>
#include <vector>

#include "CoreFoundation/CFDictionary.h"
#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"

struct CFDictionary final : platform::NativeObject {
  struct Entry {
    platform::NativeRef<const CFString> key;
    platform::NativeRef<const platform::NativeObject> value;
  };

  explicit CFDictionary(std::vector<Entry> dictionaryEntries) : entries(std::move(dictionaryEntries)) {}

  /// Null when there is none.
  const platform::NativeObject* Find(CFStringRef key) const;

  /// The value as a T; null when there is none or it is of another type.
  template <typename T>
  const T* Get(CFStringRef key) const {
    return dynamic_cast<const T*>(Find(key));
  }

  /// Few: a search of all costs less than an order would.
  const std::vector<Entry> entries;
};
