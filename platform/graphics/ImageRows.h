// The pixels of an image that is drawn on a bitmap, row by row. Private to the native layer.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/raster/Kernels.h"

struct CGImage;

namespace platform {

/// The pixels of a surface of cairo's, which has to outlive the grid.
raster::PixelGrid GridOf(cairo_surface_t* image);

/// An image under an affine map. Beyond its edges it goes on as its last pixels. The pixels must outlive the rows.
class ImageRows final : public raster::RowSource {
 public:
  /// `toDevice` maps pixels of the image, rows down, to those of the bitmap, and has an inverse; where it only moves by
  /// whole pixels they are copied, otherwise mixed of the four around. `alpha`, 0 to 1, makes the image fainter.
  ImageRows(const raster::PixelGrid& image, const CGAffineTransform& toDevice, double alpha, raster::PixelOrder order);

  void Fetch(int x, int y, int count, std::uint32_t* pixels) const override;

 private:
  void Copy(int x, int y, int count, std::uint32_t* pixels) const;

  raster::PixelGrid image_;
  CGAffineTransform toImage_;
  bool isMoved_;  // by whole pixels
  unsigned int alpha_;
  raster::PixelOrder order_;
};

/// Draws an image, which fills `rect` of user space, on a bitmap. `toDevice` maps its pixels to the bitmap's.
void DrawImageOnBitmap(CGContext* context, const CGImage& image, const CGRect& rect, const CGAffineTransform& toDevice);

}  // namespace platform
