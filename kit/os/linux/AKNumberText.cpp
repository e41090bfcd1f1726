#include <charconv>

#include "kit/os/AKNumberText_p.h"

namespace {

template <typename T>
bool Read(const char* start, const char* stop, T* value) {
  const auto result = std::from_chars(start, stop, *value);
  return result.ec == std::errc() && result.ptr == stop;
}

}  // namespace

char* AKWriteFixedNumber(char* begin, char* end, double value, int precision) {
  return std::to_chars(begin, end, value, std::chars_format::fixed, precision).ptr;
}

bool AKReadDecimal(const char* start, const char* stop, double* value) { return Read(start, stop, value); }
bool AKReadDecimal(const char* start, const char* stop, float* value) { return Read(start, stop, value); }
