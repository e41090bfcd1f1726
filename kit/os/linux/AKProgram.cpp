#include <climits>
#include <cstdlib>

#include "kit/os/AKProgram_p.h"

std::string AKProgramPath() {
  char resolved[PATH_MAX];
  return ::realpath("/proc/self/exe", resolved) == nullptr ? std::string() : resolved;
}

std::string AKProgramResources() {
  const std::string path = AKProgramPath();
  return path.substr(0, path.rfind('/') + 1) + "Resources";
}

// The first of the environment's settings that is not empty decides, as in setlocale; messages are what a user reads.
std::string AKUserLocaleName() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && value[0] != '\0') return value;
  }
  return {};
}
