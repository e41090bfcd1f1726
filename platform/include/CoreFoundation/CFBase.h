// What the native layer's value objects share: indexes, ranges and reference counts.
//
// A function with "Create" in its name returns an object with one reference, which the caller releases.
#pragma once

#include "CoreGraphics/CGBase.h"

typedef signed long CFIndex;
typedef const void* CFTypeRef;
/// Who allocates; there is only the default, null.
typedef const struct CFAllocator* CFAllocatorRef;

#define kCFAllocatorDefault (static_cast<CFAllocatorRef>(nullptr))

struct CFRange {
  CFIndex location;
  CFIndex length;
};

inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

/// `object` is a native value object and not null. Returns it.
CG_EXTERN CFTypeRef CFRetain(CFTypeRef object);
/// The last release frees the object, which is not null.
CG_EXTERN void CFRelease(CFTypeRef object);
