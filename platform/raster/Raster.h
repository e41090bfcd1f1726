// The engine's face: shapes, masks and boxes painted onto pixels.
//
// Nothing here takes memory but a workspace of 2 MB a thread and, for masks under a clip, for blend modes and for
// shapes of more than 16,000 edges, a row or a tile of bytes. What returns a bool paints nothing, or not all, and
// returns false when memory lacked.
#pragma once

#include "platform/raster/Kernels.h"
#include "platform/raster/Stroke.h"

namespace raster {

/// A path in pixels of the target, filled or stroked.
struct Shape {
  PathView path;
  FillRule rule = FillRule::kNonZero;
  bool antialias = true;
  const StrokeStyle* stroke = nullptr;  ///< null: the path is filled, open contours closed by lines
};

/// Where it is painted: within a box, and through a mask if there is one, which contains the box.
struct Clip {
  Box box;
  const MaskView* mask = nullptr;
};

/// The pixels that a shape may touch, within `bounds`; empty when there is nothing to paint or a point is no number.
Box BoxOf(const Shape& shape, const Box& bounds);

bool Paint(const Surface& surface, const Shape& shape, const Clip& clip, const Ink& ink);

/// Writes the coverage of a shape's pixels within `box`, 0 to 255, rows of its width `stride` bytes apart; all of the
/// box is written.
bool Cover(const Shape& shape, const Box& box, unsigned char* bytes, std::size_t stride);

/// Paints through a mask, which need not lie within the surface.
bool PaintMask(const Surface& surface, const MaskView& mask, const Clip& clip, const Ink& ink);

/// Paints whole pixels.
bool PaintBox(const Surface& surface, const Box& box, const Clip& clip, const Ink& ink);

}  // namespace raster
