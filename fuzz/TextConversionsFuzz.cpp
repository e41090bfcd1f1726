// Every reader of text: any bytes, as a C string, give a value or the default, and what a writer then writes reads
// back.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kit/text/AKTextConversions.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

/// What every reader owes: a value when it matches, the default otherwise.
template <typename T>
bool Read(bool (*reader)(const char*, T*, T), const char* text, T* value) {
  const bool matched = reader(text, value, T{});
  Require(matched || *value == T{});
  return matched;
}

template <typename T>
bool Read(bool (*reader)(const char*, T*, const T&), const char* text, T* value) {
  const bool matched = reader(text, value, T{});
  Require(matched || *value == T{});
  return matched;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const char* const text = bytes.c_str();
  const int decimals = static_cast<int>(size % 14) - 2;
  char written[2048];
  bool flag;
  int s32;
  unsigned int u32;
  long long s64;
  unsigned long long u64;
  float f32;
  double f64;
  AGPoint point;
  AGSize area;
  AGInterval interval;
  AGRect rect;
  AGColor color;
  AGColor colorBack;
  Read(strGetasBool, text, &flag);
  Read(strGetasSInt, text, &s32);
  Read(strGetasUInt, text, &u32);
  Read(strGetasUInt64, text, &u64);
  Read(strGetasFloat32, text, &f32);
  Read(strGetasAGPoint, text, &point);
  Read(strGetasAGSize, text, &area);
  Read(strGetasAGInterval, text, &interval);
  Read(strGetasAGColor, text, &color);
  if (Read(strGetasAGRect, text, &rect)) _akstr(rect, decimals);
  if (Read(strGetasSInt64, text, &s64)) {
    Require(Read(strGetasSInt64, strSetasSInt64(written, s64), &s64) && strtoll(written, nullptr, 10) == s64);
  }
  if (Read(strGetasFloat64, text, &f64)) strSetasDuration(strSetasFloat64(written, f64, decimals), f64, decimals);
  if (Read(strGetasTimeHMS, text, &f64) && std::fabs(f64) < 1e9) {
    double back;
    Require(Read(strGetasTimeHMS, strSetasTimeHMS(written, f64, 9, true), &back) && std::fabs(back - f64) < 1e-6);
  }
  if (Read(strGetasAGColorHex, text, &color)) {
    Require(Read(strGetasAGColor, strSetasAGColor(written, color, true), &colorBack) && colorBack == color);
  }
  AKString suffixed(bytes);
  if (AKStringSuffixNumberAdd(&suffixed, u32, 1, true)) Require(AKStringSuffixNumberFind(suffixed, nullptr, nullptr));
  return 0;
}
