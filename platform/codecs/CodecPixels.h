// The pixels between a codec and a native image.
//
// A native pixel is a 32-bit word: alpha, red, green, blue from the highest byte down, premultiplied. In memory that is
// blue first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "CoreGraphics/CGImage.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {

/// Pixels for a codec to write, which then become an image.
class NewPixels {
 public:
  /// Transparent black. Not IsValid when a side is 0, when there are more than `maxPixels`, which is what the file can
  /// hold, or when memory lacks; and, with `*refused` set, when the pixels take more than the limit.
  NewPixels(std::uint64_t width, std::uint64_t height, std::uint64_t maxPixels, RefusedSize* refused);

  bool IsValid() const { return pixels_.IsValid(); }
  std::uint32_t* Row(std::size_t y) { return pixels_.Row(y); }
  std::size_t Width() const { return pixels_.Width(); }
  std::size_t Height() const { return pixels_.Height(); }

  /// An image that takes the pixels over.
  CGImageRef MakeImage(bool hasAlpha);

 private:
  ImagePixels pixels_;
};

/// Row `y` of an image.
const std::uint32_t* ImageRow(const CGImage& image, std::size_t y);

/// Multiplies colours by alpha, each rounded to the nearest. Returns whether a pixel is not opaque.
bool PremultiplyRow(std::uint32_t* row, std::size_t count);
/// Whether a pixel of the row is not opaque.
bool HasTranslucent(const std::uint32_t* row, std::size_t count);
/// Exchanges red and blue.
void SwapRedAndBlue(std::uint32_t* row, std::size_t count);

/// Bytes red, green, blue, alpha; divided by alpha to the nearest, so that multiplying gives the pixels again.
void StoreStraightRGBA(const std::uint32_t* row, std::size_t count, unsigned char* out);
/// Bytes red, green, blue, alpha, premultiplied as they are.
void StorePremultipliedRGBA(const std::uint32_t* row, std::size_t count, unsigned char* out);
/// Bytes red, green, blue, mixed with white.
void StoreRGBOverWhite(const std::uint32_t* row, std::size_t count, unsigned char* out);

}  // namespace platform
