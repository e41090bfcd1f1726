// The area of a stroke as a path to be filled. Private to the native layer.
//
// cairo strokes within its own fixed numbers. A stroke that is wider than those allow is put together here, in doubles,
// and cut like any other filled path.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/paths/PathCut.h"

namespace platform {

/// Appends to `out` polygons and arcs of device space that turn the same way, so that their union, by the non-zero
/// winding rule, is what `path`, which lies in device space, covers when stroked with the state's width, cap and join.
/// `penToDevice` shapes the nib and has an inverse. What is farther from `seen` than the stroke reaches may be left
/// out.
void AddStrokeArea(const CGPath& path, const CGAffineTransform& penToDevice, const GraphicsState& state,
                   const CutBox& seen, CGPath* out);

}  // namespace platform
