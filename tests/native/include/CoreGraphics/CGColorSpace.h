#pragma once
#include <CoreGraphics/CGBase.h>
typedef struct CGColorSpace* CGColorSpaceRef;
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
CG_EXTERN CGColorSpaceRef CGColorSpaceCreatePattern(CGColorSpaceRef baseSpace);
CG_EXTERN void CGColorSpaceRelease(CGColorSpaceRef space);
