// The kit's conversions against glibc's iconv, byte by byte and character by character.
#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "kit/AKStringEncoding.h"
#include "kit/AKUniString.h"

namespace {

std::string Std(const AKString& text) { return {text.CStr(), text.Length()}; }

/// What iconv makes of a text, or nothing when it refuses.
std::optional<std::string> Iconv(const std::string& text, const char* from, const char* to) {
  const iconv_t converter = iconv_open(to, from);
  std::string result(text.size() * 4 + 4, '\0');
  std::string source = text;
  char* in = source.data();
  char* out = result.data();
  std::size_t in_left = source.size();
  std::size_t out_left = result.size();
  const bool done = iconv(converter, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
  iconv_close(converter);
  if (!done) return std::nullopt;
  result.resize(result.size() - out_left);
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
  for (const Set& set : kSets) {
    unsigned int converted = 0;
    for (unsigned int character = 0; character < 0x110000; ++character) {
      if (character >= 0xD800 && character < 0xE000) continue;
      char bytes[5] = {};
      unsigned short units[2] = {static_cast<unsigned short>(character)};
      if (character >= 0x10000) {
        units[0] = static_cast<unsigned short>(0xD7C0 + (character >> 10));
        units[1] = static_cast<unsigned short>(0xDC00 + (character & 0x3FF));
      }
      AKString text(character < 0x80 ? std::string(1, static_cast<char>(character)) : std::string());
      if (character >= 0x800) {
        const unsigned int lead = character < 0x10000 ? 0xE0 | character >> 12 : 0xF0 | character >> 18;
        text.Append(static_cast<char>(lead));
        if (character >= 0x10000) text.Append(static_cast<char>(0x80 | (character >> 12 & 0x3F)));
        text.Append(static_cast<char>(0x80 | (character >> 6 & 0x3F)));
      } else if (character >= 0x80) {
        text.Append(static_cast<char>(0xC0 | character >> 6));
      }
      if (character >= 0x80) text.Append(static_cast<char>(0x80 | (character & 0x3F)));
      const AKString byte = AKStringCopyWithEncoding(text, kAKStringEncodingUTF8, set.code);
      ASSERT_EQ(byte.Length(), 1U) << character;
      if (AKStringCopyWithEncoding(byte, set.code, kAKStringEncodingUTF8) == text) {
        ++converted;
      } else {
        ASSERT_EQ(byte, "?") << character;
      }
      if (set.code != kAKStringEncodingMacRoman || character == 0) continue;
      AKAsciiStringFromUniString(bytes, sizeof(bytes), units, character < 0x10000 ? 1 : 2);
      ASSERT_EQ(byte, bytes) << character;
    }
    EXPECT_EQ(converted, 256U);
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
    if (i % 2 == 0) text = whole + text.substr(0, random() % 5);
    const std::string result = Std(AKStringCopyWithEncoding(text, kAKStringEncodingUTF8, kAKStringEncodingMacRoman));
    // glibc's reader passes surrogates and old long forms through some of its converters; UTF-16 stops them.
    const std::optional<std::string> expected = Iconv(text, "UTF-8", "UTF-16LE");
    if (expected.has_value()) ++valid;
    ASSERT_EQ(!result.empty(), expected.has_value() && !text.empty()) << testing::PrintToString(text);
  }
  EXPECT_GT(valid, 5000U);
}

TEST(AKStringEncoding, DecomposedLetters_AreComposedWhereTheTargetHasThem) {
  struct Case {
    const char *utf8, *roman, *latin;
  };
  for (const Case& c : {Case{"e\xCC\x81", "\x8E", "\xE9"},
                        {"xA\xCC\x8Ay", "x\x81y", "x\xC5y"},
                        {"S\xCC\x8C", "S?", "\x8A"},
                        {"Y\xCC\x81", "Y?", "\xDD"},
                        {"=\xCC\xB8", "\xAD", "=?"},
                        {"e\xCC\x81\xCC\x81", "\x8E?", "\xE9?"},
                        {"\xCC\x81", "?", "?"},
                        {"\xC3\xA9\xCC\x81", "\x8E?", "\xE9?"},
                        {"12345678e\xCC\x81", "12345678\x8E", "12345678\xE9"},
                        {"q\xCC\x81", "q?", "q?"},
                        {"\xF0\x9F\x98\x80\xF0\x9F\x98\x80", "??", "??"}}) {
    EXPECT_EQ(AKStringCopyWithEncoding(c.utf8, kAKStringEncodingUTF8, kAKStringEncodingMacRoman), c.roman) << c.utf8;
    EXPECT_EQ(AKStringCopyWithEncoding(c.utf8, kAKStringEncodingUTF8, kAKStringEncodingWindowsLatin1), c.latin);
  }
  EXPECT_EQ(AKAsciiStringFromUniString(AKUniChars{'n', 0x303, 0xD800, 'a', 0xDE00}), "\x96?a?");
  EXPECT_EQ(AKStringCopyWithEncoding("\x8E\xB7", kAKStringEncodingMacRoman, kAKStringEncodingWindowsLatin1), "\xE9?");
  EXPECT_EQ(AKStringCopyWithEncoding("\xE9\xD0", kAKStringEncodingWindowsLatin1, kAKStringEncodingMacRoman), "\x8E?");
}

TEST(AKStringEncoding, AsciiAndUnknownSets) {
  const AKString ascii("plain text of more than thirty-two characters\n");
  for (const AKStringEncoding from : {1U, 2U, 3U}) {
    for (const AKStringEncoding to : {1U, 2U, 3U}) {
      const AKString copy = AKStringCopyWithEncoding(ascii, from, to);
      EXPECT_EQ(copy.CStr(), ascii.CStr());  // the buffer is shared: nothing was allocated
    }
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
  const std::unique_ptr<unsigned short, decltype(&std::free)> units(AKNewUniStringFromAsciiString("a\0\xDB", 3),
                                                                    std::free);
  EXPECT_EQ(units.get()[2] + units.get()[1] + units.get()[3], 0x20AC);
  const std::unique_ptr<char, decltype(&std::free)> bytes(AKNewAsciiStringFromUniString(units.get(), 3), std::free);
  EXPECT_EQ(std::string(bytes.get(), 4), std::string("a\0\xDB\0", 4));
  EXPECT_EQ(AKNewUniStringFromAsciiString(nullptr, 3), nullptr);
  EXPECT_EQ(AKNewAsciiStringFromUniString(nullptr, 3), nullptr);
}

}  // namespace
