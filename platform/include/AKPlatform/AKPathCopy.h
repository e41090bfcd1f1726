// Another name for a copy of a path.
#pragma once

#include "CoreGraphics/CGPath.h"

/// CGPathCreateCopyByTransformingPath, which has the same arguments.
CG_EXTERN CGPathRef CGPathCreateCopyAndTransform(CGPathRef path, const CGAffineTransform* m);
