// Pixels: all widths of vectors give the same ones, in both orders, and the right ones.
#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cmath>

#include "tests/platform/raster/RasterScene.h"

namespace {

using raster::Box;
using raster::Ink;
using raster::PixelOrder;
using raster_scene::Filled;
using raster_scene::Path;
using raster_scene::Random;

constexpr int kWidth = 61;  // of no vector a multiple
constexpr int kHeight = 40;

using Pixels = std::vector<std::uint32_t>;

// Premultiplied, blue first.
std::uint32_t Color(Random& random, bool isOpaque) {
  const auto alpha = static_cast<std::uint32_t>(isOpaque ? 255 : random.Below(256));
  const auto channel = [&] { return static_cast<std::uint32_t>(random.Below(static_cast<int>(alpha) + 1)); };
  return alpha << 24 | channel() << 16 | channel() << 8 | channel();
}

// A source whose pixels depend on where they are asked for.
class Checks final : public raster::RowSource {
 public:
  Checks(std::uint32_t a, std::uint32_t b, PixelOrder order) : a_(InOrder(a, order)), b_(InOrder(b, order)) {}
  void Fetch(int x, int y, int count, std::uint32_t* pixels) const override {
    for (int i = 0; i < count; ++i) pixels[i] = ((x + i) / 3 + y / 3) % 2 == 0 ? a_ : b_;
  }

