#pragma once
#include <CoreFoundation/CFBase.h>
typedef const struct __CFArray* CFArrayRef;
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef theArray);
CF_EXPORT const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);
