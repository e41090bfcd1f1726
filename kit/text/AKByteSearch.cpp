#include <cstring>

#include "kit/text/AKByteSearch_p.h"

namespace {

/// Whether the rest of `sub` follows where its first byte stands. Its last byte tells most false starts apart.
bool RestMatches(const char* text, const char* sub, unsigned int subLength) {
  const unsigned int last = subLength - 1;
  return text[last] == sub[last] && (last < 2 || std::memcmp(text + 1, sub + 1, last - 1) == 0);
}

}  // namespace

const char* akbytes::Find(const char* text, unsigned int length, const char* sub, unsigned int subLength) {
  if (subLength > length) return nullptr;
  if (subLength == 0) return text;
  // Jumping from one occurrence of the first byte to the next is the fastest way while they are rare. A text full of
  // false starts is handed to memmem, whose time never grows with the product of the two lengths.
  constexpr unsigned int kFalseStarts = 16;
  const char* const last = text + (length - subLength);
  const char* const end = text + length;
  for (unsigned int tries = 0; tries < kFalseStarts; ++tries) {
    if (text > last) return nullptr;
    text = static_cast<const char*>(std::memchr(text, sub[0], static_cast<std::size_t>(last - text) + 1));
    if (text == nullptr) return nullptr;
    if (RestMatches(text, sub, subLength)) return text;
    ++text;
  }
  return static_cast<const char*>(memmem(text, static_cast<std::size_t>(end - text), sub, subLength));
}

const char* akbytes::FindLast(const char* text, unsigned int latest, const char* sub, unsigned int subLength) {
  if (subLength == 0) return text + latest;
  for (std::size_t room = std::size_t{latest} + 1; room > 0;) {
    const auto* const found = static_cast<const char*>(memrchr(text, sub[0], room));
    if (found == nullptr || RestMatches(found, sub, subLength)) return found;
    room = static_cast<std::size_t>(found - text);
  }
  return nullptr;
}
