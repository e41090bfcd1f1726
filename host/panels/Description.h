// Description strings of panels and controls: items "-key:value" separated by blanks, values with blanks in quotes.
#pragma once

#include <functional>

#include "kit/geometry/AGPoint.h"
#include "kit/text/AKString.h"

namespace host {

/// Hands each item, quotes taken off, to `take`, which says whether it understood it. Items that it did not are named
/// in one log line. Returns true when all were understood.
bool ParseDescription(AKString const& description, std::function<bool(AKString const& item)> const& take);

/// These accept the whole text or nothing. Leading zeros are decimal.
bool ParseInteger(AKString const& text, int* value);
bool ParseUnsigned(AKString const& text, unsigned int* value);
/// A finite number.
bool ParseNumber(AKString const& text, double* value);
/// "(a;b)", two finite numbers.
bool ParsePair(AKString const& text, AGPoint* pair);

}  // namespace host
