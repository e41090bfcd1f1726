#include "platform/graphics/ImageRows.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/BitmapPaint.h"
#include "platform/graphics/CGImageValue.h"
#include "platform/graphics/ImageResample.h"
#include "platform/graphics/ShadingRows.h"

namespace platform {
namespace {

bool IsMovedByPixels(const CGAffineTransform& m) {
  constexpr double kFarthest = 1 << 30;
  return m.a == 1 && m.b == 0 && m.c == 0 && m.d == 1 && m.tx == std::floor(m.tx) && m.ty == std::floor(m.ty) &&
         std::fabs(m.tx) < kFarthest && std::fabs(m.ty) < kFarthest;
}

// An image that is drawn turned and smaller is made smaller first, upright, so that no detail is skipped. From what is
// left of the map on it is drawn as it is.
CairoSurface Shrink(const raster::PixelGrid& image, double least, CGAffineTransform* toDevice) {
  const double scaleX = std::hypot(toDevice->a, toDevice->b);
  const double scaleY = std::hypot(toDevice->c, toDevice->d);
  if (std::min(scaleX, scaleY) >= least) return nullptr;
  const PixelBox box{0, 0, static_cast<int>(std::ceil(image.width * std::min(scaleX, 1.0))),
                     static_cast<int>(std::ceil(image.height * std::min(scaleY, 1.0)))};
  const double kx = static_cast<double>(box.x1) / image.width;
  const double ky = static_cast<double>(box.y1) / image.height;
  CairoSurface smaller = ResampleForDrawing(image, {kx, 0, 0, ky, 0, 0}, box);
  if (smaller != nullptr) *toDevice = CGAffineTransformScale(*toDevice, 1 / kx, 1 / ky);
  return smaller;
}

// Above this scale the four pixels around are enough, at any quality but the highest.
constexpr double kLeastScale = 0.75;

}  // namespace

raster::PixelGrid GridOf(cairo_surface_t* image) {
  cairo_surface_flush(image);
  return {reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(image)),
          static_cast<std::size_t>(cairo_image_surface_get_stride(image)) / sizeof(std::uint32_t),
          cairo_image_surface_get_width(image), cairo_image_surface_get_height(image)};
}

ImageRows::ImageRows(const raster::PixelGrid& image, const CGAffineTransform& toDevice, double alpha,
                     raster::PixelOrder order)
    : image_(image),
      toImage_(InverseOf(toDevice)),
      isMoved_(IsMovedByPixels(toDevice)),
      alpha_(static_cast<unsigned int>(std::clamp(alpha, 0.0, 1.0) * 255 + 0.5)),
      order_(order) {}

void ImageRows::Copy(int x, int y, int count, std::uint32_t* pixels) const {
  const int row = std::clamp(y + static_cast<int>(toImage_.ty), 0, image_.height - 1);
  const std::uint32_t* source = image_.pixels + static_cast<std::size_t>(row) * image_.stride;
  const int first = x + static_cast<int>(toImage_.tx);
  const int before = std::clamp(-first, 0, count);
  const int inside = std::clamp(image_.width - std::max(first, 0), 0, count - before);
  const std::uint32_t* from = source + std::max(first, 0);
  std::fill_n(pixels, before, raster::InOrder(source[0], order_));
  if (order_ == raster::PixelOrder::kAlphaFirst) {
    raster::CopyReversed(from, static_cast<std::size_t>(inside), pixels + before);
  } else {
    std::copy_n(from, inside, pixels + before);
  }
  std::fill(pixels + before + inside, pixels + count, raster::InOrder(source[image_.width - 1], order_));
}

void ImageRows::Fetch(int x, int y, int count, std::uint32_t* pixels) const {
  if (isMoved_) {
    Copy(x, y, count, pixels);
  } else {
    const CGPoint p = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, toImage_);
    raster::LookUpBilinear(image_, {p.x - 0.5, p.y - 0.5, toImage_.a, toImage_.b, order_}, count, pixels);
  }
  if (alpha_ != 255) {
    raster::ScaleBytes(reinterpret_cast<unsigned char*>(pixels), alpha_,
                       static_cast<std::size_t>(count) * sizeof(std::uint32_t));
  }
}

void DrawImageOnBitmap(CGContext* context, const CGImage& image, const CGRect& rect,
                       const CGAffineTransform& toDevice) {
  CGPath outline;
  const CGAffineTransform userToDevice = context->UserToDevice();
  CGPathAddRect(&outline, &userToDevice, rect);
  raster::Shape shape;
  shape.path = ViewOf(outline);
  const PixelBox box = raster::BoxOf(shape, ClipOnBitmap(context).box);
  if (!box.IsEmpty()) {
    const bool isBest = context->state.interpolation == kCGInterpolationHigh;
    raster::PixelGrid pixels = image.pixels.Grid();
    CGAffineTransform m = toDevice;
    CairoSurface resampled = isBest ? ResampleForDrawing(pixels, m, box) : nullptr;
    if (resampled != nullptr) {
      m = {1, 0, 0, 1, static_cast<double>(box.x0), static_cast<double>(box.y0)};
    } else if (context->state.interpolation != kCGInterpolationLow) {
      resampled = Shrink(pixels, isBest ? 1 : kLeastScale, &m);
    }
    if (resampled != nullptr) pixels = GridOf(resampled.get());
    const raster::PixelOrder order = SurfaceOf(*context->bitmap).order;
    const ImageRows rows(pixels, m, context->state.alpha, order);
    const bool isOpaque = !image.hasAlpha && context->state.alpha >= 1;
    RowsOnBitmap(context, rows, isOpaque, outline);
  }
}

}  // namespace platform
