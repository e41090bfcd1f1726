#include <algorithm>
#include <cstring>

#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NotNull.h"

namespace {

bool IsKnown(CFStringEncoding encoding) {
  return encoding == kCFStringEncodingMacRoman || encoding == kCFStringEncodingWindowsLatin1 ||
         encoding == kCFStringEncodingUTF8;
}

}  // namespace

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
  platform::MustBeThere(text);
  if (text == nullptr || !IsKnown(encoding)) return nullptr;
  const char* const end = text + std::strlen(text);
  if (std::any_of(text, end, [](char byte) { return static_cast<unsigned char>(byte) >= 128; })) return nullptr;
  return new CFString(std::vector<UniChar>(text, end));
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* units, CFIndex count) {
  if (count < 0 || (units == nullptr && count > 0)) return nullptr;
  return new CFString(std::vector<UniChar>(units, units + count));
}

CFIndex CFStringGetLength(CFStringRef text) {
  platform::MustBeThere(text);
  return static_cast<CFIndex>(text->units.size());
}

void CFStringGetCharacters(CFStringRef text, CFRange range, UniChar* units) {
  platform::MustBeThere(text);
  std::copy_n(text->units.begin() + range.location, range.length, units);
}
