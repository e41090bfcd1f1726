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
