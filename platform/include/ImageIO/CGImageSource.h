// Images read from files: PNG, JPEG and TIFF, known by their first bytes.
//
// Pixels are given as they are stored: an orientation, a colour profile or a gamma that a file asks for is not applied.
// Of a file with several images the first is offered, and no other. A damaged file, or one that ends early, gives no
// image at all; one that lacks nothing but the mark of its end (of a JPEG or PNG file) is whole.
//
// TIFF samples of 16 bits become 8. Those of 32 or 64 bits count from 0 to the largest of their type, negative ones as
// 0; those of floating point (16, 32 or 64 bits) from 0 to 1, what lies outside is cut and what is no number is 0. Lab
// becomes sRGB, from the file's white point (D50 without one) to that of sRGB by the Bradford matrix.
#pragma once

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFURL.h"
#include "CoreGraphics/CGImage.h"

typedef struct CGImageSource* CGImageSourceRef;

/// Reads the file, which has to be a regular one, into memory; CFRelease frees it. `options` is not used and may be
/// null. Null for null, a file that cannot be read, and a format that is not known.
CG_EXTERN CGImageSourceRef CGImageSourceCreateWithURL(CFURLRef url, CFDictionaryRef options);
/// 1, or 0 for null.
CG_EXTERN size_t CGImageSourceGetCount(CGImageSourceRef source);
/// Decodes the image at `index`; the caller releases it. Null for null, another index than 0, and damage.
CG_EXTERN CGImageRef CGImageSourceCreateImageAtIndex(CGImageSourceRef source, size_t index, CFDictionaryRef options);
