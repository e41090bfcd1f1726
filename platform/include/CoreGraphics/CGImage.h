// Images: pixels that do not change.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGBase.h"

struct CGImage;
typedef struct CGImage* CGImageRef;

enum CGImageAlphaInfo : uint32_t { kCGImageAlphaNone = 0, kCGImageAlphaPremultipliedFirst = 2 };

typedef uint32_t CGBitmapInfo;
/// Pixels are 32-bit numbers whose least byte comes first; without it their greatest does.
enum : CGBitmapInfo { kCGBitmapByteOrder32Little = 2 << 12 };

/// Another reference to the same pixels, which nobody can change.
CG_EXTERN CGImageRef CGImageCreateCopy(CGImageRef image);
CG_EXTERN void CGImageRelease(CGImageRef image);

/// Pixels; 0 for null.
CG_EXTERN size_t CGImageGetWidth(CGImageRef image);
CG_EXTERN size_t CGImageGetHeight(CGImageRef image);
/// None for null and for an image whose every pixel is opaque.
CG_EXTERN CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image);
