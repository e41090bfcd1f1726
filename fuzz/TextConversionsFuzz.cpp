// Every reader of text: any bytes, as a C string, give a value or the default, and what a writer then writes reads
// back.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kit/AKTextConversions.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const char* const text = bytes.c_str();
  char written[2048];
  bool flag;
  int s32;
  unsigned int u32;
  long long s64;
  unsigned long long u64;
  float f32;
  double f64;
  double back;
  AGPoint point;
  AGSize area;
  AGInterval interval;
  AGRect rect;
  AGColor color;
  AGColor color_back;
  strGetasBool(text, &flag, false);
  strGetasSInt(text, &s32, 0);
  strGetasUInt(text, &u32, 0);
  strGetasUInt64(text, &u64, 0);
  strGetasFloat32(text, &f32, 0);
  strGetasAGPoint(text, &point, {});
  strGetasAGSize(text, &area, {});
  strGetasAGInterval(text, &interval, {});
  if (strGetasSInt64(text, &s64, 0)) {
    long long s64_back;
    Require(strGetasSInt64(strSetasSInt64(written, s64), &s64_back, 0) && s64_back == s64);
  }
  if (strGetasFloat64(text, &f64, 0)) {
    strSetasFloat64(written, f64, static_cast<int>(size) - 4);
    strSetasTimeHMS(written, f64, static_cast<int>(size) - 4, size % 2 == 0);
    strSetasDuration(written, f64, static_cast<int>(size) - 4);
  }
  if (strGetasTimeHMS(text, &f64, 0) && std::fabs(f64) < 1e9) {
    Require(strGetasTimeHMS(strSetasTimeHMS(written, f64, 9, true), &back, 0) && std::fabs(back - f64) < 1e-6);
  }
  if (strGetasAGRect(text, &rect, {})) _akstr(rect, static_cast<int>(size) - 4);
  if (strGetasAGColorHex(text, &color, {})) {
    Require(strGetasAGColor(strSetasAGColor(written, color, true), &color_back, {}) && color_back == color);
  }
  strGetasAGColor(text, &color, {});
  AKString suffixed(bytes);
  if (AKStringSuffixNumberAdd(&suffixed, u32, 1, true)) Require(AKStringSuffixNumberFind(suffixed, nullptr, nullptr));
  return 0;
}
