// Process-level services: start-up, clock, sleeping, main-thread test, user language and region.
#pragma once

#include "kit/text/AKString.h"

class AKSys {
 public:
  /// Starts the application clock and seeds the C generator with the time. To be called before other threads run.
  static void Initialize();
  /// Does nothing; it is Initialize's counterpart.
  static void Terminate();

  /// Microseconds of the monotonic clock since the first call in the process, which returns 0.
  static double GetCurrentApplicationTimeMicroSec();
  /// Seconds since 1970, 0 when the clock stands before that.
  static long long GetCurrentDateAndTime();
  /// Sleeps the rounded number of microseconds; a negative number or NaN returns at once.
  static void SleepMicroSec(double microseconds);

  /// True on the thread that the process began with.
  static bool IsMainThread();

  /// The lower-case language code of the user's locale ("de" of de_AT.UTF-8), "en" when it names none.
  static AKString GetUserLanguage();
  /// The upper-case country code of the user's locale ("AT" of de_AT.UTF-8), "US" when it names none.
  static AKString GetUserRegion();
};

/// Random numbers of the C generator, one sequence for the process; not to be used from two threads at once.
namespace AKRandom {

/// Seeds with `seed`, or with the time when it is 0, draws one number and returns the seed used.
unsigned int randomInit(unsigned int seed);

/// With `value` in [min, max] and `amount` in [0, 1): a number at most (max - min) * amount away from `value`, clipped
/// to [min, max]. Otherwise a number of [min, max].
double _lowRandom(double value, double min, double max, double amount);

}  // namespace AKRandom
