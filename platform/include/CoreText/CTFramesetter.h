// Frames: text of several lines in a rectangle, filled from its top.
//
// A line ends at a line break (CR, LF, both, or a Unicode separator) and, when it is wider than the frame, at the last
// place where the Unicode rules allow it, or where it has to. Lines beyond the bottom are left out. A baseline lies one
// line's ascent below the top of its line; below the line come its descent and its leading.
#pragma once

#include "CoreFoundation/CFArray.h"
#include "CoreFoundation/CFAttributedString.h"
#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGPath.h"
#include "CoreText/CTLine.h"

typedef const struct CTFramesetter* CTFramesetterRef;
typedef const struct CTFrame* CTFrameRef;

/// Null for null, for an empty text and for one without a font.
CG_EXTERN CTFramesetterRef CTFramesetterCreateWithAttributedString(CFAttributedStringRef text);
/// The frame in the bounding box of `path`. `range` is that of the whole text, or of length 0, which means the same;
/// `attributes` is null. Null when anything is missing.
CG_EXTERN CTFrameRef CTFramesetterCreateFrame(CTFramesetterRef framesetter, CFRange range, CGPathRef path,
                                              CFDictionaryRef attributes);

/// The lines from the top down, which stay the frame's.
CG_EXTERN CFArrayRef CTFrameGetLines(CTFrameRef frame);
/// Where the baselines of lines begin, relative to the lower left corner of the frame. `range` must lie within the
/// frame's lines; a length of 0 means all from its location on.
CG_EXTERN void CTFrameGetLineOrigins(CTFrameRef frame, CFRange range, CGPoint* origins);
/// Draws the lines in the context's text drawing mode. The text position is left at the last line's origin.
CG_EXTERN void CTFrameDraw(CTFrameRef frame, CGContextRef context);
