// Text drawn glyph by glyph. Private to the native layer.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/text/CTLineValue.h"

namespace platform {

/// Whether text has soft edges.
bool IsSoft(const GraphicsState& state);

// In all of these the matrix, scaled to the line's font, has an inverse.

/// Fills the line's glyphs, its underline left out; on a page they stay text. False, with nothing drawn, for glyphs so
/// large that their outlines have to be filled, and their pictures painted, instead.
bool PaintGlyphs(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint);

/// Fills the glyphs that are no pictures by cairo, as text on a page.
void PaintLetters(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint);

/// Paints the glyphs that are pictures, as they are.
void PaintPictures(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint);

}  // namespace platform
