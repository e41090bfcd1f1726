#pragma once
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFURL.h>
#include <CoreGraphics/CGImage.h>
typedef struct CGImageSource* CGImageSourceRef;
CG_EXTERN CGImageSourceRef CGImageSourceCreateWithURL(CFURLRef url, CFDictionaryRef options);
CG_EXTERN size_t CGImageSourceGetCount(CGImageSourceRef isrc);
CG_EXTERN CGImageRef CGImageSourceCreateImageAtIndex(CGImageSourceRef isrc, size_t index, CFDictionaryRef options);
CG_EXTERN CFDictionaryRef CGImageSourceCopyPropertiesAtIndex(CGImageSourceRef isrc, size_t index,
                                                             CFDictionaryRef options);
