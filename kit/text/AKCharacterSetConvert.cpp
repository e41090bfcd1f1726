#include <bit>
#include <cstddef>
#include <cstring>

#include "kit/text/AKCharacterSets_p.h"

namespace akcharset {
namespace {

constexpr std::uint32_t kInvalid = 0xFFFFFFFF;

std::uint64_t EightBytes(const char* text) {
  std::uint64_t word;
  std::memcpy(&word, text, sizeof(word));
  return word;
}

constexpr std::uint64_t kTopBits = 0x8080808080808080ULL;

bool AreAscii(std::uint64_t bytes) { return (bytes & kTopBits) == 0; }

/// One bit for each of sixteen bytes, the first in the lowest: set where the byte is 128 or more.
unsigned int NonAsciiMask(const char* text) {
  // The product moves the eight top bits, each from a place of its own, side by side into the highest byte.
  constexpr std::uint64_t kGather = 0x0102040810204080ULL;
  const std::uint64_t first = (EightBytes(text) & kTopBits) >> 7;
  const std::uint64_t second = (EightBytes(text + 8) & kTopBits) >> 7;
  return static_cast<unsigned int>(first * kGather >> 56 | second * kGather >> 56 << 8);
}

/// Reads one character of UTF-8 from a byte of 128 or more and steps over it; kInvalid for an overlong form, a
/// surrogate, a value above U+10FFFF, a stray or a missing continuation byte (Unicode 15, table 3-7).
std::uint32_t DecodeAnyUtf8(const unsigned char** position, const unsigned char* end) {
  const unsigned char* p = *position;
  const unsigned char lead = *p++;
  if (lead < 0xC2 || lead > 0xF4) return kInvalid;
  const unsigned int tails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  if (static_cast<std::size_t>(end - p) < tails) return kInvalid;
  std::uint32_t character = lead & (0x3FU >> tails);
  const unsigned char* const stop = p + tails;
  while (p != stop) {
    if ((*p & 0xC0) != 0x80) return kInvalid;
    character = character << 6 | (*p++ & 0x3F);
  }
  constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kSmallest[tails] || surrogate || character > 0x10FFFF) return kInvalid;
  *position = p;
  return character;
}

/// The same, quick for the two bytes of most letters that are not ASCII.
inline std::uint32_t DecodeUtf8(const unsigned char** position, const unsigned char* end) {
  const unsigned char* const p = *position;
  if (p[0] < 0xC2 || p[0] >= 0xE0 || end - p < 2 || (p[1] & 0xC0) != 0x80) return DecodeAnyUtf8(position, end);
  *position = p + 2;
  return (p[0] & 0x1FU) << 6 | (p[1] & 0x3FU);
}

char* EncodeUtf8(std::uint32_t character, char* out) {
  const auto tail = [](std::uint32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
  if (character < 0x80) {
    *out++ = static_cast<char>(character);
    return out;
  }
  if (character < 0x800) {
    *out++ = static_cast<char>(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      *out++ = static_cast<char>(0xE0 | character >> 12);
    } else {
      *out++ = static_cast<char>(0xF0 | character >> 18);
      *out++ = tail(character >> 12);
    }
    *out++ = tail(character >> 6);
  }
  *out++ = tail(character);
  return out;
}

constexpr unsigned int kBlock = 16;

/// Collects the bytes of one text in an 8-bit set.
class EightBitWriter {
 public:
  EightBitWriter(const EightBitSet& set, char* out) : set_(set), out_(out) {}

  /// False, and nothing is written, when the set lacks the character.
  bool Put(std::uint32_t character) {
    const unsigned char byte = set_.Byte(character);
    *out_ = static_cast<char>(byte);
    out_ += byte != 0 ? 1 : 0;
    return byte != 0;
  }
  /// For a character that the set lacks. `previous` is what stands before it in the text when that is ASCII, else 0.
  void PutComposedOrSubstitute(std::uint32_t character, unsigned int previous) {
    const unsigned char byte = previous == 0 ? 0 : set_.ComposedByte(static_cast<unsigned char>(previous), character);
    if (byte != 0) --out_;
    *out_++ = byte != 0 ? static_cast<char>(byte) : kSubstitute;
  }
  void PutAscii(char byte) { *out_++ = byte; }
  /// Sixteen bytes are written, of which the first `count` stay.
  void PutAscii(const char* bytes, unsigned int count) {
    std::memcpy(out_, bytes, kBlock);
    out_ += count;
  }
  char* Position() const { return out_; }

 private:
  const EightBitSet& set_;
  char* out_;
};

template <typename Unit>
unsigned int AsciiBefore(const Unit* begin, const Unit* position) {
  return position != begin && position[-1] < 0x80 ? position[-1] : 0;
}

bool Utf8ToEightBit(const char* text, unsigned int length, const EightBitSet& to, AKString* result) {
  AKString converted;
  converted.Resize(length);  // every character has at least as many bytes in UTF-8
  char* const out = converted.MutableData();
  EightBitWriter writer(to, out);
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  const unsigned char* const begin = p;
  const unsigned char* const end = p + length;
  while (p != end) {
    // Texts with accents have runs of a few ASCII letters: copying a whole block and stepping over what belongs to the
    // run is faster than a loop whose end the processor cannot foresee.
    if (end - p >= static_cast<std::ptrdiff_t>(kBlock)) {
      const auto* const block = reinterpret_cast<const char*>(p);
      const unsigned int mask = NonAsciiMask(block);
      const auto run = static_cast<unsigned int>(std::countr_zero(mask | 1U << kBlock));
      writer.PutAscii(block, run);
      p += run;
      if (mask == 0) continue;
    } else if (*p < 0x80) {
      writer.PutAscii(static_cast<char>(*p++));
      continue;
    }
    const unsigned char* const start = p;
    const std::uint32_t character = DecodeUtf8(&p, end);
    if (character == kInvalid) return false;
    if (!writer.Put(character)) writer.PutComposedOrSubstitute(character, AsciiBefore(begin, start));
  }
  converted.Resize(static_cast<unsigned int>(writer.Position() - out));
  converted.Swap(result);
  return true;
}

std::uint64_t CountNonAscii(const char* text, unsigned int length) {
  std::uint64_t count = 0;
  for (unsigned int i = 0; i < length; ++i) count += static_cast<unsigned char>(text[i]) >> 7;
  return count;
}

char* PutUtf8(const EightBitSet& from, char byte, char* out) {
  // All four bytes of the entry are written: what is not part of the character is overwritten by the next one.
  std::uint32_t entry;
  static_assert(sizeof(EightBitSet::Utf8) == sizeof(entry) && offsetof(EightBitSet::Utf8, length) == 3);
  std::memcpy(&entry, &from.Utf8Of(static_cast<unsigned char>(byte)), sizeof(entry));
  std::memcpy(out, &entry, sizeof(entry));
  return out + (entry >> 24);
}

std::uint64_t Utf8Length(const char* text, unsigned int length, const EightBitSet& from) {
  std::uint64_t sum = 0;
  for (unsigned int i = 0; i < length; ++i) sum += from.Utf8Of(static_cast<unsigned char>(text[i])).length;
  return sum;
}

// With no byte to spare.
bool LongEightBitToUtf8(const char* text, unsigned int length, const EightBitSet& from, unsigned int limit,
                        AKString* result) {
  const std::uint64_t needed = Utf8Length(text, length, from);
  if (needed > limit) return false;
  AKString converted;
  converted.SetCapacity(static_cast<unsigned int>(needed));
  for (unsigned int i = 0; i < length; ++i) {
    const EightBitSet::Utf8& utf8 = from.Utf8Of(static_cast<unsigned char>(text[i]));
    converted.Append(utf8.bytes, utf8.length);
  }
  converted.Swap(result);
  return true;
}

bool EightBitToUtf8(const char* text, unsigned int length, const EightBitSet& from, unsigned int limit,
                    AKString* result) {
  constexpr unsigned int kSpare = sizeof(EightBitSet::Utf8);
  const std::uint64_t most = length + 2 * CountNonAscii(text, length) + kSpare;
  if (most > limit) return LongEightBitToUtf8(text, length, from, limit, result);
  AKString converted;
  converted.Resize(static_cast<unsigned int>(most));
  char* const start = converted.MutableData();
  char* out = start;
  const char* const end = text + length;
  while (end - text >= static_cast<std::ptrdiff_t>(kBlock)) {
    if (NonAsciiMask(text) == 0) {
      std::memcpy(out, text, kBlock);
      out += kBlock;
    } else {
      for (unsigned int i = 0; i < kBlock; ++i) out = PutUtf8(from, text[i], out);
    }
    text += kBlock;
  }
  while (text != end) out = PutUtf8(from, *text++, out);
  converted.Resize(static_cast<unsigned int>(out - start));
  converted.Swap(result);
  return true;
}

void EightBitToEightBit(const char* text, unsigned int length, const EightBitSet& from, const EightBitSet& to,
                        AKString* result) {
  AKString converted(text, length);
  char* const bytes = converted.MutableData();
  for (unsigned int i = 0; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte < 0x80) continue;
    const unsigned char other = to.Byte(from.Unicode(byte));
    bytes[i] = other != 0 ? static_cast<char>(other) : kSubstitute;
  }
  converted.Swap(result);
}

bool IsHighSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xDC00; }

