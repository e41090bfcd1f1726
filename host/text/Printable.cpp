#include "host/text/Printable.h"

#include <algorithm>

#include "host/text/Utf8Check.h"

namespace host {
namespace {

void AppendEscaped(std::string* text, char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(byte);
  *text += {'\\', 'x', kDigits[code >> 4], kDigits[code & 15]};
}

// The C1 characters are C2 80 to C2 9F.
bool IsSecondOfC1(std::string_view text, std::size_t i) {
  return i > 0 && text[i - 1] == '\xC2' && static_cast<unsigned char>(text[i]) < 0xA0;
}

bool IsControl(std::string_view text, std::size_t i) {
  const auto code = static_cast<unsigned char>(text[i]);
  return code < 32 || code == 127 || IsSecondOfC1(text, i) || (i + 1 < text.size() && IsSecondOfC1(text, i + 1));
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::size_t good = FindInvalidUtf8(text);
    const std::string_view characters = text.substr(0, good);
    for (std::size_t i = 0; i < good; ++i) {
      IsControl(characters, i) ? AppendEscaped(&shown, text[i]) : shown.push_back(text[i]);
    }
    if (good < text.size()) AppendEscaped(&shown, text[good]);
    text.remove_prefix(std::min(good + 1, text.size()));
  }
  return shown;
}

}  // namespace host
