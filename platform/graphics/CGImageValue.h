// What an image is made of. Private to the native layer.
#pragma once

#include "CoreGraphics/CGImage.h"
#include "platform/foundation/NativeObject.h"
#include "platform/graphics/CairoHandles.h"

struct CGImage final : platform::NativeObject {
  CGImage(platform::CairoSurface imagePixels, bool imageHasAlpha)
      : pixels(std::move(imagePixels)), hasAlpha(imageHasAlpha) {}

  const platform::CairoSurface pixels;  ///< rows from the top down, premultiplied
  const bool hasAlpha;
};

namespace platform {

/// How cairo looks at the image's pixels; `imageToDevice` maps them to those of the target.
cairo_filter_t FilterOf(CGInterpolationQuality quality, const CGAffineTransform& imageToDevice);
cairo_operator_t OperatorOf(CGBlendMode mode);

}  // namespace platform
