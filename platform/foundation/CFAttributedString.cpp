#include "CoreFoundation/CFAttributedString.h"

#include "platform/foundation/CFAttributedStringValue.h"
#include "platform/foundation/CFDictionaryValue.h"
#include "platform/foundation/NotNull.h"

namespace {

// The names are constants, so that equal ones are mostly the same object.
bool SameName(CFStringRef a, CFStringRef b) { return a == b || a->units == b->units; }

}  // namespace

const platform::NativeObject* CFAttributedString::Find(CFStringRef name) const {
  for (std::size_t i = 0; i < attributeCount; ++i) {
    if (SameName(attributes[i].name.Get(), name)) return attributes[i].value.Get();
  }
  return nullptr;
}

void CFAttributedString::Set(CFStringRef name, const platform::NativeObject* value) {
  std::size_t i = 0;
  while (i < attributeCount && !SameName(attributes[i].name.Get(), name)) ++i;
  if (i == kMaxAttributes) return;
  attributes[i] = {platform::NativeRef<const CFString>(name), platform::NativeRef<const platform::NativeObject>(value)};
  if (i == attributeCount) ++attributeCount;
}

CFAttributedStringRef CFAttributedStringCreate(CFAllocatorRef, CFStringRef text, CFDictionaryRef attributes) {
  platform::MustBeThere(text);
  if (text == nullptr) return nullptr;
  auto* attributed = new CFAttributedString(text);
  if (attributes != nullptr) {
    for (const CFDictionary::Entry& entry : attributes->entries) attributed->Set(entry.key.Get(), entry.value.Get());
  }
  return attributed;
}

CFMutableAttributedStringRef CFAttributedStringCreateMutableCopy(CFAllocatorRef, CFIndex maxLength,
                                                                 CFAttributedStringRef text) {
  platform::MustBeThere(text);
  if (text == nullptr || (maxLength != 0 && maxLength < CFAttributedStringGetLength(text))) return nullptr;
  auto* copy = new CFAttributedString(text->text.Get());
  copy->attributeCount = text->attributeCount;
  for (std::size_t i = 0; i < text->attributeCount; ++i) copy->attributes[i] = text->attributes[i];
  return copy;
}

CFIndex CFAttributedStringGetLength(CFAttributedStringRef text) {
  platform::MustBeThere(text);
  return text == nullptr ? 0 : CFStringGetLength(text->text.Get());
}

void CFAttributedStringSetAttribute(CFMutableAttributedStringRef text, CFRange range, CFStringRef name,
                                    CFTypeRef value) {
  platform::MustBeThere(text);
  platform::MustBeThere(name);
  platform::MustBeThere(value);
  if (text == nullptr || name == nullptr || value == nullptr || range.location != 0 ||
      range.length != CFAttributedStringGetLength(text)) {
    return;
  }
  text->Set(name, static_cast<const platform::NativeObject*>(value));
}