/// Reads one character and steps over it; a lone surrogate is returned as it is.
std::uint32_t DecodeUtf16(const unsigned short** position, const unsigned short* end) {
  const unsigned short unit = *(*position)++;
  if (!IsHighSurrogate(unit) || *position == end || !IsLowSurrogate(**position)) return unit;
  return 0x10000 + ((unit & 0x3FFU) << 10) + (*(*position)++ & 0x3FFU);
}

AKString Utf16ToEightBit(const unsigned short* units, unsigned int count, const EightBitSet& to) {
  AKString converted;
  converted.Resize(count);
  char* const out = converted.MutableData();
  EightBitWriter writer(to, out);
  for (const unsigned short *p = units, *end = units + count; p != end;) {
    if (*p < 0x80) {
      writer.PutAscii(static_cast<char>(*p++));
      continue;
    }
    const unsigned short* const start = p;
    const std::uint32_t character = DecodeUtf16(&p, end);
    if (!writer.Put(character)) writer.PutComposedOrSubstitute(character, AsciiBefore(units, start));
  }
  converted.Resize(static_cast<unsigned int>(writer.Position() - out));
  return converted;
}

AKString Utf16ToUtf8(const unsigned short* units, unsigned int count) {
  AKString converted;
  converted.SetCapacity(count);
  for (const unsigned short *p = units, *end = units + count; p != end;) {
    const std::uint32_t character = DecodeUtf16(&p, end);
    char bytes[4] = {kSubstitute};
    const bool loneSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const char* const stop = loneSurrogate ? bytes + 1 : EncodeUtf8(character, bytes);
    converted.Append(bytes, static_cast<unsigned int>(stop - bytes));
  }
  return converted;
}

