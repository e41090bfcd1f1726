// Lines with gaps.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGContext.h"

/// Strokes that follow are drawn in dashes, each subpath from its start: `lengths` are those of strokes and gaps in
/// turn, in line widths (of an elliptical nib, the longer one), not below 0, an even count. Part of the state. With a
/// count of 0, and where there would be more than 50,000 dashes, lines have no gaps.
CG_EXTERN void CGContextSetDashes(CGContextRef context, const CGFloat* lengths, size_t count);
