// Text conversions: values read from C strings (strGetas...) and written into a caller's buffer (strSetas...).
//
// Readers store the value and return true, or store `defaultValue` and return false when the text is null, empty or
// does not match. Leading white space is skipped where scanf skips it, what follows a match is ignored, and a number
// too large for its type is the type's limit before it is narrowed. All but the colour readers look at the first 63
// characters only. The decimal separator is a dot whatever the locale is (AKTextLocale.h).
//
// Writers write a NUL-terminated text and return `buffer`, which the caller makes large enough. They print the decimal
// separator of the current locale: text for storage is written inside an AKScopedPrintfFloatSepAsDot. `decimals` is the
// number of decimals, at most 9; below 0 stands for printf's six.
#pragma once

#include "kit/containers/AKMemoryBlock.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGInterval.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/text/AKString.h"

/// "0" or "1", no other number.
bool strGetasBool(const char* text, bool* out, bool defaultValue);
///@{
/// The low 32 bits of a long.
bool strGetasSInt(const char* text, int* out, int defaultValue);
bool strGetasSInt32(const char* text, int* out, int defaultValue);
///@}
/// All 64 bits.
bool strGetasSInt64(const char* text, long long* out, long long defaultValue);
///@{
/// Not negative; the low 32 bits of a long.
bool strGetasUInt(const char* text, unsigned int* out, unsigned int defaultValue);
bool strGetasUInt32(const char* text, unsigned int* out, unsigned int defaultValue);
///@}
/// 0 up to the largest signed number.
bool strGetasUInt64(const char* text, unsigned long long* out, unsigned long long defaultValue);
///@{
/// A number as scanf reads it, with a dot in any locale.
bool strGetasFloat32(const char* text, float* out, float defaultValue);
bool strGetasFloat64(const char* text, double* out, double defaultValue);
///@}
/// Seconds from "h:m:s", "m:s" or "s"; the sign of the first field is the sign of the whole.
bool strGetasTimeHMS(const char* text, double* out, double defaultValue);
///@{
/// "(x;y)".
bool strGetasAGPoint(const char* text, AGPoint* out, const AGPoint& defaultValue);
bool strGetasAGSize(const char* text, AGSize* out, const AGSize& defaultValue);
bool strGetasAGInterval(const char* text, AGInterval* out, const AGInterval& defaultValue);
///@}
/// "(x0;y0;x1;y1)".
bool strGetasAGRect(const char* text, AGRect* out, const AGRect& defaultValue);
/// "(red;green;blue;alpha)" or "(red;green;blue)"; components above 255 become 255.
bool strGetasAGColor(const char* text, AGColor* out, AGColor defaultValue);
/// RRGGBB or RRGGBBAA: text of exactly 6 or 8 characters.
bool strGetasAGColorHex(const char* text, AGColor* out, AGColor defaultValue);

///@{
/// A number in decimal; a boolean as "1" or "0".
char* strSetasBool(char* buffer, bool value);
char* strSetasSInt(char* buffer, int value);
char* strSetasSInt32(char* buffer, int value);
char* strSetasSInt64(char* buffer, long long value);
char* strSetasUInt(char* buffer, unsigned int value);
char* strSetasUInt32(char* buffer, unsigned int value);
char* strSetasUInt64(char* buffer, unsigned long long value);
char* strSetasFloat32(char* buffer, float value, int decimals);
char* strSetasFloat64(char* buffer, double value, int decimals);
///@}
/// "h:mm:ss", or, when `compact` is set, "mm:ss" below an hour and plain seconds below a minute.
char* strSetasTimeHMS(char* buffer, double seconds, int decimals, bool compact);
/// "0s", "1.500ms", "0.050s", "5.50s", "1m15s", "1h02m05s". Decimals below 0 choose by the size of the value.
char* strSetasDuration(char* buffer, double seconds, int decimals);
/// "Mon 31/12/2024 23:59:58" in local time. `seconds` wins over `hoursMinutes`; a negative time is taken as 0. At most
/// 127 characters; empty when the time has no calendar date.
char* strSetasSysDate(char* buffer, long long time, bool weekday, bool hoursMinutes, bool seconds);
/// "999 Bytes", "1.5 KB", "15 KB", up to TB, in steps of 1000.
char* strSetasMemory(char* buffer, long long bytes);
/// "<None>", "Mono", "Stereo", "3Ch" and so on.
char* strSetasChannCount(char* buffer, int channels);
///@{
/// The numbers in parentheses with ";" between them.
char* strSetasAGPoint(char* buffer, const AGPoint& value, int decimals);
char* strSetasAGSize(char* buffer, const AGSize& value, int decimals);
char* strSetasAGInterval(char* buffer, const AGInterval& value, int decimals);
char* strSetasAGRect(char* buffer, const AGRect& value, int decimals);
///@}
/// Components of three digits: "(255;000;000;255)".
char* strSetasAGColor(char* buffer, AGColor value, bool withAlpha);
/// RRGGBBAA or RRGGBB in upper case.
char* strSetasAGColorHex(char* buffer, AGColor value, bool withAlpha);

///@{
/// Text for messages, valid for the next seven calls of the same overload; cut at 31 characters, a rectangle at 63.
const char* _akstr(const AGColor& color);
const char* _akstr(const AGPoint& point, int decimals);
const char* _akstr(const AGSize& size, int decimals);
const char* _akstr(const AGRect& rect, int decimals);
///@}

/// The decimal digits, at most 8, that `text` ends in, and their number. Returns whether there are any; without them
/// the outputs, which may be null, are 0.
bool AKStringSuffixNumberFind(const AKString& text, unsigned int* value, unsigned int* digitCount);
/// Replaces the suffix digits by `number`, padded with zeros to their count, at most 7; or adds `number` when there are
/// none and `addIfNone` is set. Returns whether the text was rewritten.
bool AKStringSuffixNumberReplace(AKString* text, unsigned int number, bool addIfNone);
/// The same with the found number + `increment`, or `startValue` + `increment` when there is none.
bool AKStringSuffixNumberAdd(AKString* text, unsigned int increment, unsigned int startValue, bool addIfNone);

///@{
/// `prefix` and two upper-case hexadecimal digits a byte; empty for null data or size 0.
AKString AKStringHexaFromBinaryData(const void* data, unsigned int size, const AKString& prefix);
AKString AKStringHexaFromBinaryData(const AKMemoryBlock& block, const AKString& prefix);
///@}

///@{
/// Over the stored bytes, from 0: rotate left by 7, add the byte.
unsigned int AKStringComputeHashCode32(const AKString& text);
unsigned long long AKStringComputeHashCode64(const AKString& text);
///@}
