// Images written to files: PNG, JPEG and TIFF.
#pragma once

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFURL.h"
#include "CoreGraphics/CGImage.h"

typedef struct CGImageDestination* CGImageDestinationRef;

/// A property: a number, 0 (smallest file) to 1 (best picture), for JPEG; 0.75 without it.
CG_EXTERN const CFStringRef kCGImageDestinationLossyCompressionQuality;

/// A file of one image in the format `type` (CoreServices.h); CFRelease frees the destination. Nothing happens on the
/// disk yet. Null for null, another format and another count than 1.
CG_EXTERN CGImageDestinationRef CGImageDestinationCreateWithURL(CFURLRef url, CFStringRef type, size_t count,
                                                                CFDictionaryRef options);
/// Adds the image with properties (CGImageProperties.h), which may be null. An image after the last that fits is
/// ignored.
CG_EXTERN void CGImageDestinationAddImage(CGImageDestinationRef destination, CGImageRef image,
                                          CFDictionaryRef properties);
/// Encodes the image and writes the file, whole or not at all: on failure, which gives false, an old file stays as it
/// was. False, too, when no image was added and on a second call.
CG_EXTERN bool CGImageDestinationFinalize(CGImageDestinationRef destination);
