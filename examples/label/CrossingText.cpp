#include "CrossingText.h"

#include "kit/text/AKUniString.h"

namespace {

constexpr unsigned int kReplacement = 0xFFFD;

void AppendCharacter(AKUniChars* units, unsigned int character) {
  if (character < 0x10000) {
    units->Append(static_cast<unsigned short>(character));
    return;
  }
  units->Append(static_cast<unsigned short>(0xD800 + ((character - 0x10000) >> 10)));
  units->Append(static_cast<unsigned short>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

// The character at `*at`, which moves behind it.
unsigned int NextCharacter(const AKString& text, unsigned int* at) {
  const auto byteAt = [&text](unsigned int index) { return static_cast<unsigned int>(text[index] & 0xFF); };
  const unsigned int first = byteAt((*at)++);
  if (first < 0x80) return first;
  const unsigned int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
  unsigned int character = first & (0x3F >> more);
  for (unsigned int i = 0; i < more; ++i) {
    // A NUL stands behind the last byte, so that this ends there too.
    if ((byteAt(*at + i) & 0xC0) != 0x80) return kReplacement;
    character = character << 6 | (byteAt(*at + i) & 0x3F);
  }
  // Neither a form that is longer than it need be, nor half a pair, nor more than there is.
  constexpr unsigned int kLeast[] = {0x110000, 0x80, 0x800, 0x10000};
  if (character < kLeast[more] || character > 0x10FFFF || (character & 0xFFFFF800) == 0xD800) return kReplacement;
  *at += more;
  return character;
}

}  // namespace

AKUniChars CodeUnitsOf(const AKString& text) {
  AKString utf8;
  if (!text.StartsWith("\xEF\xBB\xBF", &utf8)) return AKUniStringFromAsciiString(text);
  AKUniChars units;
  for (unsigned int at = 0; at < utf8.Length();) AppendCharacter(&units, NextCharacter(utf8, &at));
  return units;
}
