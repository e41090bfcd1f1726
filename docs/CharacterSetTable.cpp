// Prints docs/character-sets.md from the kit's own conversions. A test compares its output with the file:
//   build/debug/bin/character_set_table > docs/character-sets.md
#include <iconv.h>

#include <cstdio>
#include <string>

#include "kit/text/AKStringEncoding.h"

namespace {

struct Set {
  AKStringEncoding code;
  const char* name;
  const char* glibcName;
};

constexpr Set kSets[] = {{kAKStringEncodingMacRoman, "Mac OS Roman", "MACINTOSH"},
                         {kAKStringEncodingWindowsLatin1, "Windows Latin 1", "CP1252"}};

/// The names of the characters in which the two libraries differ.
const char* NameOf(unsigned int character) {
  switch (character) {
    case 0x0394:
      return "GREEK CAPITAL LETTER DELTA";
    case 0x2206:
      return "INCREMENT";
    case 0xF8FF:
      return "private use, the maker's sign";
    default:
      return character < 0xA0 ? "control character of Latin 1" : "private use";
  }
}

/// The character of a byte, by way of UTF-8.
unsigned int KitCharacter(const Set& set, unsigned int byte) {
  AKString text(std::string(1, static_cast<char>(byte)));
  AKStringConvertWithEncoding(&text, set.code, kAKStringEncodingUTF8);
  const auto at = [&text](unsigned int i) { return static_cast<unsigned int>(static_cast<unsigned char>(text[i])); };
  if (text.Length() == 1) return at(0);
  if (text.Length() == 2) return (at(0) & 0x1F) << 6 | (at(1) & 0x3F);
  return (at(0) & 0x0F) << 12 | (at(1) & 0x3F) << 6 | (at(2) & 0x3F);
}

/// The character that glibc has for a byte, 0 for none.
unsigned int GlibcCharacter(const Set& set, unsigned int byte) {
  const iconv_t converter = iconv_open("UCS-4LE", set.glibcName);
  char source = static_cast<char>(byte);
  unsigned int character = 0;
  char* in = &source;
  char* out = reinterpret_cast<char*>(&character);
  std::size_t inLeft = 1;
  std::size_t outLeft = sizeof(character);
  if (iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) character = 0;
  iconv_close(converter);
  return character;
}

void PrintTable() {
  std::printf("| Byte | %s | | %s | |\n|---|---|---|---|---|\n", kSets[0].name, kSets[1].name);
  for (unsigned int byte = 0x80; byte < 0x100; ++byte) {
    std::printf("| %02X |", byte);
    for (const Set& set : kSets) {
      const unsigned int character = KitCharacter(set, byte);
      AKString shown(std::string(1, static_cast<char>(byte)));
      AKStringConvertWithEncoding(&shown, set.code, kAKStringEncodingUTF8);
      const bool visible = character > 0xA0 && character != 0xAD && character != 0xF8FF;
      std::printf(" U+%04X | %s |", character, visible ? shown.CStr() : "");
    }
    std::printf("\n");
  }
}

void PrintDifferences(const Set& set) {
  std::printf("\n### %s against %s\n\n", set.name, set.glibcName);
  for (unsigned int byte = 0x80; byte < 0x100; ++byte) {
    const unsigned int kit = KitCharacter(set, byte);
    const unsigned int glibc = GlibcCharacter(set, byte);
    if (kit == glibc) continue;
    std::printf("- %02X is U+%04X (%s); glibc has ", byte, kit, NameOf(kit));
    if (glibc == 0) {
      std::printf("no character.\n");
    } else {
      std::printf("U+%04X (%s).\n", glibc, NameOf(glibc));
    }
  }
}

}  // namespace

int main() {
  std::printf(
      "# Character sets\n\n"
      "Made by docs/CharacterSetTable.cpp from the kit's conversions; do not edit.\n\n"
      "Text is Mac OS Roman in memory and UTF-8 on file. Bytes below 80 are ASCII in all sets.\n"
      "A character that the target lacks becomes one \"?\"; a letter and a combining accent become the target's "
      "composed\n"
      "letter where it has one; text that is not valid UTF-8 becomes the empty string.\n\n");
  PrintTable();
  std::printf("\n## Differences from glibc's tables\n");
  for (const Set& set : kSets) PrintDifferences(set);
  return 0;
}
