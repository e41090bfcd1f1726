// The kit's conversions against glibc's iconv, byte by byte and character by character.
#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "kit/text/AKCharacterSets_p.h"
#include "kit/text/AKStringEncoding.h"
#include "kit/text/AKUniString.h"

namespace {

std::string Std(const AKString& text) { return {text.CStr(), text.Length()}; }

/// What iconv makes of a text, or nothing when it refuses.
std::optional<std::string> Iconv(const std::string& text, const char* from, const char* to) {
  const iconv_t converter = iconv_open(to, from);
  std::string result(text.size() * 4 + 4, '\0');
  std::string source = text;
  char* in = source.data();
  char* out = result.data();
  std::size_t inLeft = source.size();
  std::size_t outLeft = result.size();
  const bool done = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
  iconv_close(converter);
  if (!done) return std::nullopt;
  result.resize(result.size() - outLeft);
  return result;
}

std::string Utf8(unsigned int character) {
  return *Iconv({reinterpret_cast<const char*>(&character), 4}, "UCS-4LE", "UTF-8");
}

struct Set {
  AKStringEncoding code;
  const char* name;
  // Bytes at which glibc has another character, or none, and the kit's character.
  std::vector<std::pair<unsigned char, unsigned int>> differences;
};

const Set kSets[] = {
    {kAKStringEncodingMacRoman, "MACINTOSH", {{0xC6, 0x2206}, {0xF0, 0xF8FF}}},
    {kAKStringEncodingWindowsLatin1, "CP1252", {{0x81, 0x81}, {0x8D, 0x8D}, {0x8F, 0x8F}, {0x90, 0x90}, {0x9D, 0x9D}}}};

TEST(AKStringEncoding, EveryByte_AgreesWithGlibcOrIsANamedDifference) {
  for (const Set& set : kSets) {
    for (unsigned int byte = 0; byte < 256; ++byte) {
      const std::string text(1, static_cast<char>(byte));
      const std::string utf8 = Std(AKStringCopyWithEncoding(text, set.code, kAKStringEncodingUTF8));
      std::optional<std::string> expected = Iconv(text, set.name, "UTF-8");
      for (const auto& [different, character] : set.differences) {
        if (different != byte) continue;
        EXPECT_NE(utf8, expected.value_or("")) << set.name << " " << byte;
        expected = Utf8(character);
      }
      EXPECT_EQ(utf8, expected.value_or("none")) << set.name << " " << byte;
      EXPECT_EQ(Std(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, set.code)), text) << set.name << " " << byte;
    }
  }
}

// Of all characters exactly the 256 of the set come out as themselves; every other one is a single "?".
TEST(AKStringEncoding, EveryCharacter_OfUnicode_ConvertsOrBecomesOneQuestionMark) {
  std::u32string characters;
  for (char32_t c = 0; c < 0x110000; ++c) characters += c == 0xD800 ? U'\n' : c > 0xD800 && c < 0xE000 ? U'x' : c;
  const std::string bytes(reinterpret_cast<const char*>(characters.data()), characters.size() * 4);
  const std::string utf8 = *Iconv(bytes, "UCS-4LE", "UTF-8");
  const std::string utf16 = *Iconv(bytes, "UCS-4LE", "UTF-16LE");
  const AKUniChars units(reinterpret_cast<const unsigned short*>(utf16.data()),
                         static_cast<unsigned int>(utf16.size() / 2));
  for (const Set& set : kSets) {
    std::string expected(characters.size(), '?');
    for (unsigned int i = 0; i < characters.size(); ++i) {
      if (characters[i] < 0x80) expected[i] = static_cast<char>(characters[i]);
    }
    for (unsigned int byte = 0x80; byte < 0x100; ++byte) {
      const std::string text(1, static_cast<char>(byte));
      char32_t c = 0;
      Iconv(Std(AKStringCopyWithEncoding(text, set.code, kAKStringEncodingUTF8)), "UTF-8", "UCS-4LE")
          ->copy(reinterpret_cast<char*>(&c), 4);
      expected[c] = text[0];
    }
    EXPECT_TRUE(Std(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, set.code)) == expected);
    if (set.code != kAKStringEncodingMacRoman) continue;
    EXPECT_TRUE(Std(AKAsciiStringFromUniString(units)) == expected);
  }
}

// The conversions work on blocks of bytes; accents stand at every place of a block, and blocks at every place of a
// text.
TEST(AKStringEncoding, MixedTexts_ConvertLikeTheirSingleBytes) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int i = 0; i < 20000; ++i) {
    const Set& set = kSets[i % 2];
    const unsigned int density = 1 + random() % 40;
    std::string text(random() % 100, 'a');
    std::string utf8;
    for (char& c : text) {
      if (random() % density == 0) c = static_cast<char>(random());
      utf8 += Std(AKStringCopyWithEncoding(std::string(1, c), set.code, kAKStringEncodingUTF8));
    }
    ASSERT_EQ(Std(AKStringCopyWithEncoding(text, set.code, kAKStringEncodingUTF8)), utf8);
    ASSERT_EQ(Std(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, set.code)), text);
  }
}

TEST(AKStringEncoding, Utf8_ThatGlibcRefuses_EmptiesTheString) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  constexpr unsigned char kPieces[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
                                       0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
  unsigned int valid = 0;
  for (int i = 0; i < 60000; ++i) {
    std::string text(random() % 12, '\0');
    for (char& c : text) c = static_cast<char>(kPieces[random() % sizeof(kPieces)]);
    std::string whole(random() % 3, 'a');
    for (unsigned int n = random() % 9; n > 0 && random() % 3 != 0; --n) whole += Utf8(random() % 0xD800);
    if (i % 2 == 0) text = whole.append(text.substr(0, random() % 5));
    const std::string result = Std(AKStringCopyWithEncoding(text, kAKStringEncodingUTF8, kAKStringEncodingMacRoman));
    // glibc's reader passes surrogates and old long forms through some of its converters; UTF-16 stops them.
    const std::optional<std::string> expected = Iconv(text, "UTF-8", "UTF-16LE");
    if (expected.has_value()) ++valid;
    ASSERT_EQ(!result.empty(), expected.has_value() && !text.empty()) << testing::PrintToString(text);
  }
  EXPECT_GT(valid, 5000U);
}

