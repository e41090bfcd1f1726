// Arrays of native value objects, which do not change.
#pragma once

#include "CoreFoundation/CFBase.h"

typedef const struct CFArray* CFArrayRef;

CG_EXTERN CFIndex CFArrayGetCount(CFArrayRef array);
/// The object at `index`, which stays the array's; null outside.
CG_EXTERN const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
