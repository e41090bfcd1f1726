#include "kit/text/AKUniString.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "kit/text/AKCharacterSets_p.h"

namespace {

const akcharset::EightBitSet& MacRoman() { return *akcharset::EightBitSet::For(kAKStringEncodingMacRoman); }

unsigned int ByteCount(const char* text, unsigned int length) {
  if (text == nullptr) return 0;
  return length == kAKNotFound ? static_cast<unsigned int>(std::strlen(text)) : length;
}

unsigned int UnitCount(const unsigned short* text, unsigned int count) {
  if (text == nullptr) return 0;
  return count == kAKNotFound ? AKUniStringLength(text) : count;
}

void* Allocate(std::size_t size) {
  void* const memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void WriteUnits(unsigned short* dst, const char* text, unsigned int length) {
  for (unsigned int i = 0; i < length; ++i) dst[i] = MacRoman().Unicode(static_cast<unsigned char>(text[i]));
  dst[length] = 0;
}

}  // namespace

unsigned int AKUniStringLength(const unsigned short* text) {
  unsigned int length = 0;
  while (text != nullptr && text[length] != 0) ++length;
  return length;
}

unsigned short* AKNewUniStringFromAsciiString(const char* text, unsigned int length) {
  if (text == nullptr) return nullptr;
  const unsigned int count = ByteCount(text, length);
  auto* const units = static_cast<unsigned short*>(Allocate((std::size_t{count} + 1) * sizeof(unsigned short)));
  WriteUnits(units, text, count);
  return units;
}

unsigned short* AKUniStringFromAsciiString(unsigned short* dst, unsigned int dstCount, const char* text,
                                           unsigned int length) {
  if (dst != nullptr && dstCount != 0) WriteUnits(dst, text, std::min(ByteCount(text, length), dstCount - 1));
  return dst;
}

AKUniChars AKUniStringFromAsciiString(const AKString& text) {
  AKUniChars units;
  akcharset::ToUtf16(text.CStr(), text.Length(), kAKStringEncodingMacRoman, &units);
  return units;
}

char* AKNewAsciiStringFromUniString(const unsigned short* text, unsigned int count) {
  if (text == nullptr) return nullptr;
  const AKString bytes = akcharset::FromUtf16(text, UnitCount(text, count), kAKStringEncodingMacRoman);
  auto* const copy = static_cast<char*>(Allocate(std::size_t{bytes.Length()} + 1));
  std::memcpy(copy, bytes.CStr(), std::size_t{bytes.Length()} + 1);
  return copy;
}

char* AKAsciiStringFromUniString(char* dst, unsigned int dstSize, const unsigned short* text, unsigned int count) {
  if (dst == nullptr || dstSize == 0) return dst;
  const AKString bytes = akcharset::FromUtf16(text, UnitCount(text, count), kAKStringEncodingMacRoman);
  const unsigned int length = std::min(bytes.Length(), dstSize - 1);
  std::memcpy(dst, bytes.CStr(), length);
  dst[length] = '\0';
  return dst;
}

AKString AKAsciiStringFromUniString(const AKUniChars& text) {
  return akcharset::FromUtf16(text.Data(), text.Count(), kAKStringEncodingMacRoman);
}