TEST(AKStringEncoding, DecomposedLetters_AreComposedWhereTheTargetHasThem) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"e\xCC\x81", "\x8E", "\xE9"},
      {"xA\xCC\x8Ay", "x\x81y", "x\xC5y"},
      {"S\xCC\x8C", "S?", "\x8A"},
      {"Y\xCC\x81", "Y?", "\xDD"},
      {"=\xCC\xB8", "\xAD", "=?"},
      {"e\xCC\x81\xCC\x81", "\x8E?", "\xE9?"},
      {"\xCC\x81", "?", "?"},
      {"q\xCC\x81", "q?", "q?"},
      {"0123456789abcdefe\xCC\x81", "0123456789abcdef\x8E", "0123456789abcdef\xE9"},
      {"\xC3\xA9\xCC\x81", "\x8E?", "\xE9?"}};
  for (const auto& [utf8, roman, latin] : cases) {
    EXPECT_EQ(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, kAKStringEncodingMacRoman), roman) << utf8;
    EXPECT_EQ(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, kAKStringEncodingWindowsLatin1), latin) << utf8;
  }
  EXPECT_EQ(AKAsciiStringFromUniString(AKUniChars{'n', 0x303, 0xD800, 'a', 0xDE00}), "\x96?a?");
  EXPECT_EQ(AKStringCopyWithEncoding("\x8E\xB7", kAKStringEncodingMacRoman, kAKStringEncodingWindowsLatin1), "\xE9?");
  EXPECT_EQ(AKStringCopyWithEncoding("\xE9\xD0", kAKStringEncodingWindowsLatin1, kAKStringEncodingMacRoman), "\x8E?");
}

TEST(AKStringEncoding, AsciiAndUnknownSets) {
  const AKString ascii("plain text of more than thirty-two characters\n");
  for (AKStringEncoding pair = 0; pair < 9; ++pair) {
    const AKString copy = AKStringCopyWithEncoding(ascii, pair / 3 + 1, pair % 3 + 1);
    EXPECT_EQ(copy.CStr(), ascii.CStr());  // the buffer is shared: nothing was allocated
  }
  EXPECT_EQ(AKStringCopyWithEncoding("\xFF", 0, 9), "\xFF");
  EXPECT_EQ(AKStringCopyWithEncoding("\xFF", 3, 3), "\xFF");
  EXPECT_EQ(AKStringCopyWithEncoding("a", 0, 1), "");
  EXPECT_EQ(AKStringCopyWithEncoding("a", 1, 9), "");
  AKStringConvertWithEncoding(nullptr, 1, 3);
}

TEST(AKUniString, CallersBuffers_AreCutAndTerminated) {
  unsigned short units[4] = {9, 9, 9, 9};
  EXPECT_EQ(AKUniStringFromAsciiString(units, 0, "ab", 2)[0], 9);
  AKUniStringFromAsciiString(units, 3, "a\xDBz", kAKNotFound);
  EXPECT_EQ(AKUniStringLength(units), 2U);
  EXPECT_EQ(units[1], 0x20AC);
  EXPECT_EQ(units[3], 9);
  char bytes[4] = {9, 9, 9, 9};
  EXPECT_EQ(AKAsciiStringFromUniString(bytes, 0, units, 2)[0], 9);
  EXPECT_STREQ(AKAsciiStringFromUniString(bytes, 2, units, kAKNotFound), "a");
  EXPECT_STREQ(AKAsciiStringFromUniString(bytes, 4, units, kAKNotFound), "a\xDB");
  EXPECT_EQ(AKUniStringLength(nullptr), 0U);
}

TEST(AKUniString, NewTexts_AreFreedByTheCaller) {
  unsigned short* const units = AKNewUniStringFromAsciiString("a\0\xDB", 3);
  EXPECT_TRUE(units[0] == 'a' && units[1] == 0 && units[2] == 0x20AC && units[3] == 0);
  char* const bytes = AKNewAsciiStringFromUniString(units, 3);
  EXPECT_EQ(std::string(bytes, 4), std::string("a\0\xDB\0", 4));
  std::free(units);
  std::free(bytes);
  EXPECT_TRUE(AKNewUniStringFromAsciiString(nullptr, 3) == nullptr &&
              AKNewAsciiStringFromUniString(nullptr, 3) == nullptr);
}

// The true size of a text counts against the limit, not a guess at it.
TEST(CharacterSets, ConvertBytes_UpToItsLimit_GivesAllOrNothing) {
  const AKString text("a\x8E\xDB\xF0\x8E");  // 1, 2, 3, 3 and 2 bytes of UTF-8
  const AKString utf8 = AKStringCopyWithEncoding(text, kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
  ASSERT_EQ(utf8.Length(), 11U);
  for (unsigned int limit = 0; limit < 24; ++limit) {
    AKString result;
    EXPECT_EQ(akcharset::ConvertBytes(text.CStr(), text.Length(), kAKStringEncodingMacRoman, kAKStringEncodingUTF8,
                                      &result, limit),
              limit >= 11);
    EXPECT_EQ(result, limit >= 11 ? utf8 : AKString()) << limit;
  }
}

}  // namespace
