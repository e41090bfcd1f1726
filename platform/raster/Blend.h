// The blend modes that images use.
#pragma once

#include "platform/raster/Kernels.h"

namespace raster {

/// Mixes rows of a source by the ink's blend mode, soft light or hard light, into `count` pixels from (x, y) on, as far
/// as their coverage of a byte each goes. The formulas are those of ISO 32000-1, 11.3.5.2.
void BlendThrough(const Surface& surface, int x, int y, int count, const unsigned char* coverage, const Ink& ink);

}  // namespace raster
