#include "platform/codecs/CodecPixels.h"

#include "AKPlatform/AKImageLimit.h"
#include "ImageIO/CGImageSource.h"

namespace platform {
namespace {

unsigned char ByteOf(std::uint32_t word, int shift) { return static_cast<unsigned char>(word >> shift); }

// The nearest of 255 steps to component * 255 / alpha.
unsigned char Unpremultiplied(std::uint32_t component, std::uint32_t alpha) {
  const std::uint32_t value = (component * 255 + alpha / 2) / alpha;
  return static_cast<unsigned char>(value < 255 ? value : 255);
}

// x / 255 to the nearest, for two components of 16 bits at once: the usual (x + 128) * 257 / 65536.
std::uint32_t DivideBothBy255(std::uint32_t products) {
  products += 0x00800080;
  return (products + (products >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF;
}

}  // namespace

NewPixels::NewPixels(std::uint64_t width, std::uint64_t height, std::uint64_t maxPixels, RefusedSize* refused) {
  constexpr std::uint64_t kAnySide = UINT32_MAX;
  if (width == 0 || width > kAnySide || height == 0 || height > kAnySide || width * height > maxPixels) return;
  if (width * height * 4 > CGImageSourceGetPixelLimit()) {
    *refused = {width, height};
    return;
  }
  pixels_ = ImagePixels(width, height);
}

CGImageRef NewPixels::MakeImage(bool hasAlpha) { return new CGImage(std::move(pixels_), hasAlpha); }

const std::uint32_t* ImageRow(const CGImage& image, std::size_t y) { return image.pixels.Row(y); }

bool PremultiplyRow(std::uint32_t* row, std::size_t count) {
  std::uint32_t common = 0xFFFFFFFF;
  for (std::size_t x = 0; x < count; ++x) {
    const std::uint32_t word = row[x];
    const std::uint32_t alpha = word >> 24;
    const std::uint32_t redBlue = DivideBothBy255((word & 0x00FF00FF) * alpha);
    const std::uint32_t green = DivideBothBy255((word >> 8 & 0x000000FF) * alpha);
    common &= word;
    row[x] = (word & 0xFF000000) | redBlue | green << 8;
  }
  return common >> 24 != 255;
}

bool HasTranslucent(const std::uint32_t* row, std::size_t count) {
  std::uint32_t common = 0xFFFFFFFF;
  for (std::size_t x = 0; x < count; ++x) common &= row[x];
  return common >> 24 != 255;
}

void SwapRedAndBlue(std::uint32_t* row, std::size_t count) {
  for (std::size_t x = 0; x < count; ++x) {
    const std::uint32_t word = row[x];
    row[x] = (word & 0xFF00FF00) | (word >> 16 & 0xFF) | (word & 0xFF) << 16;
  }
}

void StoreStraightRGBA(const std::uint32_t* row, std::size_t count, unsigned char* out) {
  for (std::size_t x = 0; x < count; ++x, out += 4) {
    const std::uint32_t word = row[x];
    const std::uint32_t alpha = word >> 24;
    if (alpha == 0) {
      out[0] = out[1] = out[2] = out[3] = 0;
      continue;
    }
    const bool opaque = alpha == 255;
    out[0] = opaque ? ByteOf(word, 16) : Unpremultiplied(ByteOf(word, 16), alpha);
    out[1] = opaque ? ByteOf(word, 8) : Unpremultiplied(ByteOf(word, 8), alpha);
    out[2] = opaque ? ByteOf(word, 0) : Unpremultiplied(ByteOf(word, 0), alpha);
    out[3] = static_cast<unsigned char>(alpha);
  }
}

void StorePremultipliedRGBA(const std::uint32_t* row, std::size_t count, unsigned char* out) {
  for (std::size_t x = 0; x < count; ++x, out += 4) {
    out[0] = ByteOf(row[x], 16);
    out[1] = ByteOf(row[x], 8);
    out[2] = ByteOf(row[x], 0);
    out[3] = ByteOf(row[x], 24);
  }
}

void StoreRGBOverWhite(const std::uint32_t* row, std::size_t count, unsigned char* out) {
  for (std::size_t x = 0; x < count; ++x, out += 3) {
    // Saturated: colours above their alpha are not premultiplied ones, but a bitmap's owner may have written them.
    const std::uint32_t white = 255 - (row[x] >> 24);
    const auto mixed = [white](std::uint32_t component) {
      const std::uint32_t sum = component + white;
      return static_cast<unsigned char>(sum < 255 ? sum : 255);
    };
    out[0] = mixed(ByteOf(row[x], 16));
    out[1] = mixed(ByteOf(row[x], 8));
    out[2] = mixed(ByteOf(row[x], 0));
  }
}

}  // namespace platform
