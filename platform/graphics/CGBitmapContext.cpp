// Contexts over pixels of the caller's memory, which the engine of platform/raster draws straight into.
#include "CoreGraphics/CGBitmapContext.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "AKPlatform/AKPixelOrder.h"
#include "platform/graphics/CGColorSpaceValue.h"
#include "platform/graphics/CGContextState.h"

namespace {

using platform::PixelBox;

constexpr std::size_t kMaxSide = std::size_t{1} << 29;
constexpr std::size_t kBytesPerPixel = 4;

class BitmapTarget final : public platform::DrawingTarget {
 public:
  explicit BitmapTarget(const BitmapInfo& info) : info_(info) {}

  PixelBox Bounds() const override { return {0, 0, static_cast<int>(info_.width), static_cast<int>(info_.height)}; }
  const BitmapInfo& Info() const { return info_; }

 private:
  const BitmapInfo info_;
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
  return platform::MadeOrNull([&info] {
    auto target = std::make_unique<BitmapTarget>(info);
    const BitmapInfo* described = &target->Info();
    const CGAffineTransform flip{1, 0, 0, -1, 0, static_cast<double>(info.height)};
    auto* context = new CGContext(platform::CairoContext(), std::move(target), flip);
    context->bitmap = described;
    return context;
  });
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
