// Pictures on the disk. Each function returns false with one line in `*error`, which is left alone otherwise.
#pragma once

#include <string>

#include "graphics/bitmaps/AGBitmap.h"

namespace host {

/// Makes the folder; one that is there already, and the empty path, are fine.
bool MakeFolder(const std::string& path, std::string* error);

/// Writes the bitmap as a PNG file, whole or not at all.
bool SavePNG(const AGBitmap& bitmap, const std::string& path, std::string* error);

}  // namespace host
