#pragma once
#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGColorSpace.h>
typedef struct CGColor* CGColorRef;
CG_EXTERN CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
