// Images that a procedure draws.
//
// Sizes and rectangles are kit units with y up; scale × factor pixels make one unit. The image is the caller's; null
// when it would have no pixels or they cannot be had.
#pragma once

#include <memory>

#include "graphics/context/AGContext.h"
#include "graphics/images/AGImage.h"

/// Draws `bounds` into a context on transparent pixels whose transform already scales by `scale`, pixels a unit. What
/// the procedure draws with the context's own transform replaced has to be scaled by itself.
using AGImageProc = void (*)(AGContext& context, double scale, const AGRect& bounds, const void* userData);

/// The same for a part: `bounds` is the whole drawing, of which `visible` is asked for. The context shows `visible`:
/// its lower left corner falls on the image's.
using AGImageScrolledProc = void (*)(AGContext& context, double scale, const AGRect& bounds, const AGRect& visible,
                                     const void* userData);

/// An image of `size` drawn by `proc`, which gets the bounds (0, 0, width, height). Null for a size not above 0.
std::unique_ptr<AGImage> AGImageCreateWithProc(AGImageProc proc, const AGSize& size, double scale, double factor,
                                               const void* userData);

/// An image of the part of a drawing of `size` that lies in `visible`, and so of as many pixels as that part has alone.
/// `visible` is cut to the drawing first. Null when nothing is left of it.
std::unique_ptr<AGImage> AGImageScrolledCreateWithProc(AGImageScrolledProc proc, const AGSize& size,
                                                       const AGRect& visible, double scale, double factor,
                                                       const void* userData);
