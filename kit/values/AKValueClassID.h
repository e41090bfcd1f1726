// Class identifiers in values: a "strg" of the characters before the first NUL.
#pragma once

#include "kit/text/AKClassID.h"
#include "kit/values/AKValue.h"

///@{
/// A text longer than 7 characters is cut. False, with the ID left alone, when the value is no string.
bool AKValueGetasAKClassID(const AKValue& value, AKClassID* id);
/// The null ID when the value is no string.
AKClassID AKValueGetasAKClassID(const AKValue& value);
///@}
///@{
/// A value of the ID's characters.
void AKValueSetasAKClassID(AKValue* value, AKClassID id);
AKValue AKValueSetasAKClassID(AKClassID id);
///@}
