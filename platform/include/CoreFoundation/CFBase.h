// What the native layer's value objects share: indexes, ranges and reference counts.
//
// A function with "Create" in its name returns an object with one reference, which the caller releases.
//
// What CF and CT functions are handed is not null, unless it is said that it may be: the layers of other systems crash
// there. A debug build of this one ends the program and names the function; a release build returns null, 0 or false
// where there is something to return.
#pragma once

#include "CoreGraphics/CGBase.h"

typedef unsigned char Boolean;
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

/// `object` is a native value object. Returns it.
CG_EXTERN CFTypeRef CFRetain(CFTypeRef object);
/// The last release frees the object.
CG_EXTERN void CFRelease(CFTypeRef object);
