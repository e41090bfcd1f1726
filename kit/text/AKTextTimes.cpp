// The writers of times, durations and dates.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextNumber_p.h"

namespace {

// A real number of seconds has no fraction from here on, and far above its integer would not fit any more.
constexpr double kMostSeconds = 9e15;

/// How many steps a second has in the text: 10 to the number of decimals.
long long DurationScale(double seconds, int decimals) {
  if (decimals < 0) decimals = seconds < 1 ? 3 : seconds < 10 ? 2 : seconds < 60 ? 1 : 0;
  constexpr long long kScales[] = {1, 10, 100, 1000};
  return kScales[std::min(decimals, 3)];
}

char* WriteWithUnit(char* buffer, double value, const char* unit) {
  std::strcpy(aktext::WriteFixed(buffer, value, 3), unit);
  return buffer;
}

}  // namespace

char* strSetasTimeHMS(char* buffer, double seconds, int decimals, bool compact) {
  const double magnitude = std::fabs(seconds);
  const bool shortForm = compact && magnitude < 60;
  if (shortForm || !(magnitude <= kMostSeconds)) return strSetasFloat64(buffer, seconds, decimals);
  const auto whole = static_cast<long long>(magnitude);
  char* out = buffer;
  if (seconds < 0) *out++ = '-';
  if (whole >= 3600 || !compact) {
    out += std::sprintf(out, "%lld:%02lld:", whole / 3600, whole / 60 % 60);
  } else {
    out += std::sprintf(out, "%02lld:", whole / 60);
  }
  // Two digits before the separator, and the separator itself when there are decimals.
  const unsigned int width = decimals <= 0 ? 2 : 3 + static_cast<unsigned int>(std::min(decimals, 9));
  const char pad = decimals < 7 ? '0' : ' ';  // as the formats of so many decimals have it
  const double rest = static_cast<double>(whole % 60) + (magnitude - static_cast<double>(whole));
  aktext::WriteFixed(out, rest, decimals, width, pad);
  return buffer;
}

char* strSetasDuration(char* buffer, double seconds, int decimals) {
  if (!(seconds >= 1e-6)) return std::strcpy(buffer, "0s");
  if (seconds < 0.01) return WriteWithUnit(buffer, seconds * 1000, "ms");
  if (seconds < 0.1) return WriteWithUnit(buffer, seconds, "s");
  const long long scale = DurationScale(seconds, decimals);
  const auto count =
      static_cast<long long>(std::floor(std::min(seconds, kMostSeconds) * static_cast<double>(scale) + 0.5));
  const long long whole = count / scale;
  const long long s = whole % 60;
  const long long m = whole / 60 % 60;
  char* out = buffer;
  if (whole >= 3600) {
    out += std::sprintf(out, "%lldh%02lldm%02lld", whole / 3600, m, s);
  } else if (m >= 1) {
    out += std::sprintf(out, "%lldm%02lld", m, s);
  } else {
    out += std::sprintf(out, "%lld", s);
  }
  if (scale > 1) *out++ = '.';
  for (long long unit = scale / 10; unit > 0; unit /= 10) *out++ = static_cast<char>('0' + count / unit % 10);
  std::strcpy(out, "s");
  return buffer;
}

char* strSetasSysDate(char* buffer, long long time, bool weekday, bool hoursMinutes, bool seconds) {
  constexpr std::size_t kSize = 128;
  char format[32] = "";
  if (weekday) std::strcat(format, "%a ");
  std::strcat(format, "%d/%m/%Y");
  if (seconds) {
    std::strcat(format, " %H:%M:%S");
  } else if (hoursMinutes) {
    std::strcat(format, " %H:%M");
  }
  const auto moment = static_cast<std::time_t>(std::max(time, 0LL));
  std::tm local{};
  char text[kSize];
  std::size_t length = 0;
  if (localtime_r(&moment, &local) != nullptr) length = std::strftime(text, kSize, format, &local);
  std::memcpy(buffer, text, length);
  buffer[length] = '\0';
  return buffer;
}
