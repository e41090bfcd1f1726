// Bitmaps as PNG files.
#pragma once

#include <vector>

#include "graphics/bitmaps/AGBitmap.h"

namespace host {

/// The bitmap as a PNG file in memory; false, and no bytes, when it is empty or can't be encoded.
bool EncodePNG(const AGBitmap& bitmap, std::vector<unsigned char>* png);

}  // namespace host
