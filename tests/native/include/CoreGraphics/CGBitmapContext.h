#pragma once
#include <CoreGraphics/CGContext.h>
CG_EXTERN CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                             size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo);
CG_EXTERN void* CGBitmapContextGetData(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetWidth(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetHeight(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
CG_EXTERN CGImageRef CGBitmapContextCreateImage(CGContextRef context);
