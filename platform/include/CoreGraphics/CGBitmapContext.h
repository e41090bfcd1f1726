// Contexts that draw into pixels of the caller's memory.
//
// Pixels are 32 bits, premultiplied, rows from the top down. The memory belongs to the caller and must outlive the
// context. Between operations it holds what was drawn, and the caller may change it: operations and direct access may
// alternate freely.
#pragma once

#include "CoreGraphics/CGColorSpace.h"
#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGImage.h"

/// Null unless both sides are 1 to 536870912, there are 8 bits a component, `bytesPerRow` is a multiple of 4 that holds
/// a row, `space` is device RGB, and `bitmapInfo` is kCGImageAlphaPremultipliedFirst (in
/// memory: alpha, red, green, blue), alone or with kCGBitmapByteOrder32Little (blue, green, red, alpha).
CG_EXTERN CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                             size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo);

/// 0 or null for a context that is not over a bitmap.
CG_EXTERN void* CGBitmapContextGetData(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetWidth(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetHeight(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
/// A copy of the pixels; null for a context that is not over a bitmap. The caller releases it.
CG_EXTERN CGImageRef CGBitmapContextCreateImage(CGContextRef context);
