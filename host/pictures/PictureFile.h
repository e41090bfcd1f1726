// Pictures on the disk.
#pragma once

#include <string>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/text/Problem.h"

namespace host {

/// Makes the folder; one that is there already, and the empty path, are fine.
Result<> MakeFolder(const std::string& path);

/// Writes the bitmap as a PNG file, whole or not at all.
Result<> SavePNG(const AGBitmap& bitmap, const std::string& path);

}  // namespace host
