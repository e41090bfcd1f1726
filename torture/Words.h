// Values in words, as the report has them: one line of printable ASCII each.
#pragma once

#include <string>
#include <string_view>

#include "kit/geometry/AGColor.h"
#include "kit/text/AKString.h"

class AKValue;

namespace torture {

/// In quotes, with what is not printable as "\xNN", and shortened.
std::string TextOf(std::string_view bytes);
inline std::string TextOf(const std::string& text) { return TextOf(std::string_view(text)); }
std::string TextOf(const AKString& text);
std::string TextOf(const AKValue& value);
std::string TextOf(bool value);
std::string TextOf(int value);
std::string TextOf(unsigned int value);
std::string TextOf(double value);
std::string TextOf(AGColor value);
std::string TextOf(const void* address);

template <typename Value>
bool IsSame(const Value& one, const Value& other) {
  return one == other;
}
/// A NaN is the same as a NaN, and 0 not as -0.
template <>
bool IsSame(const double& one, const double& other);

/// A megabyte, but for 7 bytes, so that no length is a round one; where it is asked for often, as many of 16 kB.
const AKString& LongText();
/// Bytes that are neither ASCII nor UTF-8, conversions that must not be made, control characters.
AKString OddText();

}  // namespace torture
