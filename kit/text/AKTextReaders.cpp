// The readers of numbers, times, geometry and colours.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextScanner_p.h"

using aktext::Scanner;
using aktext::ScanText;

namespace {

template <typename T>
bool Store(bool matched, T* out, const T& value, const T& defaultValue) {
  if (out != nullptr) *out = matched ? value : defaultValue;
  return matched;
}

bool ScanLong(const char* text, long* value) { return ScanText(text).Scan().Long(value); }

bool ScanNonNegative(const char* text, long* value) { return ScanLong(text, value) && *value >= 0; }

/// "(a;b;...)": the closing bracket may be missing, as nothing is read after it.
bool ScanComponents(const char* text, double* components, unsigned int count) {
  const ScanText scanText(text);
  Scanner scanner = scanText.Scan();
  for (unsigned int i = 0; i < count; ++i) {
    if (!scanner.Literal(i == 0 ? '(' : ';') || !scanner.Float(&components[i])) return false;
  }
  return true;
}

bool BeginsWithMinus(const char* text) {
  text += std::strspn(text, " \t");
  return *text == '-';
}

/// "count" integers, each followed by a colon, and seconds.
bool ScanTimeFields(const ScanText& text, int* integers, unsigned int count, double* seconds) {
  Scanner scanner = text.Scan();
  for (unsigned int i = 0; i < count; ++i) {
    if (!scanner.Int(&integers[i]) || !scanner.Literal(':')) return false;
  }
  return scanner.Float(seconds);
}

/// Red, green, blue and alpha; alpha stays as it is when only three values match.
bool ScanColor(const char* text, unsigned int* components) {
  Scanner scanner(text, text + std::strlen(text));
  for (unsigned int i = 0; i < 4; ++i) {
    if (!scanner.Literal(i == 0 ? '(' : ';') || !scanner.Unsigned(&components[i])) return i == 3;
  }
  return true;
}

unsigned char ClampedByte(unsigned int value) { return static_cast<unsigned char>(std::min(value, 255U)); }

}  // namespace

bool strGetasBool(const char* text, bool* out, bool defaultValue) {
  long value = 0;
  const bool matched = ScanLong(text, &value) && (value == 0 || value == 1);
  return Store(matched, out, value == 1, defaultValue);
}

bool strGetasSInt(const char* text, int* out, int defaultValue) {
  long value = 0;
  const bool matched = ScanLong(text, &value);
  return Store(matched, out, static_cast<int>(value), defaultValue);
}

bool strGetasSInt32(const char* text, int* out, int defaultValue) { return strGetasSInt(text, out, defaultValue); }

bool strGetasSInt64(const char* text, long long* out, long long defaultValue) {
  long value = 0;
  const bool matched = ScanLong(text, &value);
  return Store(matched, out, static_cast<long long>(value), defaultValue);
}

bool strGetasUInt(const char* text, unsigned int* out, unsigned int defaultValue) {
  long value = 0;
  const bool matched = ScanNonNegative(text, &value);
  return Store(matched, out, static_cast<unsigned int>(value), defaultValue);
}

bool strGetasUInt32(const char* text, unsigned int* out, unsigned int defaultValue) {
  return strGetasUInt(text, out, defaultValue);
}

bool strGetasUInt64(const char* text, unsigned long long* out, unsigned long long defaultValue) {
  long value = 0;
  const bool matched = ScanNonNegative(text, &value);
  return Store(matched, out, static_cast<unsigned long long>(value), defaultValue);
}

bool strGetasFloat32(const char* text, float* out, float defaultValue) {
  float value = 0;
  const bool matched = ScanText(text).Scan().Float(&value);
  return Store(matched, out, value, defaultValue);
}

bool strGetasFloat64(const char* text, double* out, double defaultValue) {
  double value = 0;
  const bool matched = ScanText(text).Scan().Float(&value);
  return Store(matched, out, value, defaultValue);
}

bool strGetasTimeHMS(const char* text, double* out, double defaultValue) {
  const ScanText scanText(text);
  int fields[2] = {};
  double seconds = 0;
  for (const unsigned int count : {2U, 1U}) {
    if (!ScanTimeFields(scanText, fields, count, &seconds)) continue;
    double value = 0;
    for (unsigned int i = 0; i < count; ++i) value = (value + std::fabs(static_cast<double>(fields[i]))) * 60;
    value += std::fabs(seconds);
    // "-0" is 0 as a number: only the text still knows the sign.
    const bool negative = fields[0] < 0 || (fields[0] == 0 && BeginsWithMinus(text));
    return Store(true, out, negative ? -value : value, defaultValue);
  }
  const bool matched = scanText.Scan().Float(&seconds);
  return Store(matched, out, seconds, defaultValue);
}

bool strGetasAGPoint(const char* text, AGPoint* out, const AGPoint& defaultValue) {
  double c[2] = {};
  const bool matched = ScanComponents(text, c, 2);
  return Store(matched, out, {c[0], c[1]}, defaultValue);
}

bool strGetasAGSize(const char* text, AGSize* out, const AGSize& defaultValue) {
  double c[2] = {};
  const bool matched = ScanComponents(text, c, 2);
  return Store(matched, out, {c[0], c[1]}, defaultValue);
}

bool strGetasAGInterval(const char* text, AGInterval* out, const AGInterval& defaultValue) {
  double c[2] = {};
  const bool matched = ScanComponents(text, c, 2);
  return Store(matched, out, {c[0], c[1]}, defaultValue);
}

bool strGetasAGRect(const char* text, AGRect* out, const AGRect& defaultValue) {
  double c[4] = {};
  const bool matched = ScanComponents(text, c, 4);
  return Store(matched, out, {c[0], c[1], c[2], c[3]}, defaultValue);
}

bool strGetasAGColor(const char* text, AGColor* out, AGColor defaultValue) {
  unsigned int c[4] = {0, 0, 0, 255};
  const bool matched = text != nullptr && ScanColor(text, c);
  return Store(matched, out, AGColor(ClampedByte(c[0]), ClampedByte(c[1]), ClampedByte(c[2]), ClampedByte(c[3])),
               defaultValue);
}

bool strGetasAGColorHex(const char* text, AGColor* out, AGColor defaultValue) {
  const std::size_t length = text == nullptr ? 0 : strnlen(text, 9);
  unsigned int value = 0;
  const bool matched = (length == 6 || length == 8) && std::sscanf(text, "%X", &value) == 1;
  if (length == 6) value = value << 8 | 0xFF;
  return Store(matched, out,
               AGColor(static_cast<unsigned char>(value >> 24), static_cast<unsigned char>(value >> 16),
                       static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)),
               defaultValue);
}
