#include "host/text/Utf8Check.h"

namespace host {
namespace {

// The length of the character at the beginning of the text, 0 when it is malformed: cut, overlong, a surrogate, or
// beyond U+10FFFF.
std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  const auto second = static_cast<unsigned char>(text[1]);
  if (lead == 0xE0 && second < 0xA0) return 0;
  if (lead == 0xED && second >= 0xA0) return 0;
  if (lead == 0xF0 && second < 0x90) return 0;
  return lead == 0xF4 && second >= 0x90 ? 0 : length;
}

}  // namespace

std::size_t FindInvalidUtf8(std::string_view text) {
  std::size_t index = 0;
  while (index < text.size()) {
    const std::size_t length = CharacterLength(text.substr(index));
    if (length == 0) break;
    index += length;
  }
  return index;
}

}  // namespace host
