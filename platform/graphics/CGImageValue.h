// What an image is made of. Private to the native layer.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "CoreGraphics/CGContext.h"
#include "platform/foundation/NativeObject.h"
#include "platform/graphics/CairoHandles.h"
#include "platform/raster/Kernels.h"

namespace platform {

/// The memory of an image: 32-bit words, premultiplied, alpha in the highest byte, then red, green and blue; rows from
/// the top down, without gaps.
class ImagePixels {
 public:
  ImagePixels() = default;
  /// Transparent black. Not IsValid without memory, or when a side is 0 or above 2^29.
  ImagePixels(std::size_t width, std::size_t height);

  bool IsValid() const { return words_ != nullptr; }
  std::size_t Width() const { return width_; }
  std::size_t Height() const { return height_; }
  std::uint32_t* Row(std::size_t y) { return words_.get() + y * width_; }
  const std::uint32_t* Row(std::size_t y) const { return words_.get() + y * width_; }
  raster::PixelGrid Grid() const { return {words_.get(), width_, static_cast<int>(width_), static_cast<int>(height_)}; }

 private:
  struct Free {
    void operator()(std::uint32_t* words) const { std::free(words); }
  };
  std::unique_ptr<std::uint32_t[], Free> words_;
  std::size_t width_ = 0;
  std::size_t height_ = 0;
};

}  // namespace platform

struct CGImage final : platform::NativeObject {
  CGImage(platform::ImagePixels imagePixels, bool imageHasAlpha)
      : pixels(std::move(imagePixels)), hasAlpha(imageHasAlpha) {}

  const platform::ImagePixels pixels;
  const bool hasAlpha;

  /// The pixels for cairo, as long as the image lives. In an error state when a side is above 32767, which is cairo's
  /// limit, or memory lacks.
  cairo_surface_t* Surface() const;

 private:
  mutable platform::CairoSurface surface_;  // ends before the pixels
};

namespace platform {

/// How cairo looks at the image's pixels; `imageToDevice` maps them to those of the target.
cairo_filter_t FilterOf(CGInterpolationQuality quality, const CGAffineTransform& imageToDevice);
cairo_operator_t OperatorOf(CGBlendMode mode);

}  // namespace platform
