#include "kit/system/AKSys.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "kit/os/AKMainThread_p.h"
#include "kit/os/AKProgram_p.h"

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point sStart;
bool sStarted = false;

// The locale's name before its character set and modifier: "de_AT" of "de_AT.UTF-8@euro".
AKString UserLocaleBase() {
  const std::string name = AKUserLocaleName();
  const AKString base(name.c_str(), static_cast<unsigned int>(std::strcspn(name.c_str(), ".@")));
  return base == "C" || base == "POSIX" ? AKString() : base;
}

}  // namespace

void AKSys::Initialize() {
  GetCurrentApplicationTimeMicroSec();
  AKRandom::randomInit(0);
}

void AKSys::Terminate() {}

double AKSys::GetCurrentApplicationTimeMicroSec() {
  const Clock::time_point now = Clock::now();
  if (!sStarted) {
    sStarted = true;
    sStart = now;
  }
  return std::chrono::duration<double, std::micro>(now - sStart).count();
}

long long AKSys::GetCurrentDateAndTime() {
  const std::time_t now = std::time(nullptr);
  return now < 0 ? 0 : static_cast<long long>(now);
}

void AKSys::SleepMicroSec(double microseconds) {
  if (!(microseconds >= 0)) return;
  constexpr double kLongest = 1e15;  // thirty years; more would overflow the deadline's nanoseconds
  const double rounded = std::floor(std::min(microseconds, kLongest) + 0.5);
  std::this_thread::sleep_for(std::chrono::microseconds(static_cast<long long>(rounded)));
}

bool AKSys::IsMainThread() { return AKIsMainThread(); }

AKString AKSys::GetUserLanguage() {
  static const AKString kDefault("en");
  const AKString base = UserLocaleBase();
  AKString language(base.CStr(), static_cast<unsigned int>(std::strcspn(base.CStr(), "_")));
  return language.IsEmpty() ? kDefault : language.ToLowerCase();
}

AKString AKSys::GetUserRegion() {
  static const AKString kDefault("US");
  AKString region = UserLocaleBase().AfterFirst("_");
  return region.IsEmpty() ? kDefault : region.ToUpperCase();
}

unsigned int AKRandom::randomInit(unsigned int seed) {
  if (seed == 0) seed = static_cast<unsigned int>(std::time(nullptr));
  std::srand(seed);
  static_cast<void>(std::rand());  // the first number of close seeds is alike
  return seed;
}

double AKRandom::_lowRandom(double value, double min, double max, double amount) {
  constexpr double kGeneratorMax = 2147483647.0;
  static_assert(RAND_MAX == 2147483647);
  const double draw = std::rand();
  if (!(min <= value && value <= max && 0 <= amount && amount < 1)) return min + (max - min) * draw / kGeneratorMax;
  const double reach = (max - min) * amount;
  double low = value - reach;
  if (low <= min) low = min;
  double high = value + reach;
  if (high > max) high = max;
  if (high <= min) high = min;
  return low + draw * (high - low) / kGeneratorMax;
}
