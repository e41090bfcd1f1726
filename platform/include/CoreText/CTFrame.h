// Frames that are laid out (CTFramesetter.h).
#pragma once

#include "CoreFoundation/CFArray.h"
#include "CoreGraphics/CGContext.h"

typedef const struct CTFrame* CTFrameRef;

/// The lines from the top down, which stay the frame's.
CG_EXTERN CFArrayRef CTFrameGetLines(CTFrameRef frame);
/// Where the baselines of lines begin, relative to the lower left corner of the frame. `range` must lie within the
/// frame's lines; a length of 0 means all from its location on.
CG_EXTERN void CTFrameGetLineOrigins(CTFrameRef frame, CFRange range, CGPoint* origins);
/// Draws the lines in the context's text drawing mode. The text position is left at the last line's origin.
CG_EXTERN void CTFrameDraw(CTFrameRef frame, CGContextRef context);
