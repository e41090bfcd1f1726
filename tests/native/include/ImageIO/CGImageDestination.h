#pragma once
#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFURL.h>
#include <CoreGraphics/CGImage.h>
typedef struct CGImageDestination* CGImageDestinationRef;
CG_EXTERN const CFStringRef kCGImageDestinationLossyCompressionQuality;
CG_EXTERN CGImageDestinationRef CGImageDestinationCreateWithURL(CFURLRef url, CFStringRef type, size_t count,
                                                                CFDictionaryRef options);
CG_EXTERN CGImageDestinationRef CGImageDestinationCreateWithData(CFMutableDataRef data, CFStringRef type, size_t count,
                                                                 CFDictionaryRef options);
CG_EXTERN void CGImageDestinationAddImage(CGImageDestinationRef idst, CGImageRef image, CFDictionaryRef properties);
CG_EXTERN bool CGImageDestinationFinalize(CGImageDestinationRef idst);
