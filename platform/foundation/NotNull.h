// The rule about null arguments that the native layers of other systems enforce by a crash.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace platform {

/// In a debug build ends the program, and says in which function, when an argument that has to be there is null. A
/// release build goes on: what the function then does is its own affair.
inline void MustBeThere([[maybe_unused]] const void* argument,
                        [[maybe_unused]] const char* function = __builtin_FUNCTION()) {
#ifndef NDEBUG
  if (argument != nullptr) return;
  std::fprintf(stderr, "AKPlatform: %s was called with null\n", function);
  std::abort();
#endif
}

}  // namespace platform
