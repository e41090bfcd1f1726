#include <langinfo.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "kit/os/AKNumberText_p.h"
#include "kit/text/AKTextNumber_p.h"

namespace aktext {
namespace {

/// Puts the locale's decimal separator in place of the dot and returns the new end.
char* LocalizeSeparator(char* begin, char* end) {
  const char* const separator = nl_langinfo(RADIXCHAR);
  if (separator[0] == '.' && separator[1] == '\0') return end;
  char* const dot = std::find(begin, end, '.');
  if (dot == end) return end;
  const std::size_t length = std::min<std::size_t>(std::strlen(separator), 8);
  std::memmove(dot + length, dot + 1, static_cast<std::size_t>(end - dot - 1));
  std::copy_n(separator, length, dot);
  return end + length - 1;
}

}  // namespace

char* WriteFixed(char* buffer, double value, int decimals, unsigned int width, char pad) {
  constexpr int kDefaultDecimals = 6;
  constexpr int kMostDecimals = 9;
  char text[kNumberSize];
  const int precision = decimals < 0 ? kDefaultDecimals : std::min(decimals, kMostDecimals);
  char* end = AKWriteFixedNumber(text, text + sizeof(text) - 16, value, precision);
  end = LocalizeSeparator(text, end);
  const auto length = static_cast<unsigned int>(end - text);
  const unsigned int padding = decimals < 0 || !std::isfinite(value) || length >= width ? 0 : width - length;
  const unsigned int sign = padding != 0 && pad == '0' && text[0] == '-' ? 1 : 0;
  std::memcpy(buffer, text, sign);
  std::memset(buffer + sign, pad, padding);
  std::memcpy(buffer + sign + padding, text + sign, length - sign);
  buffer[padding + length] = '\0';
  return buffer + padding + length;
}

}  // namespace aktext
