// Native text: an immutable, reference-counted run of UTF-16 code units, which may hold lone surrogates and zeros.
#pragma once

#include <cstdint>

#include "CoreFoundation/CFBase.h"

typedef const struct CFString* CFStringRef;
typedef unsigned short UniChar;
typedef std::uint32_t CFStringEncoding;

/// Numbers of character sets. Text enters here as ASCII or UTF-16; other sets are converted by whoever owns the text.
enum : CFStringEncoding {
  kCFStringEncodingMacRoman = 0,
  kCFStringEncodingWindowsLatin1 = 0x0500,
  kCFStringEncodingUTF8 = 0x08000100,
  kCFStringEncodingInvalidId = 0xFFFFFFFFU,
};

/// Text from NUL-terminated bytes below 128, which are the same in all of the sets above. Null for
/// another byte or an unknown encoding.
CG_EXTERN CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding);
/// A copy of `count` code units; null for a negative count, or null units with a count above 0.
CG_EXTERN CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* units, CFIndex count);
/// The number of code units.
CG_EXTERN CFIndex CFStringGetLength(CFStringRef text);
/// Copies the code units of `range`, which must lie within the text.
CG_EXTERN void CFStringGetCharacters(CFStringRef text, CFRange range, UniChar* units);
