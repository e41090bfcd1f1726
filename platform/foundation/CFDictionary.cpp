#include "platform/foundation/CFDictionaryValue.h"
#include "platform/foundation/NotNull.h"

const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0};

const platform::NativeObject* CFDictionary::Find(CFStringRef key) const {
  for (const Entry& entry : entries) {
    if (entry.key.Get()->units == key->units) return entry.value.Get();
  }
  return nullptr;
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
  if (count < 0 || keyCallBacks == nullptr || valueCallBacks == nullptr) return nullptr;
  if (count > 0 && (keys == nullptr || values == nullptr)) return nullptr;
  std::vector<CFDictionary::Entry> entries;
  entries.reserve(static_cast<std::size_t>(count));
  for (CFIndex i = 0; i < count; ++i) {
    if (keys[i] == nullptr || values[i] == nullptr) return nullptr;
    entries.push_back({platform::NativeRef(static_cast<CFStringRef>(keys[i])),
                       platform::NativeRef(static_cast<const platform::NativeObject*>(values[i]))});
  }
  return new CFDictionary(std::move(entries));
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
  platform::MustBeThere(dictionary);
  return dictionary == nullptr ? 0 : static_cast<CFIndex>(dictionary->entries.size());
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  platform::MustBeThere(dictionary);
  if (dictionary == nullptr || key == nullptr) return nullptr;
  return dictionary->Find(static_cast<CFStringRef>(key));
}
