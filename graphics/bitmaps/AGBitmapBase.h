// Pixels that can be drawn into through a context and read or written one by one.
//
// 32-bit pixels, rows from the top down in memory; the y axis points up, so row y = 0 is the last row of the memory.
// Colours are stored as given, without premultiplying; what is drawn is premultiplied. AGBitmapBase describes pixels
// and touches them; who owns them is said by its two subclasses.
#pragma once

#include <cstddef>
#include <cstdint>

#include "graphics/context/AGContext.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGRect.h"

struct CGImage;

class AGBitmapBase {
 public:
  AGBitmapBase(const AGBitmapBase&) = delete;
  AGBitmapBase& operator=(const AGBitmapBase&) = delete;
  /// Frees nothing itself.
  virtual ~AGBitmapBase() = default;

  ///@{
  /// In pixels; 0 without pixels.
  unsigned int Width() const { return width_; }
  unsigned int Height() const { return height_; }
  ///@}
  /// From a pixel to the one below it, in pixels.
  unsigned int RowStride() const { return rowStride_; }
  ///@{
  /// Bytes of one pixel, and of all with what pads the rows.
  unsigned int BytesPerPixel() const { return bytesPerPixel_; }
  unsigned int ByteCount() const { return byteCount_; }
  ///@}
  ///@{
  /// The first byte of the uppermost row; null when not open.
  unsigned char* Pixels() { return pixels_; }
  const unsigned char* Pixels() const { return pixels_; }
  ///@}
  /// True when there are pixels.
  bool IsOpen() const { return pixels_ != nullptr; }
  /// The context that draws into the pixels; null when not open, not the caller's.
  AGNativePort* NativeContext() const { return context_; }

  /// Zeroes all bytes.
  void ClearPixels();
  /// Sets every pixel; only for 4-byte pixels.
  void ClearPixels(AGColor color);
  /// Sets the pixels of a rectangle (y up, corners rounded to whole pixels) as far as they exist; only for 4-byte
  /// pixels.
  void ClearPixelsRect(AGColor color, const AGRect& rect);

  /// Pixels outside are ignored.
  void SetPixelColor(unsigned int x, unsigned int y, AGColor color);
  /// kAGNullColor outside.
  AGColor GetPixelColor(unsigned int x, unsigned int y) const;

  /// Whether a native image of the pixels may be kept; turning it off releases one that is.
  void SetBitmapCacheUsed(bool used);
  /// Releases the native image that may be kept, since the pixels were changed.
  void InvalidateBitmapCache();

 protected:
  /// Without pixels.
  AGBitmapBase() = default;

  /// Forgets the pixel description.
  void LowResetMembers();

  ///@{
  /// The description of the pixels, which a subclass fills in.
  AGNativePort* context_ = nullptr;
  unsigned char* pixels_ = nullptr;
  std::uint32_t byteCount_ = 0;
  std::uint32_t bytesPerPixel_ = 0;
  std::uint32_t rowStride_ = 0;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  ///@}
  /// Blue, green, red, alpha in memory; false: alpha, red, green, blue. Creating a bitmap does not change it.
  bool littleEndianLayout_ = false;
  ///@{
  /// Whether a native image may be kept, and the one that is.
  bool bitmapCacheUsed_ = false;
  CGImage* cachedImage_ = nullptr;
  ///@}

 private:
  friend struct AGLayout;

  unsigned char* PixelAddress(unsigned int x, unsigned int y) const;
  std::uint32_t Pack(AGColor color) const;
  AGColor Unpack(std::uint32_t pixel) const;
};
