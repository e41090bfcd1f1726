// Description strings of panels and controls: items "-key:value" separated by blanks, values with blanks in quotes.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>

#include "kit/geometry/AGPoint.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"

namespace host {

/// One kind of item: the key that it begins with, and what takes its value and says whether it understood it.
template <typename Target>
struct DescriptionItem {
  const char* key;
  bool (*take)(Target* target, const AKString& value);
};

/// Hands each item, quotes taken off, to `take`, which says whether it understood it. Returns the items that it did
/// not, separated by blanks; empty when all were understood.
AKString ReadDescription(const AKString& description, const std::function<bool(const AKString& item)>& take);

/// The same by a table of the items that there are.
template <typename Target, std::size_t count>
AKString ReadDescription(const AKString& description, const DescriptionItem<Target> (&items)[count], Target* target) {
  return ReadDescription(description, [&items, target](const AKString& item) {
    AKString value;
    for (const DescriptionItem<Target>& known : items) {
      if (item.StartsWith(known.key, &value)) return known.take(target, value);
    }
    return false;
  });
}

/// These accept the whole text or nothing. Leading zeros are decimal.
bool ParseInteger(const AKString& text, int* value);
bool ParseUnsigned(const AKString& text, unsigned int* value);
/// A finite number.
bool ParseNumber(const AKString& text, double* value);
/// "(a;b)", two finite numbers.
bool ParsePair(const AKString& text, AGPoint* pair);
/// on and off, yes and no, true and false, 1 and 0.
bool ParseSwitch(const AKString& text, bool* state);
/// The pieces between semicolons, without blanks at their ends. A backslash makes the semicolon or backslash behind it
/// an ordinary character; any other backslash stands for itself. The empty text has no piece.
AKStringArray ParseList(const AKString& text);

/// The nearest whole number, at most the limits; 0 for a NaN.
template <typename Integer>
Integer RoundInto(double value, double lowest, double highest) {
  if (std::isnan(value)) return 0;
  return static_cast<Integer>(std::fmin(std::fmax(std::floor(value + 0.5), lowest), highest));
}

}  // namespace host
