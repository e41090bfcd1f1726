// A bitmap's pixels as a file in memory.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGBitmapContext.h"

/// The pixels as a PNG file in memory, allocated with malloc and freed by the caller; `*size` receives its length.
/// Null on failure. Alpha is kept unless all pixels are opaque, and colours are stored not premultiplied.
CG_EXTERN void* CGBitmapContextCopyPNG(CGContextRef context, size_t* size);
