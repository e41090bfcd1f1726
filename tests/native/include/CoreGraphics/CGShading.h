#pragma once
#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGFunction.h>
#include <CoreGraphics/CGGeometry.h>
typedef struct CGShading* CGShadingRef;
CG_EXTERN CGShadingRef CGShadingCreateAxial(CGColorSpaceRef space, CGPoint start, CGPoint end, CGFunctionRef function,
                                            bool extendStart, bool extendEnd);
CG_EXTERN CGShadingRef CGShadingCreateRadial(CGColorSpaceRef space, CGPoint start, CGFloat startRadius, CGPoint end,
                                             CGFloat endRadius, CGFunctionRef function, bool extendStart,
                                             bool extendEnd);
CG_EXTERN void CGShadingRelease(CGShadingRef shading);
