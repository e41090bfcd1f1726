// Numbers from text: the whole text or nothing.
#pragma once

#include <charconv>
#include <cmath>
#include <string_view>

namespace host {

/// A decimal number of the type's form and range; leading zeros are decimal.
template <typename Number>
bool ParseWhole(std::string_view text, Number* value) {
  Number parsed{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  *value = parsed;
  return true;
}

/// A number that is neither infinite nor a NaN.
inline bool ParseFinite(std::string_view text, double* value) {
  double parsed = 0;
  if (!ParseWhole(text, &parsed) || !std::isfinite(parsed)) return false;
  *value = parsed;
  return true;
}

}  // namespace host
