// Native dictionaries: values by names, which do not change.
#pragma once

#include "CoreFoundation/CFBase.h"

typedef const struct CFDictionary* CFDictionaryRef;

/// How a dictionary treats its keys and values. There is one way: it keeps references of its own, and keys are texts
/// that are compared by content.
typedef struct {
  CFIndex version;
} CFDictionaryKeyCallBacks;
typedef struct {
  CFIndex version;
} CFDictionaryValueCallBacks;
CG_EXTERN const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
CG_EXTERN const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

/// `count` keys (CFStringRef) and values. Of equal keys the first counts. Null for a negative count, for null arrays
/// with a count above 0, and when a key or value or one of the call-backs is null.
CG_EXTERN CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                             CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                             const CFDictionaryValueCallBacks* valueCallBacks);
CG_EXTERN CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
/// The value of a CFStringRef, which stays the dictionary's; null when there is none.
CG_EXTERN const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
