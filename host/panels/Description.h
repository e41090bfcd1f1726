// Description strings of panels and controls: items "-key:value" separated by blanks, values with blanks in quotes.
#pragma once

#include <functional>

#include "kit/geometry/AGPoint.h"
#include "kit/text/AKString.h"

namespace host {

/// Hands each item, quotes taken off, to `take`, which says whether it understood it. Items that it did not are named
/// in one log line. Returns true when all were understood.
bool ParseDescription(const AKString& description, const std::function<bool(const AKString& item)>& take);

/// These accept the whole text or nothing. Leading zeros are decimal.
bool ParseInteger(const AKString& text, int* value);
bool ParseUnsigned(const AKString& text, unsigned int* value);
/// A finite number.
bool ParseNumber(const AKString& text, double* value);
/// "(a;b)", two finite numbers.
bool ParsePair(const AKString& text, AGPoint* pair);

}  // namespace host
