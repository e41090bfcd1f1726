#include <cstring>

#include "kit/os/AKLastByte_p.h"

const char* AKFindLastByte(const char* bytes, char byte, std::size_t count) {
  return static_cast<const char*>(::memrchr(bytes, byte, count));
}
