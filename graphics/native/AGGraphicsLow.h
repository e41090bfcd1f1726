// The bridge to the native drawing API: everything that turns the kit's brushes, pens and paths into native paint.
//
// Every call saves the port's state and restores it at the end; nothing leaks from one call to the next, and every
// native object that a call creates is released in it. A missing port, an empty path, and an invisible brush or pen are
// skipped in silence.
#pragma once

#include <cstdint>

#include "graphics/context/AGContext.h"
#include "graphics/images/AGImage.h"

/// What of a shape is drawn: bit 1 suppresses the stroke, bit 2 the fill.
using AGDrawMode = std::uint32_t;
inline constexpr AGDrawMode kAGDrawModeFillAndStroke = 0;
inline constexpr AGDrawMode kAGDrawModeFillOnly = 1;
inline constexpr AGDrawMode kAGDrawModeStrokeOnly = 2;
inline constexpr AGDrawMode kAGDrawModeNothing = 3;

namespace AGGraphicsLow {

/// Draws the path through `transform` and then the context's own. Returns whether anything was attempted.
bool AGContextDrawPath(const AGContext& context, const AGPath& path, const AGAffineTransform& transform,
                       AGDrawMode mode);

/// Fills a rectangle, rounded to whole units and cut to the surface, with the colour's red, green and blue: the clear
/// is opaque whatever the colour's alpha.
void AGContextClearPixels(const AGContext& context, AGColor color, const AGRect& rect);
/// The same rectangle set to transparent black.
void AGContextErasePixels(const AGContext& context, const AGRect& rect);

/// Draws the image, one unit a pixel, with its lower left corner at `point`, through `transform` and then the context's
/// own. A colour factor below 1 mixes by soft light, one above 1 by hard light.
void AGContextDrawImage(const AGContext& context, const AGImage& image, const AGPoint& point,
                        const AGAffineTransform& transform, AGImageQuality quality);

/// The scale and translation that map `box` onto `target`, narrowed first, when the aspect is kept, around its centre
/// to the ratio of the box. All zero when the box has no width or no height.
AGAffineTransform FitBox(const AGRect& box, const AGRect& target, bool keepAspect);

/// `color` with red, green and blue multiplied by the factor, when that differs from 1 by more than 0.004.
AGColor ApplyColorFactor(AGColor color, double factor);

}  // namespace AGGraphicsLow
