// Colour spaces. There are two: device RGB, and the space of patterns that carry their own colours.
#pragma once

#include "CoreGraphics/CGBase.h"

struct CGColorSpace;
typedef struct CGColorSpace* CGColorSpaceRef;

CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
/// `base` is null for patterns that carry their own colours; no other pattern space exists, and null is returned.
CG_EXTERN CGColorSpaceRef CGColorSpaceCreatePattern(CGColorSpaceRef base);
CG_EXTERN void CGColorSpaceRelease(CGColorSpaceRef space);