 private:
  std::uint32_t a_;
  std::uint32_t b_;
};

// Shapes of every ink, with and without a mask. The pixels are returned blue first.
Pixels DrawScene(unsigned int seed, PixelOrder order) {
  Random random(seed);
  Pixels pixels(kWidth * kHeight);
  for (std::uint32_t& pixel : pixels) pixel = InOrder(Color(random, false), order);
  const raster::Surface surface{reinterpret_cast<unsigned char*>(pixels.data()), kWidth * 4, kWidth, kHeight, order};
  std::vector<unsigned char> mask(kWidth * kHeight);
  for (unsigned char& byte : mask) {
    const int kind = random.Below(3);
    byte = static_cast<unsigned char>(kind == 0 ? 0 : kind == 1 ? 255 : random.Below(256));
  }
  const raster::MaskView view{mask.data(), kWidth, surface.Bounds()};
  for (int i = 0; i < 12; ++i) {
    Path path;
    path.Move(random.In(-10, 70), random.In(-10, 50));
    for (int k = 0; k < 4; ++k) {
      path.Cubic(random.In(-10, 70), random.In(-10, 50), random.In(-10, 70), random.In(-10, 50), random.In(-10, 70),
                 random.In(-10, 50));
    }
    const bool isOpaque = random.Below(2) == 0;
    const Checks rows(Color(random, isOpaque), Color(random, isOpaque), order);
    constexpr Ink::Kind kKinds[] = {Ink::Kind::kColor, Ink::Kind::kRows, Ink::Kind::kClear, Ink::Kind::kSoftLight,
                                    Ink::Kind::kHardLight};
    const Ink ink{kKinds[random.Below(5)], isOpaque, InOrder(Color(random, isOpaque), order), &rows};
    raster::StrokeStyle style;
    style.width = random.In(0.1, 9);
    raster::Shape shape = Filled(path, raster::FillRule::kEvenOdd);
    if (random.Below(2) == 0) shape.stroke = &style;
    const Box box{random.Below(10), random.Below(10), 40 + random.Below(22), 25 + random.Below(16)};
    EXPECT_TRUE(raster::Paint(surface, shape, {box, random.Below(2) == 0 ? &view : nullptr}, ink));
  }
  for (std::uint32_t& pixel : pixels) pixel = InOrder(pixel, order);
  return pixels;
}

std::vector<std::uint32_t> LookUps(unsigned int seed) {
  Random random(seed);
  Pixels table(515);
  for (std::uint32_t& entry : table) entry = Color(random, false);
  Pixels result(700);
  std::vector<double> colors(4 * 100);
  for (double& component : colors) component = random.Below(20) == 0 ? NAN : random.In(-0.1, 1.1);
  raster::PackColors(colors.data(), 100 - seed % 9, random.In(0, 1), PixelOrder::kAlphaFirst, result.data() + 600);
  raster::LookUpLinear(table.data(), 514, random.In(-600, 600), random.In(-9, 9), 200, result.data());
  raster::LookUpRadial(table.data(), 514,
                       {random.In(-99, 99), random.In(-99, 99), random.In(-1, 1), random.In(-1, 1), 5, -9}, 200,
                       result.data() + 200);
  raster::LookUpBilinear({table.data(), 23, 23, 22},
                         {random.In(-9, 30), random.In(-9, 30), random.In(-1, 1), random.In(-1, 1)}, 200,
                         result.data() + 400);
  raster::ScaleBytes(reinterpret_cast<unsigned char*>(result.data()), 100, 301);
  raster::MultiplyBytes(reinterpret_cast<unsigned char*>(result.data()), reinterpret_cast<unsigned char*>(table.data()),
                        777);
  return result;
}

TEST(RasterPixelsTest, EveryProcessor_GivesTheSameBytes) {
  const std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
  ASSERT_GE(targets.size(), 2U) << "nothing to compare with";
  for (unsigned int seed = 1; seed <= 60; ++seed) {
    Pixels first[3];
    for (const std::int64_t target : targets) {
      hwy::SetSupportedTargetsForTest(target);
      hwy::GetChosenTarget().Update(hwy::SupportedTargets());
      const Pixels drawn[3] = {DrawScene(seed, PixelOrder::kBlueFirst), DrawScene(seed, PixelOrder::kAlphaFirst),
                               LookUps(seed)};
      for (int i = 0; i < 3; ++i) {
        if (first[i].empty()) first[i] = drawn[i];
        ASSERT_EQ(drawn[i], first[i]) << hwy::TargetName(target) << ", seed " << seed << ", part " << i;
      }
      ASSERT_EQ(drawn[0], drawn[1]) << "the orders differ, seed " << seed;
    }
  }
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

// Some colours by hand, and many of them in one way and one by one.
TEST(RasterPixelsTest, ColorsBecomePixels) {
  const struct {
    double color[4], alpha;
    std::uint32_t pixel;
  } rows[] = {{{1, 0.5, 0, 1}, 1, 0xFFFF8000},
              {{1, 1, 1, 0.5}, 0.5, 0x40404040},
              {{-1, 7, NAN, 1}, 1, 0xFF00FF00},
              {{0.2, 0.4, 0.6, 9}, 1, 0xFF336699},
              {{1, 1, 1, NAN}, 1, 0},
              {{INFINITY, -INFINITY, 1e300, 0.6}, 1, 0x99990099},
              {{0.4, 0.6, 0.8, 0.2}, 1, 0x33141F29},
              {{1, 0, 0, -0.0}, 1, 0}};
  std::vector<double> colors;
  for (const auto& row : rows) {
    std::uint32_t pixel = 1;
    raster::PackColors(row.color, 1, row.alpha, PixelOrder::kBlueFirst, &pixel);
    EXPECT_EQ(pixel, row.pixel);
    colors.insert(colors.end(), row.color, row.color + 4);
  }
  Pixels packed(9, 0x12345678);
  raster::PackColors(colors.data(), 8, 1, PixelOrder::kAlphaFirst, packed.data());
  for (std::size_t i = 0; i < 8; ++i) {
    std::uint32_t pixel = 1;
    raster::PackColors(&colors[4 * i], 1, 1, PixelOrder::kBlueFirst, &pixel);
    EXPECT_EQ(packed[i], InOrder(pixel, PixelOrder::kAlphaFirst)) << i;
  }
  EXPECT_EQ(packed[8], 0x12345678U) << "more than was asked for";
}

// One pixel, in doubles. Three products are rounded, each by half a level at most.
TEST(RasterPixelsTest, Mixing_IsRightButForItsRoundings) {
  Random random(20261);
  for (int round = 0; round < 20000; ++round) {
    const std::uint32_t source = Color(random, round % 4 == 0);
    const std::uint32_t below = Color(random, false);
    const auto coverage = static_cast<unsigned char>(random.Below(256));
    std::uint32_t pixel = below;
    const raster::Surface surface{reinterpret_cast<unsigned char*>(&pixel), 4, 1, 1, PixelOrder::kBlueFirst};
    const Checks rows(source, source, PixelOrder::kBlueFirst);
    const Ink::Kind kind = round % 2 == 0 ? Ink::Kind::kColor : Ink::Kind::kRows;
    raster::PaintThrough(surface, 0, 0, 1, &coverage, nullptr, {kind, source >> 24 == 255, source, &rows});
    const double share = coverage / 255.0;
    for (unsigned int shift = 0; shift < 32; shift += 8) {
      const double expected =
          (source >> shift & 255) * share + (below >> shift & 255) * (1 - (source >> 24) / 255.0 * share);
      ASSERT_NEAR(pixel >> shift & 255, expected, 1.51) << "round " << round;
    }
  }
}

}  // namespace
