#include "graphics/bitmaps/AGBitmap.h"

#include <cmath>
#include <cstdlib>

#include "AKPlatform/AKPixelOrder.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGImage.h"

namespace {

constexpr std::uint32_t kPixelSize = 4;
constexpr std::size_t kSpareBytes = 4;  // behind the last pixel

unsigned int RoundSide(double side) {
  const double rounded = std::floor(side + 0.5);
  if (!(rounded > 0)) return 0;
  return rounded >= UINT32_MAX ? UINT32_MAX : static_cast<unsigned int>(rounded);
}

AGNativePort* NewNativeContext(void* pixels, unsigned int width, unsigned int height, bool littleEndian) {
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  AGNativePort* context = CGBitmapContextCreate(pixels, width, height, 8, std::size_t{width} * kPixelSize, space,
                                                littleEndian ? kCGBitmapBlueFirst : kCGBitmapAlphaFirst);
  CGColorSpaceRelease(space);
  return context;
}

}  // namespace

AGBitmap::AGBitmap(const AGSize& size, unsigned int flags)
    : AGBitmap(RoundSide(size.width), RoundSide(size.height), flags) {}

AGBitmap::AGBitmap(unsigned int width, unsigned int height, unsigned int flags) {
  LowCreateBitmapWithSize(width, height, (flags & kFlagZeroFill) != 0, (flags & kFlagLittleEndian) != 0);
}

AGBitmap::AGBitmap(const AGImage& image, unsigned int flags) {
  LowCreateBitmapWithImage(image, (flags & kFlagLittleEndian) != 0);
}

AGBitmap::~AGBitmap() {
  InvalidateBitmapCache();
  CGContextRelease(context_);
  std::free(pixels_);
}

AGContext AGBitmap::GetContextOfBitmap() const {
  return {context_, AGSize{static_cast<double>(width_), static_cast<double>(height_)}};
}

bool AGBitmap::LowCreateBitmapWithImage(const AGImage& image, bool flipped) {
  CGImageRef native = image.NativeImage();
  if (native == nullptr) return false;
  // An image without alpha covers every pixel, so nothing has to be cleared below it.
  const bool zeroFill = CGImageGetAlphaInfo(native) != kCGImageAlphaNone;
  if (!LowCreateBitmapWithSize(image.Width(), image.Height(), zeroFill, flipped)) return false;
  CGContextSaveGState(context_);
  if (flipped) CGContextConcatCTM(context_, {1, 0, 0, -1, 0, static_cast<double>(height_)});
  CGContextDrawImage(context_, CGRectMake(0, 0, width_, height_), native);
  CGContextRestoreGState(context_);
  return true;
}

bool AGBitmap::LowCreateBitmapWithSize(unsigned int width, unsigned int height, bool zeroFill, bool littleEndian) {
  if (width == 0 || height == 0) return false;
  // Sides of up to 32 bits: the count is checked before it is multiplied out, so that it cannot wrap.
  const std::uint64_t pixelCount = std::uint64_t{width} * height;
  if (pixelCount > UINT32_MAX / kPixelSize) return false;
  const auto byteCount = static_cast<std::uint32_t>(pixelCount * kPixelSize);

  const std::size_t allocated = byteCount + kSpareBytes;
  void* pixels = zeroFill ? std::calloc(1, allocated) : std::malloc(allocated);
  if (pixels == nullptr) return false;
  AGNativePort* context = NewNativeContext(pixels, width, height, littleEndian);
  if (context == nullptr) {
    std::free(pixels);
    return false;
  }
  context_ = context;
  pixels_ = static_cast<unsigned char*>(pixels);
  byteCount_ = byteCount;
  bytesPerPixel_ = kPixelSize;
  rowStride_ = width;
  width_ = width;
  height_ = height;
  return true;
}
