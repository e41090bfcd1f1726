// Making images smaller at high quality, along one axis or both.
//
// Along an axis that shrinks the image is convolved with a cubic (R. Keys, "Cubic convolution interpolation for digital
// image processing", 1981) that is stretched to two pixels of the target on each side, so that no detail finer than
// those comes through as a false one; along one that grows, its pixels run into each other linearly, as everywhere.
// First down the columns, then along the rows, which is many times less work than both at once.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CairoHandles.h"
#include "platform/raster/Kernels.h"

namespace platform {

/// What the image looks like on the device pixels of `box`, one pixel each. `toDevice` maps pixels of the image to
/// device space. Null, for cairo to do it, when the image is turned, is drawn smaller along no axis, or
/// memory lacks.
CairoSurface ResampleForDrawing(const raster::PixelGrid& image, const CGAffineTransform& toDevice, const PixelBox& box);

}  // namespace platform
