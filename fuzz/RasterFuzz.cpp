// Any path, filled or stroked by any nib, under any clip, on bitmaps of any shape. The first bytes choose, the others
// are verbs and their coordinates: small numbers, or doubles of any bits.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/raster/Raster.h"

namespace {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool IsEmpty() const { return size_ == 0; }
  unsigned int Byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }
  double Number() {
    const unsigned int kind = Byte();
    if (kind < 224) return (static_cast<double>(kind) - 60) / 2 + Byte() / 256.0;
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits = bits << 8 | Byte();
    double number = 0;
    std::memcpy(&number, &bits, sizeof(number));
    return number;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

class Stripes final : public raster::RowSource {
 public:
  void Fetch(int x, int, int count, std::uint32_t* pixels) const override {
    for (int i = 0; i < count; ++i) pixels[i] = ((x + i) & 1) != 0 ? 0xFF204060U : 0x80402010U;
  }
};

// Stretches of nothing, of everything, and of what lies between, long and short.
std::vector<unsigned char> MaskBytes(std::size_t width, std::size_t height) {
  constexpr unsigned char kBytes[] = {0, 255, 200, 255, 7};
  std::vector<unsigned char> bytes(width * height);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::size_t x = i % width;
    bytes[i] = kBytes[(x * x / 256 + x / 5 * (i / width % 3) + i / width) % 5];
  }
  return bytes;
}

// Pixels with guards around them, which nobody may touch.
struct Bitmap {
  Bitmap(int w, int h, raster::PixelOrder order) : pixels(std::size_t(w + 2) * std::size_t(h + 2), kGuard) {
    surface = {reinterpret_cast<unsigned char*>(pixels.data() + w + 3), std::size_t(w + 2) * 4, w, h, order};
    for (int y = 0; y < h; ++y) std::memset(surface.At(0, y), 0, std::size_t(w) * 4);
  }
  bool IsGuarded() const {
    const auto stride = std::size_t(surface.width + 2);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const std::size_t x = i % stride;
      const std::size_t y = i / stride;
      const bool isOutside = x == 0 || x == stride - 1 || y == 0 || y == std::size_t(surface.height) + 1;
      if (isOutside && pixels[i] != kGuard) return false;
    }
    return true;
  }
  static constexpr std::uint32_t kGuard = 0x12345678;
  std::vector<std::uint32_t> pixels;
  raster::Surface surface;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  constexpr int kSides[][2] = {{64, 48}, {1, 3000}, {3000, 1}, {7, 5}};
  const unsigned int choice = input.Byte();
  const auto& side = kSides[choice & 3];
  const auto order = (choice & 4) != 0 ? raster::PixelOrder::kAlphaFirst : raster::PixelOrder::kBlueFirst;
  const auto width = static_cast<std::size_t>(side[0]);
  const auto height = static_cast<std::size_t>(side[1]);
  Bitmap bitmap(side[0], side[1], order);
  raster::Shape shape;
  shape.antialias = (choice & 8) == 0;
  shape.rule = (choice & 16) != 0 ? raster::FillRule::kEvenOdd : raster::FillRule::kNonZero;
  raster::StrokeStyle style;
  if ((choice & 32) != 0) {
    shape.stroke = &style;
    const unsigned int kind = input.Byte();
    style.cap = static_cast<raster::Cap>(kind % 3);
    style.join = static_cast<raster::Join>(kind / 3 % 3);
    style.width = input.Number();
    if ((kind & 128) != 0) {
      style.a = input.Number();
      style.b = input.Number();
      style.c = input.Number();
      style.d = input.Number();
    }
  }
  const Stripes stripes;
  const raster::Ink ink{static_cast<raster::Ink::Kind>((choice >> 6) + (choice & 1)), false, 0x80808080U, &stripes};
  const std::vector<unsigned char> bytes = MaskBytes(width, height);
  raster::MaskView mask{bytes.data(), width, bitmap.surface.Bounds()};
  std::vector<raster::Run> full;
  for (int y = 0; y < side[1]; ++y) full.push_back(raster::LongestFull(mask, y));
  mask.full = full.data();

  std::vector<raster::Verb> verbs;
  std::vector<double> coordinates;
  while (!input.IsEmpty()) {
    const auto verb = static_cast<raster::Verb>(verbs.empty() ? 0 : input.Byte() % 5);
    constexpr int kPoints[] = {1, 1, 2, 3, 0};
    verbs.push_back(verb);
    for (int i = 0; i < 2 * kPoints[static_cast<int>(verb)]; ++i) coordinates.push_back(input.Number());
  }
  shape.path = {verbs.data(), verbs.size(), coordinates.data(), coordinates.size() / 2};
  const raster::Clip clip{bitmap.surface.Bounds(), (choice & 2) != 0 ? &mask : nullptr};
  if (!raster::Paint(bitmap.surface, shape, clip, ink) || !bitmap.IsGuarded()) std::abort();

  // Under a clip as through the coverage multiplied with it.
  std::vector<unsigned char> coverage(width * height);
  if (!raster::Cover(shape, bitmap.surface.Bounds(), coverage.data(), width)) std::abort();
  for (std::size_t i = 0; clip.mask != nullptr && i < coverage.size(); ++i) {
    coverage[i] = static_cast<unsigned char>((coverage[i] * bytes[i] * 2 + 255) / 510);
  }
  const Bitmap other(side[0], side[1], order);
  raster::PaintMask(other.surface, {coverage.data(), width, mask.box}, {mask.box}, ink);
  if (other.pixels != bitmap.pixels) std::abort();

  // What was added up is taken away again: a shape that covers nothing leaves nothing.
  const std::vector<std::uint32_t> before = bitmap.pixels;
  const double outside[] = {-9, -9, -5, -9, -5, -5};
  constexpr raster::Verb kTriangle[] = {raster::Verb::kMove, raster::Verb::kLine, raster::Verb::kLine};
  raster::Shape nothing;
  nothing.path = {kTriangle, 3, outside, 3};
  if (!raster::Paint(bitmap.surface, nothing, clip, ink) || bitmap.pixels != before) std::abort();
  const double whole[] = {0, 0, double(side[0]), 0, double(side[0]), double(side[1]), 0, double(side[1])};
  constexpr raster::Verb kBox[] = {raster::Verb::kMove, raster::Verb::kLine, raster::Verb::kLine, raster::Verb::kLine};
  nothing.path = {kBox, 4, whole, 4};
  if (!raster::Cover(nothing, bitmap.surface.Bounds(), coverage.data(), width)) std::abort();
  for (const unsigned char byte : coverage) {
    if (byte != 255) std::abort();
  }
  return 0;
}
