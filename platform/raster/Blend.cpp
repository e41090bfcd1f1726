#include "platform/raster/Blend.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace raster {
namespace {

constexpr int kPiece = 256;
constexpr int kColors = 3;

// One colour over another, both not premultiplied, 0 to 1.
float SoftLight(float below, float source) {
  if (source <= 0.5F) return below - (1 - 2 * source) * below * (1 - below);
  const float curve = below <= 0.25F ? ((16 * below - 12) * below + 4) * below : std::sqrt(below);
  return below + (2 * source - 1) * (curve - below);
}

float HardLight(float below, float source) {
  if (source <= 0.5F) return below * 2 * source;
  const float more = 2 * source - 1;
  return below + more - below * more;
}

using Bytes = std::array<std::uint8_t, 4>;

std::uint8_t ByteOf(float value) { return static_cast<std::uint8_t>(std::clamp(value, 0.0F, 1.0F) * 255 + 0.5F); }

// `alpha` tells which of the four bytes it is.
void BlendPixel(Bytes* below, const Bytes& source, float coverage, std::size_t alpha, bool isSoft) {
  const float sourceAlpha = static_cast<float>(source[alpha]) / 255;
  const float belowAlpha = static_cast<float>((*below)[alpha]) / 255;
  const float covered = sourceAlpha * coverage;
  if (covered <= 0) return;
  const std::size_t first = alpha == 0 ? 1 : 0;
  for (std::size_t i = first; i < first + kColors; ++i) {
    const float s = std::min(static_cast<float>(source[i]) / 255 / sourceAlpha, 1.0F);
    const float b = belowAlpha > 0 ? std::min(static_cast<float>((*below)[i]) / 255 / belowAlpha, 1.0F) : 0;
    const float mixed = isSoft ? SoftLight(b, s) : HardLight(b, s);
    (*below)[i] =
        ByteOf(covered * (1 - belowAlpha) * s + belowAlpha * (1 - covered) * b + covered * belowAlpha * mixed);
  }
  (*below)[alpha] = ByteOf(covered + belowAlpha * (1 - covered));
}

}  // namespace

void BlendThrough(const Surface& surface, int x, int y, int count, const unsigned char* coverage, const Ink& ink) {
  const std::size_t alpha = surface.order == PixelOrder::kAlphaFirst ? 0 : 3;
  std::array<std::uint32_t, kPiece> pixels{};
  for (int begin = 0; begin < count; begin += kPiece) {
    const int size = std::min(kPiece, count - begin);
    ink.rows->Fetch(x + begin, y, size, pixels.data());
    for (int i = 0; i < size; ++i) {
      Bytes below{};
      Bytes source{};
      unsigned char* at = surface.At(x + begin + i, y);
      std::memcpy(below.data(), at, below.size());
      std::memcpy(source.data(), &pixels[static_cast<std::size_t>(i)], source.size());
      BlendPixel(&below, source, static_cast<float>(coverage[begin + i]) / 255, alpha,
                 ink.kind == Ink::Kind::kSoftLight);
      std::memcpy(at, below.data(), below.size());
    }
  }
}

}  // namespace raster
