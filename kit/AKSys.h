// Process-level services: start-up, clock, sleeping, main-thread test, user language and region.
#pragma once

#include "kit/AKString.h"

class AKSys {
 public:
  static bool IsMainThread();
};
