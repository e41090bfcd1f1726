// Lines: text laid out from left to right without an end.
//
// Directions are resolved by the Unicode algorithm, the direction of a line being that of its first letter that has
// one. Characters that the font lacks come from other installed fonts. Line breaks and control characters take no
// room; a tab goes on to the next multiple of 8 spaces. Code units that are no character show as U+FFFD.
//
// Glyphs that a font has as pictures, as those of emoji are, are drawn in their own colours: PNG files (tables CBDT and
// sbix) and layers of flat colour (COLR version 0). Of the fill only the opacity counts, but for layers that take its
// colour. They have no outlines: strokes, clips and paths leave them out. The gradients of COLR version 1 and the
// drawings of the table SVG are not read: of such glyphs no colour is promised.
#pragma once

#include "CoreFoundation/CFAttributedString.h"
#include "CoreGraphics/CGContext.h"

typedef const struct CTLine* CTLineRef;

/// Null for an empty text and for one without a font.
CG_EXTERN CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef text);

/// The box of what the glyphs paint when filled, the underline aside, with the baseline's start at the context's text
/// position, or at the origin for a null context. Nothing painted gives the null rectangle: an infinite origin and no
/// size.
CG_EXTERN CGRect CTLineGetImageBounds(CTLineRef line, CGContextRef context);
/// How far the line goes along its baseline; the other results, which may be null, are those of its tallest fonts.
CG_EXTERN double CTLineGetTypographicBounds(CTLineRef line, CGFloat* ascent, CGFloat* descent, CGFloat* leading);

/// Draws the line, its baseline starting at the context's text position, in the context's text drawing mode.
CG_EXTERN void CTLineDraw(CTLineRef line, CGContextRef context);
