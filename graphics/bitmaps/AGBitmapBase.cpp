#include "graphics/bitmaps/AGBitmapBase.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "CoreGraphics/CGImage.h"

namespace {

constexpr unsigned int kColorPixelSize = 4;

// A coordinate rounded to a whole pixel and brought into 0..limit.
unsigned int RoundInto(double value, unsigned int limit) {
  const double rounded = std::floor(value + 0.5);
  if (!(rounded > 0)) return 0;
  return rounded >= limit ? limit : static_cast<unsigned int>(rounded);
}

}  // namespace

unsigned char* AGBitmapBase::PixelAddress(unsigned int x, unsigned int y) const {
  const std::size_t row = height_ - 1 - y;
  return pixels_ + (row * rowStride_ + x) * bytesPerPixel_;
}

std::uint32_t AGBitmapBase::Pack(AGColor color) const {
  const std::uint32_t red = color.Red();
  const std::uint32_t green = color.Green();
  const std::uint32_t blue = color.Blue();
  const std::uint32_t alpha = color.Alpha();
  return littleEndianLayout_ ? (blue | green << 8 | red << 16 | alpha << 24)
                             : (alpha | red << 8 | green << 16 | blue << 24);
}

AGColor AGBitmapBase::Unpack(std::uint32_t pixel) const {
  const auto byte = [pixel](unsigned int index) { return static_cast<unsigned char>(pixel >> (8 * index)); };
  return littleEndianLayout_ ? AGColor(byte(2), byte(1), byte(0), byte(3))
                             : AGColor(byte(1), byte(2), byte(3), byte(0));
}

void AGBitmapBase::ClearPixels() {
  if (pixels_ != nullptr) std::memset(pixels_, 0, byteCount_);
}

void AGBitmapBase::ClearPixels(AGColor color) {
  if (pixels_ == nullptr || bytesPerPixel_ != kColorPixelSize) return;
  const std::uint32_t packed = Pack(color);
  if (packed == 0) {
    ClearPixels();
    return;
  }
  for (std::size_t i = 0; i + kColorPixelSize <= byteCount_; i += kColorPixelSize) {
    std::memcpy(pixels_ + i, &packed, sizeof(packed));
  }
}

void AGBitmapBase::ClearPixelsRect(AGColor color, const AGRect& rect) {
  if (pixels_ == nullptr || bytesPerPixel_ != kColorPixelSize) return;
  const unsigned int x0 = RoundInto(rect.x0, width_);
  const unsigned int x1 = RoundInto(rect.x1, width_);
  const unsigned int row0 = RoundInto(height_ - rect.y1, height_);
  const unsigned int row1 = RoundInto(height_ - rect.y0, height_);
  const std::uint32_t packed = Pack(color);
  for (unsigned int row = row0; row < row1; ++row) {
    unsigned char* pixel = PixelAddress(x0, height_ - 1 - row);
    for (unsigned int x = x0; x < x1; ++x, pixel += kColorPixelSize) std::memcpy(pixel, &packed, sizeof(packed));
  }
}

void AGBitmapBase::SetPixelColor(unsigned int x, unsigned int y, AGColor color) {
  if (x >= width_ || y >= height_ || bytesPerPixel_ != kColorPixelSize) return;
  const std::uint32_t packed = Pack(color);
  std::memcpy(PixelAddress(x, y), &packed, sizeof(packed));
}

AGColor AGBitmapBase::GetPixelColor(unsigned int x, unsigned int y) const {
  if (x >= width_ || y >= height_ || bytesPerPixel_ != kColorPixelSize) return kAGNullColor;
  std::uint32_t packed = 0;
  std::memcpy(&packed, PixelAddress(x, y), sizeof(packed));
  return Unpack(packed);
}

void AGBitmapBase::SetBitmapCacheUsed(bool used) {
  if (!used) InvalidateBitmapCache();
  bitmapCacheUsed_ = used;
}

void AGBitmapBase::InvalidateBitmapCache() {
  CGImageRelease(cachedImage_);
  cachedImage_ = nullptr;
}

void AGBitmapBase::LowResetMembers() {
  context_ = nullptr;
  pixels_ = nullptr;
  byteCount_ = 0;
  bytesPerPixel_ = 0;
  rowStride_ = 0;
  width_ = 0;
  height_ = 0;
}
