// Objects in random states.
#pragma once

#include "host/validator/Subject.h"

namespace host::validator {

/// A new object with each property set to a random ordinary value.
Instance RandomObject(const ClassCalls& cls, Dice* dice);

}  // namespace host::validator
