// The outlines of a line.
#pragma once

#include "CoreGraphics/CGPath.h"
#include "CoreText/CTLine.h"

/// Appends the outlines of the line's glyphs, the baseline starting at the origin of `m` (null: the identity).
CG_EXTERN void CTLineAddToPath(CTLineRef line, const CGAffineTransform* m, CGMutablePathRef path);
