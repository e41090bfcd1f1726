// Images: pixels that do not change.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGBase.h"
#include "CoreGraphics/CGContext.h"

struct CGImage;
typedef struct CGImage* CGImageRef;

/// What CGImageGetAlphaInfo tells.
enum { kCGImageAlphaNone = 0, kCGImageAlphaPremultipliedFirst = 2 };

/// A copy of a bitmap context's pixels; null for any other context. The caller releases it.
CG_EXTERN CGImageRef CGBitmapContextCreateImage(CGContextRef context);
/// Another reference to the same pixels, which nobody can change.
CG_EXTERN CGImageRef CGImageCreateCopy(CGImageRef image);
CG_EXTERN void CGImageRelease(CGImageRef image);

/// Pixels; 0 for null.
CG_EXTERN size_t CGImageGetWidth(CGImageRef image);
CG_EXTERN size_t CGImageGetHeight(CGImageRef image);
/// None for null and for an image whose every pixel is opaque.
CG_EXTERN int CGImageGetAlphaInfo(CGImageRef image);

/// Draws the image, its first row on top, into a rectangle of user space. Where cairo is drawn with, that is everywhere
/// but on bitmaps, a side above 32767 is too large for it: a page can't be finished then, elsewhere nothing is drawn.
CG_EXTERN void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);
