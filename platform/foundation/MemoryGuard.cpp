#include "platform/foundation/MemoryGuard.h"

#include <cstdio>

namespace platform {

void ReportNoMemory() {
  static const bool isReported = std::fputs("AKPlatform: memory ran out, something was not drawn\n", stderr) >= 0;
  (void)isReported;
}

}  // namespace platform
