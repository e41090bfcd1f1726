// Numeric suffixes, hexadecimal dumps and hash codes of strings.
#include <algorithm>
#include <bit>

#include "kit/text/AKTextConversions.h"

namespace {

template <typename Hash>
Hash HashBytes(const AKString& text) {
  Hash hash = 0;
  for (const char byte : text) hash = std::rotl(hash, 7) + static_cast<unsigned char>(byte);
  return hash;
}

}  // namespace

bool AKStringSuffixNumberFind(const AKString& text, unsigned int* value, unsigned int* digitCount) {
  constexpr unsigned int kMostDigits = 8;
  unsigned int number = 0;
  unsigned int power = 1;
  unsigned int count = 0;
  const unsigned int length = text.Length();
  for (; count < std::min(length, kMostDigits); ++count, power *= 10) {
    const char c = text[length - 1 - count];
    if (c < '0' || c > '9') break;
    number += static_cast<unsigned int>(c - '0') * power;
  }
  if (value != nullptr) *value = number;
  if (digitCount != nullptr) *digitCount = count;
  return count != 0;
}

bool AKStringSuffixNumberReplace(AKString* text, unsigned int number, bool addIfNone) {
  if (text == nullptr) return false;
  unsigned int digits = 0;
  if (!AKStringSuffixNumberFind(*text, nullptr, &digits) && !addIfNone) return false;
  constexpr unsigned int kWidest = 7;  // an eight-digit suffix too is filled to seven
  text->RemoveLastChars(digits);
  text->Appendf("%0*u", static_cast<int>(std::clamp(digits, 1U, kWidest)), number);
  return true;
}

bool AKStringSuffixNumberAdd(AKString* text, unsigned int increment, unsigned int startValue, bool addIfNone) {
  if (text == nullptr) return false;
  unsigned int number = 0;
  const bool found = AKStringSuffixNumberFind(*text, &number, nullptr);
  return AKStringSuffixNumberReplace(text, (found ? number : startValue) + increment, addIfNone);
}

AKString AKStringHexaFromBinaryData(const void* data, unsigned int size, const AKString& prefix) {
  if (data == nullptr || size == 0) return {};
  constexpr char kDigits[] = "0123456789ABCDEF";
  AKString text(prefix);
  const std::uint64_t length = std::uint64_t{prefix.Length()} + std::uint64_t{size} * 2;
  text.Resize(static_cast<unsigned int>(std::min<std::uint64_t>(length, 0xFFFFFFFF)));
  char* out = text.MutableData() + prefix.Length();
  const auto* const bytes = static_cast<const unsigned char*>(data);
  for (unsigned int i = 0; i < size; ++i) {
    *out++ = kDigits[bytes[i] >> 4];
    *out++ = kDigits[bytes[i] & 0x0F];
  }
  return text;
}

AKString AKStringHexaFromBinaryData(const AKMemoryBlock& block, const AKString& prefix) {
  return AKStringHexaFromBinaryData(block.Data(), block.Size(), prefix);
}

unsigned int AKStringComputeHashCode32(const AKString& text) { return HashBytes<std::uint32_t>(text); }

unsigned long long AKStringComputeHashCode64(const AKString& text) { return HashBytes<std::uint64_t>(text); }