bool Utf8ToUtf16(const char* text, unsigned int length, AKUniChars* result) {
  AKUniChars units;
  units.Reserve(length);
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  for (const unsigned char* const end = p + length; p != end;) {
    if (*p < 0x80) {
      units.Append(*p++);
      continue;
    }
    const std::uint32_t character = DecodeUtf8(&p, end);
    if (character == kInvalid) return false;
    if (character < 0x10000) {
      units.Append(static_cast<unsigned short>(character));
    } else {
      units.Append(static_cast<unsigned short>(0xD800 + ((character - 0x10000) >> 10)));
      units.Append(static_cast<unsigned short>(0xDC00 + (character & 0x3FF)));
    }
  }
  units.Swap(result);
  return true;
}

}  // namespace

unsigned int AsciiPrefix(const char* text, unsigned int length) {
  unsigned int i = 0;
  while (length - i >= 32 && AreAscii(EightBytes(text + i) | EightBytes(text + i + 8) | EightBytes(text + i + 16) |
                                      EightBytes(text + i + 24))) {
    i += 32;
  }
  while (i < length && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

bool ConvertBytes(const char* text, unsigned int length, AKStringEncoding from, AKStringEncoding to, AKString* result,
                  unsigned int limit) {
  const EightBitSet* const source = EightBitSet::For(from);
  const EightBitSet* const target = EightBitSet::For(to);
  if (source == nullptr) return Utf8ToEightBit(text, length, *target, result);
  if (target == nullptr) return EightBitToUtf8(text, length, *source, limit, result);
  EightBitToEightBit(text, length, *source, *target, result);
  return true;
}

bool ToUtf16(const char* text, unsigned int length, AKStringEncoding from, AKUniChars* result) {
  const EightBitSet* const source = EightBitSet::For(from);
  if (source == nullptr) return Utf8ToUtf16(text, length, result);
  AKUniChars units;
  units.Resize(length);
  for (unsigned int i = 0; i < length; ++i) units[i] = source->Unicode(static_cast<unsigned char>(text[i]));
  units.Swap(result);
  return true;
}

AKString FromUtf16(const unsigned short* units, unsigned int count, AKStringEncoding to) {
  const EightBitSet* const target = EightBitSet::For(to);
  return target == nullptr ? Utf16ToUtf8(units, count) : Utf16ToEightBit(units, count, *target);
}

}  // namespace akcharset
