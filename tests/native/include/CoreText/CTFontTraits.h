#pragma once
#include <CoreFoundation/CFString.h>
CF_EXPORT const CFStringRef kCTFontSymbolicTrait;
enum CTFontSymbolicTraits : uint32_t { kCTFontTraitItalic = (1 << 0), kCTFontTraitBold = (1 << 1) };
