#include <xlocale.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "kit/os/AKNumberText_p.h"

namespace {

double Convert(const char* text, char** end, double) { return ::strtod_l(text, end, nullptr); }
float Convert(const char* text, char** end, float) { return ::strtof_l(text, end, nullptr); }

// The null locale is the C locale, whatever the thread's.
template <typename T>
bool Read(const char* start, const char* stop, T* value) {
  const std::string text(start, stop);
  char* end = nullptr;
  const T read = Convert(text.c_str(), &end, T());
  if (end != text.c_str() + text.size() || std::isinf(read)) return false;
  *value = read;
  return true;
}

}  // namespace

char* AKWriteFixedNumber(char* begin, char* end, double value, int precision) {
  return begin + ::snprintf_l(begin, static_cast<std::size_t>(end - begin), nullptr, "%.*f", precision, value);
}

bool AKReadDecimal(const char* start, const char* stop, double* value) { return Read(start, stop, value); }
bool AKReadDecimal(const char* start, const char* stop, float* value) { return Read(start, stop, value); }
