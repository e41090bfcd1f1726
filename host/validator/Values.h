// Values that a property is set to.
#pragma once

#include <vector>

#include "host/validator/Dice.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"

namespace host::validator {

/// Ordinary values of the same kind as `old`, which properties may clamp; empty for kinds that have none (arrays,
/// dictionaries, blocks of bytes).
std::vector<AKValue> OrdinaryValues(const AKValue& old);
/// A random one of them, or one between; `old` itself for kinds that have none.
AKValue RandomValue(const AKValue& old, Dice* dice);
/// The least and the largest there are, infinities and NaN, the longest texts.
std::vector<AKValue> ExtremeValues(const AKValue& old);
/// Values of which nothing can be made for the kind of `old`.
std::vector<AKValue> WrongValues(const AKValue& old);

/// The entries of a dictionary.
struct Entry {
  AKString key;
  AKValue value;
};
std::vector<Entry> EntriesOf(const AKDictionary& properties);

}  // namespace host::validator
