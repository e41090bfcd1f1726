#include <optional>

#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/CFURLValue.h"
#include "platform/foundation/NotNull.h"

namespace {

using Units = std::vector<UniChar>;

bool IsHighSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xDC00; }

void AppendUtf8(char32_t character, std::string* bytes) {
  const auto trail = [character](int shift) { return static_cast<char>(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) {
    *bytes += static_cast<char>(character);
  } else if (character < 0x800) {
    *bytes += {static_cast<char>(0xC0 | character >> 6), trail(0)};
  } else if (character < 0x10000) {
    *bytes += {static_cast<char>(0xE0 | character >> 12), trail(6), trail(0)};
  } else {
    *bytes += {static_cast<char>(0xF0 | character >> 18), trail(12), trail(6), trail(0)};
  }
}

std::optional<std::string> SystemPath(const Units& units) {
  std::string bytes;
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t character = units[i];
    if (character == 0 || IsLowSurrogate(units[i])) return std::nullopt;
    if (IsHighSurrogate(units[i])) {
      if (i + 1 == units.size() || !IsLowSurrogate(units[i + 1])) return std::nullopt;
      character = 0x10000 + ((character & 0x3FF) << 10) + (units[++i] & 0x3FF);
    }
    AppendUtf8(character, &bytes);
  }
  return bytes;
}

Units WithoutLastSeparators(Units units) {
  while (units.size() > 1 && units.back() == '/') units.pop_back();
  return units;
}

}  // namespace

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean isDirectory) {
  platform::MustBeThere(path);
  if (path == nullptr || path->units.empty() || style != kCFURLPOSIXPathStyle) return nullptr;
  const bool endsAsDirectory = path->units.back() == '/';
  const Units units = WithoutLastSeparators(path->units);
  std::optional<std::string> systemPath = SystemPath(units);
  if (!systemPath.has_value()) return nullptr;
  if (isDirectory != 0 || endsAsDirectory) {
    if (systemPath->back() != '/') *systemPath += '/';
  }
  const CFString* text = new CFString(units);
  const CFURL* url = new CFURL(text, *std::move(systemPath), isDirectory != 0 || endsAsDirectory);
  CFRelease(text);
  return url;
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style) {
  platform::MustBeThere(url);
  if (url == nullptr || style != kCFURLPOSIXPathStyle) return nullptr;
  return static_cast<CFStringRef>(CFRetain(url->path.Get()));
}

Boolean CFURLHasDirectoryPath(CFURLRef url) {
  platform::MustBeThere(url);
  return url != nullptr && url->isDirectory;
}
