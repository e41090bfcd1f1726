#include "graphics/bitmaps/AGBitmapOfContext.h"

#include "CoreGraphics/CGBitmapContext.h"

AGBitmapOfContext::AGBitmapOfContext(AGNativePort* port, unsigned int) { LowOpenBitmap(port); }

AGBitmapOfContext::AGBitmapOfContext(const AGContext& context, unsigned int) { LowOpenBitmap(context.NativePort()); }

AGBitmapOfContext::~AGBitmapOfContext() {
  InvalidateBitmapCache();
  LowResetMembers();
}

bool AGBitmapOfContext::LowOpenBitmap(AGNativePort* port) {
  if (port == nullptr) return false;
  const std::size_t width = CGBitmapContextGetWidth(port);
  const std::size_t height = CGBitmapContextGetHeight(port);
  const std::size_t pixelSize = CGBitmapContextGetBitsPerPixel(port) / 8;
  const std::size_t bytesPerRow = CGBitmapContextGetBytesPerRow(port);
  void* data = CGBitmapContextGetData(port);
  if (width == 0 || height == 0 || data == nullptr || (pixelSize != 1 && pixelSize != 2 && pixelSize != 4)) {
    return false;
  }
  if (bytesPerRow * height > UINT32_MAX) return false;
  context_ = port;
  pixels_ = static_cast<unsigned char*>(data);
  byteCount_ = static_cast<std::uint32_t>(bytesPerRow * height);
  bytesPerPixel_ = static_cast<std::uint32_t>(pixelSize);
  rowStride_ = static_cast<std::uint32_t>(bytesPerRow / pixelSize);
  width_ = static_cast<std::uint32_t>(width);
  height_ = static_cast<std::uint32_t>(height);
  return true;
}
