#include <cstring>

#include "kit/AKCharacterSets_p.h"

namespace akcharset {
namespace {

constexpr std::uint32_t kInvalid = 0xFFFFFFFF;

std::uint64_t EightBytes(const char* text) {
  std::uint64_t word;
  std::memcpy(&word, text, sizeof(word));
  return word;
}

bool AreAscii(std::uint64_t bytes) { return (bytes & 0x8080808080808080ULL) == 0; }

/// Reads one character of UTF-8 from a byte of 128 or more and steps over it; kInvalid for an overlong form, a
/// surrogate, a value above U+10FFFF, a stray or a missing continuation byte (Unicode 15, table 3-7).
std::uint32_t DecodeUtf8(const unsigned char** position, const unsigned char* end) {
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

/// Collects the bytes of one text in an 8-bit set.
class EightBitWriter {
 public:
  EightBitWriter(const EightBitSet& set, char* out) : set_(set), out_(out) {}

  /// `previous` is the ASCII byte that stands right before the character, 0 when none does.
  void Put(std::uint32_t character, unsigned char previous) {
    unsigned char byte = set_.Byte(character);
    if (byte == 0 && previous != 0 && (byte = set_.ComposedByte(previous, character)) != 0) --out_;
    *out_++ = byte != 0 ? static_cast<char>(byte) : kSubstitute;
  }
  void PutAscii(char byte) { *out_++ = byte; }
  void PutEightAscii(const char* bytes) {
    std::memcpy(out_, bytes, 8);
    out_ += 8;
  }
  char* Position() const { return out_; }

 private:
  const EightBitSet& set_;
  char* out_;
};

bool Utf8ToEightBit(const char* text, unsigned int length, const EightBitSet& to, AKString* result) {
  AKString converted;
  converted.Resize(length);  // every character has at least as many bytes in UTF-8
  char* const start = converted.MutableData();
  EightBitWriter writer(to, start);
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  const unsigned char* const begin = p;
  const unsigned char* const end = p + length;
  while (p != end) {
    if (end - p >= 8 && AreAscii(EightBytes(reinterpret_cast<const char*>(p)))) {
      writer.PutEightAscii(reinterpret_cast<const char*>(p));
      p += 8;
    } else if (*p < 0x80) {
      writer.PutAscii(static_cast<char>(*p++));
    } else {
      const unsigned char previous = p != begin && p[-1] < 0x80 ? p[-1] : 0;
      const std::uint32_t character = DecodeUtf8(&p, end);
      if (character == kInvalid) return false;
      writer.Put(character, previous);
    }
  }
  converted.Resize(static_cast<unsigned int>(writer.Position() - start));
  converted.Swap(result);
  return true;
}

bool IsTooLong(std::uint64_t length) { return length > AKSharedBytes::kMaxLength; }

bool EightBitToUtf8(const char* text, unsigned int length, const EightBitSet& from, AKString* result) {
  std::uint64_t needed = 0;
  for (unsigned int i = 0; i < length; ++i) needed += from.Utf8Of(static_cast<unsigned char>(text[i])).length;
  if (IsTooLong(needed)) return false;
  AKString converted;
  converted.Resize(static_cast<unsigned int>(needed));
  char* out = converted.MutableData();
  const char* const out_end = out + needed;
  for (const char *p = text, *end = text + length; p != end;) {
    if (end - p >= 8 && AreAscii(EightBytes(p))) {
      std::memcpy(out, p, 8);
      p += 8;
      out += 8;
      continue;
    }
    const EightBitSet::Utf8& utf8 = from.Utf8Of(static_cast<unsigned char>(*p++));
    // Three bytes at once are faster than the right number; the last characters must not pass the end.
    std::memcpy(out, utf8.bytes, out_end - out >= 3 ? 3 : utf8.length);
    out += utf8.length;
  }
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
  char* const start = converted.MutableData();
  EightBitWriter writer(to, start);
  for (const unsigned short *p = units, *end = units + count; p != end;) {
    if (*p < 0x80) {
      writer.PutAscii(static_cast<char>(*p++));
      continue;
    }
    const auto previous = static_cast<unsigned char>(p != units && p[-1] < 0x80 ? p[-1] : 0);
    writer.Put(DecodeUtf16(&p, end), previous);
  }
  converted.Resize(static_cast<unsigned int>(writer.Position() - start));
  return converted;
}

AKString Utf16ToUtf8(const unsigned short* units, unsigned int count) {
  AKString converted;
  converted.SetCapacity(count);
  for (const unsigned short *p = units, *end = units + count; p != end;) {
    const std::uint32_t character = DecodeUtf16(&p, end);
    char bytes[4] = {kSubstitute};
    const bool lone_surrogate = character >= 0xD800 && character <= 0xDFFF;
    const char* const stop = lone_surrogate ? bytes + 1 : EncodeUtf8(character, bytes);
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

bool ConvertBytes(const char* text, unsigned int length, AKStringEncoding from, AKStringEncoding to, AKString* result) {
  const EightBitSet* const source = EightBitSet::For(from);
  const EightBitSet* const target = EightBitSet::For(to);
  if (source == nullptr) return Utf8ToEightBit(text, length, *target, result);
  if (target == nullptr) return EightBitToUtf8(text, length, *source, result);
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
