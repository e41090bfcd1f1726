#pragma once
#include <CoreFoundation/CFBase.h>
typedef const struct __CFData* CFDataRef;
typedef struct __CFData* CFMutableDataRef;
CF_EXPORT CFMutableDataRef CFDataCreateMutable(CFAllocatorRef allocator, CFIndex capacity);
CF_EXPORT CFIndex CFDataGetLength(CFDataRef theData);
CF_EXPORT const uint8_t* CFDataGetBytePtr(CFDataRef theData);
