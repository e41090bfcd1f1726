// The 8-bit character sets of the kit and the conversions between them, UTF-8 and UTF-16.
//
// Conversions follow the rules of AKStringEncoding.h. They know nothing of handles and platform objects: bytes and code
// units in, strings and arrays out.
#pragma once

#include <array>
#include <cstdint>

#include "kit/containers/ATNumberArray.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringEncoding.h"

namespace akcharset {

/// What stands for a character that the target set lacks.
inline constexpr char kSubstitute = '?';

/// One 8-bit set: ASCII in its lower half, 128 characters of the basic plane in its upper half.
class EightBitSet {
 public:
  /// The set of a code, or null when the code names no 8-bit set.
  static const EightBitSet* For(AKStringEncoding encoding);

  explicit constexpr EightBitSet(const std::array<std::uint16_t, 128>& upperHalf);

  std::uint16_t Unicode(unsigned char byte) const { return unicode_[byte]; }
  /// The byte of a character above U+007F, 0 when the set lacks it.
  unsigned char Byte(std::uint32_t character) const {
    return character < 0x10000 ? pages_[pageOf_[character >> 8]][character & 0xFF] : 0;
  }
  /// The byte of the letter that a base and a following combining mark make, 0 when the set lacks it.
  unsigned char ComposedByte(unsigned char base, std::uint32_t mark) const;

  struct Utf8 {
    char bytes[3];
    std::uint8_t length;
  };
  const Utf8& Utf8Of(unsigned char byte) const { return utf8_[byte]; }

 private:
  static constexpr unsigned int kPages = 12;  // the first is the page of what the set lacks

  std::array<std::uint16_t, 256> unicode_{};
  std::array<Utf8, 256> utf8_{};
  std::array<std::uint8_t, 256> pageOf_{};
  std::array<std::array<unsigned char, 256>, kPages> pages_{};
};

/// The number of leading bytes below 128.
unsigned int AsciiPrefix(const char* text, unsigned int length);

/// Converts between two different known sets. Returns false, and leaves `result` alone, for text that is not valid and
/// for a result of more than `limit` bytes, which must not be above the longest text.
bool ConvertBytes(const char* text, unsigned int length, AKStringEncoding from, AKStringEncoding to, AKString* result,
                  unsigned int limit = AKSharedBytes::kMaxLength);

/// The UTF-16 of bytes in a known set. Returns false, and leaves `result` alone, for text that is not valid.
bool ToUtf16(const char* text, unsigned int length, AKStringEncoding from, AKUniChars* result);

/// Bytes of UTF-16 in a known set; lone surrogates are characters that every set lacks.
AKString FromUtf16(const unsigned short* units, unsigned int count, AKStringEncoding to);

}  // namespace akcharset
