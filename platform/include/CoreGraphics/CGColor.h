// Colours as objects, which attributes of text can hold.
#pragma once

#include "CoreGraphics/CGBase.h"
#include "CoreGraphics/CGColorSpace.h"
#include "CoreGraphics/CGGeometry.h"

typedef const struct CGColor* CGColorRef;

/// `components` are red, green, blue and alpha, 0 to 1, not premultiplied. Null unless the space is device RGB.
CG_EXTERN CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
CG_EXTERN void CGColorRelease(CGColorRef color);
