// Text drawn glyph by glyph. Private to the native layer.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/text/CTLineValue.h"

namespace platform {

/// Fills the line's glyphs, its underline left out; on a page they stay text. False, with nothing drawn, for glyphs so
/// large that their outlines have to be filled instead. The matrix, scaled to the line's font, has an inverse.
bool PaintGlyphs(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint);

}  // namespace platform
