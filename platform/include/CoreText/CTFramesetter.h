// Frames: text of several lines in a rectangle, filled from its top.
//
// A line ends at a line break (CR, LF, both, or a Unicode separator) and, when it is wider than the frame, at the last
// place where the Unicode rules allow it, or where it has to. Lines beyond the bottom are left out. A baseline lies one
// line's ascent below the top of its line; below the line come its descent and its leading.
#pragma once

#include "CoreFoundation/CFAttributedString.h"
#include "CoreGraphics/CGPath.h"
#include "CoreText/CTFrame.h"

typedef const struct CTFramesetter* CTFramesetterRef;

/// Null for an empty text and for one without a font.
CG_EXTERN CTFramesetterRef CTFramesetterCreateWithAttributedString(CFAttributedStringRef text);
/// The frame in the bounding box of `path`. `range` is that of the whole text, or of length 0, which means the same;
/// `attributes` is null. Null for an empty path.
CG_EXTERN CTFrameRef CTFramesetterCreateFrame(CTFramesetterRef framesetter, CFRange range, CGPathRef path,
                                              CFDictionaryRef attributes);
