#include "torture/Words.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "kit/values/AKValueHelpers.h"
#include "torture/Moments.h"

namespace torture {

std::string TextOf(std::string_view bytes) {
  constexpr std::size_t kMost = 80;
  std::string text = "\"";
  char escaped[8];
  for (const char byte : bytes.substr(0, kMost)) {
    if (byte >= ' ' && byte < 0x7F) {
      text += byte;
    } else {
      std::snprintf(escaped, sizeof(escaped), "\\x%02x", static_cast<unsigned int>(static_cast<unsigned char>(byte)));
      text += escaped;
    }
  }
  text += '"';
  return bytes.size() > kMost ? text + "... (" + std::to_string(bytes.size()) + " bytes)" : text;
}

std::string TextOf(const AKString& text) { return TextOf(std::string_view(text.CStr(), text.Length())); }

std::string TextOf(const AKValue& value) {
  if (value.IsEmpty()) return "nothing";
  const AKString* text = value.GetasAKString();
  return text != nullptr ? TextOf(*text) : "a value of another type";
}

std::string TextOf(bool value) { return value ? "true" : "false"; }
std::string TextOf(int value) { return std::to_string(value); }
std::string TextOf(unsigned int value) { return std::to_string(value); }

std::string TextOf(double value) {
  char text[40];
  std::snprintf(text, sizeof(text), "%.17g", value);
  return text;
}

std::string TextOf(AGColor value) {
  char text[16];
  std::snprintf(text, sizeof(text), "%08x", value.rgba);
  return text;
}

std::string TextOf(const void* address) { return address == nullptr ? "null" : "an address"; }

template <>
bool IsSame(const double& one, const double& other) {
  if (std::isnan(one) || std::isnan(other)) return std::isnan(one) && std::isnan(other);
  return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

const AKString& LongText() {
  static const AKString longest = std::string((1 << 20) - 8, 'x') + "y";
  static const AKString longish = std::string((1 << 14) - 8, 'x') + "y";
  const Moment* const moment = Moment::Current();
  const bool isRare = moment != nullptr && (moment->ID() == MomentID::kStart || moment->ID() == MomentID::kDraw);
  return isRare ? longest : longish;
}

AKString OddText() { return "\xFF\xFE %s%n\x01\x1B[2J\xC3 \xEF\xBB\xBF\xED\xA0\x80"; }

}  // namespace torture
