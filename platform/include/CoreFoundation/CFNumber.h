// Native numbers and booleans, which do not change.
#pragma once

#include "CoreFoundation/CFBase.h"

typedef const struct CFNumber* CFNumberRef;
typedef const struct CFBoolean* CFBooleanRef;

/// What a number is made from, or asked for as.
typedef enum CFNumberType : CFIndex {
  kCFNumberSInt32Type = 3,
  kCFNumberSInt64Type = 4,
  kCFNumberFloat32Type = 5,
  kCFNumberFloat64Type = 6,
} CFNumberType;

/// `value` points to a number of the type. Null for another type.
CG_EXTERN CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
/// Stores the number as `type`, a whole number being cut towards zero. False when it does not fit in the type (`*value`
/// is left alone) or lost digits.
CG_EXTERN Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

/// They live as long as the native layer; the two are told apart by CFBooleanGetValue.
CG_EXTERN const CFBooleanRef kCFBooleanTrue;
CG_EXTERN const CFBooleanRef kCFBooleanFalse;
CG_EXTERN Boolean CFBooleanGetValue(CFBooleanRef boolean);
