// Names of the properties that an image is written with.
#pragma once

#include "CoreFoundation/CFString.h"

/// A number, the horizontal or vertical resolution in dots an inch. Both are written, or none.
CG_EXTERN const CFStringRef kCGImagePropertyDPIWidth;
CG_EXTERN const CFStringRef kCGImagePropertyDPIHeight;
/// A boolean. False writes no alpha: a translucent image is mixed with white. Without it a translucent image keeps its
/// alpha where the format has one.
CG_EXTERN const CFStringRef kCGImagePropertyHasAlpha;
