#pragma once
#include <CoreGraphics/CGBase.h>
typedef struct CGImage* CGImageRef;
enum CGImageAlphaInfo : uint32_t { kCGImageAlphaNone, kCGImageAlphaPremultipliedLast, kCGImageAlphaPremultipliedFirst };
typedef uint32_t CGBitmapInfo;
enum : CGBitmapInfo { kCGBitmapByteOrder32Little = (2 << 12) };
CG_EXTERN CGImageRef CGImageCreateCopy(CGImageRef image);
CG_EXTERN void CGImageRelease(CGImageRef image);
CG_EXTERN size_t CGImageGetWidth(CGImageRef image);
CG_EXTERN size_t CGImageGetHeight(CGImageRef image);
CG_EXTERN CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image);
