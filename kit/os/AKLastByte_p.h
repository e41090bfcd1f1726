// The last of a byte's places in memory.
#pragma once

#include <cstddef>

/// Where in the `count` bytes at `bytes` the last one equal to `byte` lies; null when there is none.
const char* AKFindLastByte(const char* bytes, char byte, std::size_t count);
