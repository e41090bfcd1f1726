#include "CoreGraphics/CGImage.h"

#include <cmath>
#include <cstring>

#include "AKPlatform/AKPixelOrder.h"
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

// On a page, or on pixels of the host.
void DrawThroughCairo(CGContext* context, const CGRect& rect, const CGImage& image, const CGAffineTransform& m) {
  if (cairo_surface_status(image.Surface()) != CAIRO_STATUS_SUCCESS && !context->target->IsVector()) {
    return;  // too large: an error would stay with the host's context
  }
  platform::ApplyClip(context);
  if (context->target->DrawImage(context, image, m)) return;
  cairo_t* cairo = context->cairo.get();
  CGPath outline;
  const CGAffineTransform userToDevice = context->UserToDevice();
  CGPathAddRect(&outline, &userToDevice, rect);
  platform::PixelBox box;
  cairo_new_path(cairo);
  const bool drawable = platform::EmitPath(cairo, outline, context->target->Bounds(), &box);
  box = platform::WidenBox(box, 0, context->target->Bounds());
  if (!drawable || box.IsEmpty()) return;

  platform::CairoSurface resampled;
  if (context->state.interpolation == kCGInterpolationHigh) {
    resampled = platform::ResampleForDrawing(image.pixels.Grid(), m, box);
  }
  cairo_save(cairo);
  if (resampled) {
    cairo_identity_matrix(cairo);
    cairo_set_source_surface(cairo, resampled.get(), box.x0, box.y0);
  } else {
    const cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
    cairo_set_matrix(cairo, &matrix);
    cairo_set_source_surface(cairo, image.Surface(), 0, 0);
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

cairo_surface_t* CGImage::Surface() const {
  if (surface_ == nullptr) {
    constexpr std::size_t kCairoLimit = 32767;
    const bool fits = pixels.Width() <= kCairoLimit && pixels.Height() <= kCairoLimit;
    const int width = fits ? static_cast<int>(pixels.Width()) : -1;  // which cairo refuses
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels.Row(0)));
    surface_.reset(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, width,
                                                       fits ? static_cast<int>(pixels.Height()) : -1, width * 4));
  }
  return surface_.get();
}

CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
  if (context == nullptr || context->bitmap == nullptr) return nullptr;
  const BitmapInfo& info = *context->bitmap;
  platform::ImagePixels copy(info.width, info.height);
  if (!copy.IsValid()) return nullptr;
  bool translucent = false;
  for (std::size_t y = 0; y < info.height; ++y) {
    translucent |= CopyRow(info, y, reinterpret_cast<unsigned char*>(copy.Row(y)));
  }
  return platform::MadeOrNull([&] { return new CGImage(std::move(copy), translucent); });
}

CGImageRef CGImageCreateCopy(CGImageRef image) {
  if (image != nullptr) image->Retain();
  return image;
}

void CGImageRelease(CGImageRef image) {
  if (image != nullptr) image->Release();
}

size_t CGImageGetWidth(CGImageRef image) { return image == nullptr ? 0 : image->pixels.Width(); }

size_t CGImageGetHeight(CGImageRef image) { return image == nullptr ? 0 : image->pixels.Height(); }

CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image) {
  return image != nullptr && image->hasAlpha ? kCGImageAlphaPremultipliedFirst : kCGImageAlphaNone;
}

void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  if (context == nullptr || image == nullptr || CGRectIsEmpty(rect)) return;
  const CGAffineTransform m = ImageToDevice(*context, rect, static_cast<double>(CGImageGetWidth(image)),
                                            static_cast<double>(CGImageGetHeight(image)));
  if (!platform::IsInvertible(m)) return;
  platform::Guarded(context, [&] {
    if (!context->CanPaint()) return;
    if (context->bitmap != nullptr) {
      platform::DrawImageOnBitmap(context, *image, rect, m);
    } else {
      DrawThroughCairo(context, rect, *image, m);
    }
  });
}
