// Character sets: the kit's codes, the platform's numbers for them, and conversions between them.
//
// The kit's text is Mac OS Roman in memory and UTF-8 on file. Text that is not valid in its source set converts to the
// empty string; a character that the target set lacks becomes one "?", a decomposed accent is composed first where the
// target has the composed letter. Text that is pure ASCII is the same in all sets and converts without a copy.
#pragma once

#include <cstdint>

#include "kit/text/AKString.h"

/// A character set of the kit; other values than those below name none.
using AKStringEncoding = std::uint32_t;

/// No set: nothing is converted from or to it.
inline constexpr AKStringEncoding kAKStringEncodingNone = 0;
/// Mac OS Roman, the kit's text in memory.
inline constexpr AKStringEncoding kAKStringEncodingMacRoman = 1;
/// Windows code page 1252.
inline constexpr AKStringEncoding kAKStringEncodingWindowsLatin1 = 2;
/// UTF-8, the kit's text on file.
inline constexpr AKStringEncoding kAKStringEncodingUTF8 = 3;

/// A converted copy; see AKStringConvertWithEncoding.
AKString AKStringCopyWithEncoding(const AKString& text, AKStringEncoding from, AKStringEncoding to);

/// Converts in place. Nothing happens when the two codes name the same set, unknown codes being one set of their own;
/// an unknown set on one side only cannot be converted and empties the string. A null pointer does nothing.
void AKStringConvertWithEncoding(AKString* text, AKStringEncoding from, AKStringEncoding to);
