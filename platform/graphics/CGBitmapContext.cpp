// Contexts over pixels of the caller's memory.
//
// cairo draws only pixels that are blue, green, red, alpha in memory. A context over such pixels draws straight into
// them. Pixels with the alpha first are served from a shadow in cairo's order: the stretch that an operation touches is
// brought in before it and taken out after it, so that the caller's memory is always up to date.
#include "CoreGraphics/CGBitmapContext.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "platform/graphics/CGColorSpaceValue.h"
#include "platform/graphics/CGContextState.h"
#include "platform/graphics/PixelOrder.h"

namespace {

using platform::PixelBox;

constexpr std::size_t kMaxSide = 32767;  // cairo's limit for image surfaces
constexpr std::size_t kBytesPerPixel = 4;

class BitmapTarget : public platform::DrawingTarget {
 public:
  BitmapTarget(const BitmapInfo& info, platform::CairoSurface surface) : info_(info), surface_(std::move(surface)) {}

  // The caller may have written pixels since the last operation. cairo has to be told, or a surface that it cleared
  // itself stays clear in its books, and what lies below is left out of the next operation.
  void WillDraw(const PixelBox&) override { cairo_surface_mark_dirty(surface_.get()); }
  void DidDraw(const PixelBox&) override {}
  PixelBox Bounds() const override { return {0, 0, static_cast<int>(info_.width), static_cast<int>(info_.height)}; }

  const BitmapInfo& Info() const { return info_; }

 protected:
  cairo_surface_t* Surface() const { return surface_.get(); }

 private:
  const BitmapInfo info_;
  platform::CairoSurface surface_;
};

class ShadowedTarget final : public BitmapTarget {
 public:
  using BitmapTarget::BitmapTarget;

  void WillDraw(const PixelBox& box) override {
    for (int y = box.y0; y < box.y1; ++y) CopyReversed(ShadowRow(y), CallerRow(y), box);
    BitmapTarget::WillDraw(box);
  }
  void DidDraw(const PixelBox& box) override {
    for (int y = box.y0; y < box.y1; ++y) CopyReversed(CallerRow(y), ShadowRow(y), box);
  }

 private:
  unsigned char* ShadowRow(int y) const {
    return cairo_image_surface_get_data(Surface()) +
           std::size_t(y) * std::size_t(cairo_image_surface_get_stride(Surface()));
  }
  unsigned char* CallerRow(int y) const {
    return static_cast<unsigned char*>(Info().data) + std::size_t(y) * Info().bytesPerRow;
  }
  static void CopyReversed(unsigned char* target, const unsigned char* source, const PixelBox& box) {
    const std::size_t start = std::size_t(box.x0) * kBytesPerPixel;
    platform::CopyBytesReversed(target + start, source + start, std::size_t(box.x1 - box.x0));
  }
};

bool IsSupported(const BitmapInfo& info) {
  return info.data != nullptr && info.width >= 1 && info.width <= kMaxSide && info.height >= 1 &&
         info.height <= kMaxSide && info.bytesPerRow % kBytesPerPixel == 0 &&
         info.bytesPerRow >= info.width * kBytesPerPixel && info.bytesPerRow <= INT32_MAX &&
         (info.bitmapInfo == kCGBitmapAlphaFirst || info.bitmapInfo == kCGBitmapBlueFirst);
}

const BitmapInfo* InfoOf(CGContextRef context) { return context == nullptr ? nullptr : context->bitmap; }

}  // namespace

CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
                                   CGColorSpaceRef space, uint32_t bitmapInfo) {
  const BitmapInfo info{data, width, height, bytesPerRow, bitmapInfo};
  if (bitsPerComponent != 8 || space == nullptr || space->kind != CGColorSpace::Kind::kDeviceRGB ||
      !IsSupported(info)) {
    return nullptr;
  }
  const int w = static_cast<int>(width);
  const int h = static_cast<int>(height);
  const bool shadowed = bitmapInfo == kCGBitmapAlphaFirst;
  platform::CairoSurface surface(shadowed ? cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h)
                                          : cairo_image_surface_create_for_data(static_cast<unsigned char*>(data),
                                                                                CAIRO_FORMAT_ARGB32, w, h,
                                                                                static_cast<int>(bytesPerRow)));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  platform::LazyCairo cairo(surface.get());
  std::unique_ptr<BitmapTarget> target;
  if (shadowed) {
    target = std::make_unique<ShadowedTarget>(info, std::move(surface));
  } else {
    target = std::make_unique<BitmapTarget>(info, std::move(surface));
  }
  const BitmapInfo* described = &target->Info();
  const CGAffineTransform flip{1, 0, 0, -1, 0, static_cast<double>(height)};
  auto* context = new CGContext(std::move(cairo), std::move(target), flip);
  context->bitmap = described;
  return context;
}

void* CGBitmapContextGetData(CGContextRef context) {
  const BitmapInfo* info = InfoOf(context);
  return info == nullptr ? nullptr : info->data;
}

size_t CGBitmapContextGetWidth(CGContextRef context) {
  const BitmapInfo* info = InfoOf(context);
  return info == nullptr ? 0 : info->width;
}

size_t CGBitmapContextGetHeight(CGContextRef context) {
  const BitmapInfo* info = InfoOf(context);
  return info == nullptr ? 0 : info->height;
}

size_t CGBitmapContextGetBitsPerPixel(CGContextRef context) {
  return InfoOf(context) == nullptr ? 0 : kBytesPerPixel * 8;
}

size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
  const BitmapInfo* info = InfoOf(context);
  return info == nullptr ? 0 : info->bytesPerRow;
}
