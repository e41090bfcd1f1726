// Shadings: colours that a function gives along an axis or outwards from a centre.
#pragma once

#include <stdbool.h>

#include "CoreGraphics/CGBase.h"
#include "CoreGraphics/CGColorSpace.h"
#include "CoreGraphics/CGFunction.h"
#include "CoreGraphics/CGGeometry.h"

struct CGShading;
typedef struct CGShading* CGShadingRef;

/// The function's input goes from 0 at `start` to 1 at `end`; its outputs are red, green, blue, alpha, 0 to 1.
/// Extending paints beyond an end in the colour of that end; without it nothing is painted there. The function is
/// evaluated at 1025 inputs when the shading is made. Null unless the space is device RGB and the points are apart.
CG_EXTERN CGShadingRef CGShadingCreateAxial(CGColorSpaceRef space, CGPoint start, CGPoint end, CGFunctionRef function,
                                            bool extendStart, bool extendEnd);
/// From a circle to one around the same centre; null for circles with different centres, or radii that are negative or
/// equal.
CG_EXTERN CGShadingRef CGShadingCreateRadial(CGColorSpaceRef space, CGPoint start, CGFloat startRadius, CGPoint end,
                                             CGFloat endRadius, CGFunctionRef function, bool extendStart,
                                             bool extendEnd);
CG_EXTERN void CGShadingRelease(CGShadingRef shading);
