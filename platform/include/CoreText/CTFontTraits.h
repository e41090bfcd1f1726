// What tells the fonts of a family apart.
#pragma once

#include "CoreFoundation/CFString.h"

/// A 32-bit number: the sum of the traits below.
CG_EXTERN const CFStringRef kCTFontSymbolicTrait;

enum CTFontSymbolicTraits : uint32_t { kCTFontTraitItalic = 1, kCTFontTraitBold = 2 };
