// What an image is made of. Private to the native layer.
#pragma once

#include "CoreGraphics/CGImage.h"
#include "platform/CairoHandles.h"
#include "platform/NativeObject.h"

struct CGImage final : platform::NativeObject {
  CGImage(platform::CairoSurface imagePixels, bool imageHasAlpha)
      : pixels(std::move(imagePixels)), hasAlpha(imageHasAlpha) {}

  const platform::CairoSurface pixels;  ///< rows from the top down, premultiplied
  const bool hasAlpha;
};
