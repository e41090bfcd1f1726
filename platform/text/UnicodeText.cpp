#include "platform/text/UnicodeText.h"

#include <glib.h>

#include <cstdint>

#include "platform/foundation/CFStringValue.h"

namespace platform {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kZeroWidthSpace = 0x200B;

bool IsHighSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xDC00; }

void AppendUtf8(std::uint32_t c, std::string* text) {
  const auto tail = [&](int shift) { text->push_back(static_cast<char>(0x80 | (c >> shift & 0x3F))); };
  if (c < 0x80) {
    text->push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    text->push_back(static_cast<char>(0xC0 | c >> 6));
    tail(0);
  } else if (c < 0x10000) {
    text->push_back(static_cast<char>(0xE0 | c >> 12));
    tail(6);
    tail(0);
  } else {
    text->push_back(static_cast<char>(0xF0 | c >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// Calls `take` with each character.
template <typename Take>
void ForEachCharacter(const UniChar* units, std::size_t count, Take take) {
  for (std::size_t i = 0; i < count; ++i) {
    std::uint32_t c = units[i];
    if (IsHighSurrogate(units[i]) && i + 1 < count && IsLowSurrogate(units[i + 1])) {
      c = 0x10000 + ((c & 0x3FF) << 10) + (units[++i] & 0x3FFU);
    } else if (IsHighSurrogate(units[i]) || IsLowSurrogate(units[i])) {
      c = kReplacement;
    }
    take(c);
  }
}

// U+FDD0 to U+FDEF and the last two of each plane: in no text by right, refused by the writers of pages.
bool IsNoncharacter(std::uint32_t c) { return (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE; }

std::uint32_t DisplayCharacter(std::uint32_t c) {
  const bool isControl = (c < 0x20 && c != '\t') || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
  return isControl || IsNoncharacter(c) ? kZeroWidthSpace : c;
}

}  // namespace

std::string Utf8Text(const UniChar* units, std::size_t count) {
  std::string text;
  ForEachCharacter(units, count, [&](std::uint32_t c) { AppendUtf8(c, &text); });
  return text;
}

std::string DisplayText(const UniChar* units, std::size_t count) {
  std::string text;
  text.reserve(count);
  ForEachCharacter(units, count, [&](std::uint32_t c) { AppendUtf8(DisplayCharacter(c), &text); });
  return text;
}

CFStringRef NewString(std::string_view utf8) {
  gchar* valid = g_utf8_make_valid(utf8.data(), static_cast<gssize>(utf8.size()));
  glong count = 0;
  gunichar2* units = g_utf8_to_utf16(valid, -1, nullptr, &count, nullptr);
  CFStringRef text = CFStringCreateWithCharacters(kCFAllocatorDefault, units, count);
  g_free(units);
  g_free(valid);
  return text;
}

}  // namespace platform
