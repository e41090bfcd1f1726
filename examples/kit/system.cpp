// The clock, the user's language, random numbers, and the log.
#include <cstdio>

#include "kit/log/AKLog.h"
#include "kit/system/AKSys.h"

namespace {

void PrintLine(const char* line) { std::printf("%s\n", line); }

}  // namespace

int main() {
  AKSys::Initialize();
  const double before = AKSys::GetCurrentApplicationTimeMicroSec();
  AKSys::SleepMicroSec(2000);
  std::printf("%d\n", AKSys::GetCurrentApplicationTimeMicroSec() - before >= 2000);          // prints: 1
  std::printf("%d %u letters\n", AKSys::IsMainThread(), AKSys::GetUserLanguage().Length());  // prints: 1 2 letters

  // At most a tenth of the range away from 5.
  AKRandom::randomInit(42);
  const double near = AKRandom::_lowRandom(5, 0, 10, 0.1);
  std::printf("%d\n", near >= 4 && near <= 6);  // prints: 1

  // In a bundle the host's procedure is set before the class is; here it is this program's.
  AKSetCustomLogMessageProc(&PrintLine, false);
  AKLog("points: %d", 7);  // prints: points: 7
  AKLogErrorMute();
  const int status = AKLogError(-1, "nobody reads this");
  std::printf("%d %u\n", status, AKLogErrorUnmute());  // prints: -1 0
  AKSetCustomLogMessageProc(nullptr, false);
  AKSys::Terminate();
}
