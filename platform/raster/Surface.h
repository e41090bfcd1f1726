// The pixels that are drawn into.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/raster/Box.h"

namespace raster {

/// How the four bytes of a pixel lie in memory. Pixels that are passed around as words are in the order of their
/// surface.
enum class PixelOrder : std::uint8_t {
  kBlueFirst,   ///< blue, green, red, alpha
  kAlphaFirst,  ///< alpha, red, green, blue
};

/// Premultiplied pixels of somebody else's memory, rows from the top down. Rows lie `stride` bytes apart, at least four
/// times the width.
struct Surface {
  unsigned char* data = nullptr;
  std::size_t stride = 0;
  int width = 0;
  int height = 0;
  PixelOrder order = PixelOrder::kBlueFirst;

  Box Bounds() const { return {0, 0, width, height}; }
  /// The pixel (x, y), aligned to bytes.
  unsigned char* At(int x, int y) const {
    return data + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * sizeof(std::uint32_t);
  }
};

/// Turns the bytes of a blue-first word, which reads 0xAARRGGBB, into those of an order, and back.
inline std::uint32_t InOrder(std::uint32_t blueFirst, PixelOrder order) {
  return order == PixelOrder::kAlphaFirst ? __builtin_bswap32(blueFirst) : blueFirst;
}

inline std::uint32_t AlphaOf(std::uint32_t pixel, PixelOrder order) {
  return order == PixelOrder::kAlphaFirst ? pixel & 255 : pixel >> 24;
}

}  // namespace raster
