#include "CoreGraphics/CGImage.h"

#include <cmath>
#include <cstring>

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGImageValue.h"
#include "platform/graphics/ImageResample.h"
#include "platform/graphics/ImageRows.h"

namespace {

// Copies one row into cairo's order of bytes; returns whether a pixel of it is not opaque.
bool CopyRow(const BitmapInfo& info, std::size_t y, unsigned char* target) {
  const auto* source = static_cast<const unsigned char*>(info.data) + y * info.bytesPerRow;
  const bool reversed = info.bitmapInfo == kCGBitmapAlphaFirst;
  bool translucent = false;
  for (std::size_t x = 0; x < info.width; ++x, source += 4, target += 4) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, source, sizeof(pixel));
    if (reversed) pixel = __builtin_bswap32(pixel);
    translucent |= pixel >> 24 != 255;
    std::memcpy(target, &pixel, sizeof(pixel));
  }
  return translucent;
}

// From pixels of the image, rows down, to device space.
CGAffineTransform ImageToDevice(const CGContext& context, const CGRect& rect, double width, double height) {
  const CGAffineTransform imageToUser{rect.size.width / width,         0, 0, -rect.size.height / height, rect.origin.x,
                                      rect.origin.y + rect.size.height};
  return CGAffineTransformConcat(imageToUser, context.UserToDevice());
}

}  // namespace

namespace platform {

cairo_filter_t FilterOf(CGInterpolationQuality quality, const CGAffineTransform& imageToDevice) {
  switch (quality) {
    case kCGInterpolationLow:
      return CAIRO_FILTER_BILINEAR;
    case kCGInterpolationHigh:
      // Enlarged by more than two, cairo's best filter sharpens the picture into squares instead of smoothing it.
      return std::fabs(imageToDevice.a * imageToDevice.d - imageToDevice.b * imageToDevice.c) > 1
                 ? CAIRO_FILTER_BILINEAR
                 : CAIRO_FILTER_BEST;
    default:
      return CAIRO_FILTER_GOOD;
  }
}

cairo_operator_t OperatorOf(CGBlendMode mode) {
  switch (mode) {
    case kCGBlendModeSoftLight:
      return CAIRO_OPERATOR_SOFT_LIGHT;
    case kCGBlendModeHardLight:
      return CAIRO_OPERATOR_HARD_LIGHT;
    default:
      return CAIRO_OPERATOR_OVER;
  }
}

}  // namespace platform

CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
  if (context == nullptr || context->bitmap == nullptr) return nullptr;
  const BitmapInfo& info = *context->bitmap;
  platform::CairoSurface copy(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(info.width), static_cast<int>(info.height)));
  if (cairo_surface_status(copy.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  unsigned char* pixels = cairo_image_surface_get_data(copy.get());
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(copy.get()));
  bool translucent = false;
  for (std::size_t y = 0; y < info.height; ++y) translucent |= CopyRow(info, y, pixels + y * stride);
  cairo_surface_mark_dirty(copy.get());
  return new CGImage(std::move(copy), translucent);
}

CGImageRef CGImageCreateCopy(CGImageRef image) {
  if (image != nullptr) image->Retain();
  return image;
}

void CGImageRelease(CGImageRef image) {
  if (image != nullptr) image->Release();
}

size_t CGImageGetWidth(CGImageRef image) {
  return image == nullptr ? 0 : static_cast<size_t>(cairo_image_surface_get_width(image->pixels.get()));
}

size_t CGImageGetHeight(CGImageRef image) {
  return image == nullptr ? 0 : static_cast<size_t>(cairo_image_surface_get_height(image->pixels.get()));
}

int CGImageGetAlphaInfo(CGImageRef image) {
  return image != nullptr && image->hasAlpha ? kCGImageAlphaPremultipliedFirst : kCGImageAlphaNone;
}

void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  if (context == nullptr || image == nullptr || CGRectIsEmpty(rect)) return;
  const CGAffineTransform m = ImageToDevice(*context, rect, static_cast<double>(CGImageGetWidth(image)),
                                            static_cast<double>(CGImageGetHeight(image)));
  if (!platform::IsInvertible(m)) return;
  if (context->bitmap != nullptr) return platform::DrawImageOnBitmap(context, *image, rect, m);
  platform::ApplyClip(context);
  if (context->target->DrawImage(context, *image, m)) return;
  cairo_t* cairo = context->cairo.get();
  CGMutablePathRef outline = CGPathCreateMutable();
  const CGAffineTransform userToDevice = context->UserToDevice();
  CGPathAddRect(outline, &userToDevice, rect);
  platform::PixelBox box;
  cairo_new_path(cairo);
  const bool drawable = platform::EmitPath(cairo, *outline, context->target->Bounds(), &box);
  CGPathRelease(outline);
  box = platform::WidenBox(box, 0, context->target->Bounds());
  if (!drawable || box.IsEmpty()) return;

  platform::CairoSurface resampled;
  if (context->state.interpolation == kCGInterpolationHigh) {
    resampled = platform::ResampleForDrawing(image->pixels.get(), m, box);
  }
  cairo_save(cairo);
  if (resampled) {
    cairo_identity_matrix(cairo);
    cairo_set_source_surface(cairo, resampled.get(), box.x0, box.y0);
  } else {
    const cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
    cairo_set_matrix(cairo, &matrix);
    cairo_set_source_surface(cairo, image->pixels.get(), 0, 0);
  }
  // The rectangle's edge is that of its outline, not a fading of the last pixels into nothing.
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(cairo),
                           resampled ? CAIRO_FILTER_NEAREST : platform::FilterOf(context->state.interpolation, m));
  cairo_set_operator(cairo, platform::OperatorOf(context->state.blendMode));
  cairo_set_antialias(cairo, context->state.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  cairo_clip(cairo);
  cairo_paint_with_alpha(cairo, context->state.alpha);
  cairo_restore(cairo);
}
