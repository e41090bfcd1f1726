// Conversions between the kit's byte text, Mac OS Roman, and UTF-16 code units.
//
// A byte is one code unit and back; a character that Mac OS Roman lacks, and a lone surrogate, becomes one "?". A count
// of 0xFFFFFFFF stands for "up to the terminating 0". Null text gives null or an empty text.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/text/AKString.h"

/// The number of code units before the terminating 0; 0 for null.
unsigned int AKUniStringLength(const unsigned short* text);

/// A new NUL-terminated array from malloc, which the caller frees with free.
unsigned short* AKNewUniStringFromAsciiString(const char* text, unsigned int length);
///@{
/// Writes at most `dstCount` - 1 units and a terminating 0; `dstCount` 0 writes nothing. Returns `dst`.
unsigned short* AKUniStringFromAsciiString(unsigned short* dst, unsigned int dstCount, const char* text,
                                           unsigned int length);
AKUniChars AKUniStringFromAsciiString(const AKString& text);
///@}

/// New NUL-terminated bytes from malloc, which the caller frees with free.
char* AKNewAsciiStringFromUniString(const unsigned short* text, unsigned int count);
///@{
/// Writes at most `dstSize` - 1 bytes and a terminating NUL; `dstSize` 0 writes nothing. Returns `dst`.
char* AKAsciiStringFromUniString(char* dst, unsigned int dstSize, const unsigned short* text, unsigned int count);
AKString AKAsciiStringFromUniString(const AKUniChars& text);
///@}
