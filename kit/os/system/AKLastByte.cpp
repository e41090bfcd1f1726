#include "kit/os/AKLastByte_p.h"

const char* AKFindLastByte(const char* bytes, char byte, std::size_t count) {
  while (count > 0) {
    if (bytes[--count] == byte) return bytes + count;
  }
  return nullptr;
}
