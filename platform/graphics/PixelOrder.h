// Pixels in the two orders of bytes: one is the other with the four bytes of each pixel reversed.
#pragma once

#include <cstddef>

namespace platform {

/// Copies `count` pixels of 4 bytes, each reversed. The stretches do not overlap.
void CopyBytesReversed(unsigned char* target, const unsigned char* source, std::size_t count);

}  // namespace platform
