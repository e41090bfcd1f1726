// Native drawing, probed where geometry gives the answer.
#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "AKPlatform/AKBitmapPNG.h"
#include "AKPlatform/AKPixelOrder.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGContext.h"

namespace {

// A bitmap context over its own pixels.
class Canvas {
 public:
  explicit Canvas(std::uint32_t info = kCGBitmapBlueFirst, std::size_t width = 40, std::size_t height = 30)
      : width_(width), height_(height), info_(info), pixels_(width * height * 4) {
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    context_ = CGBitmapContextCreate(pixels_.data(), width, height, 8, width * 4, space, info);
    CGColorSpaceRelease(space);
  }
  ~Canvas() { CGContextRelease(context_); }

  CGContextRef Context() const { return context_; }

  // Red, green, blue, alpha of the pixel whose lower left corner is (x, y), y up.
  std::vector<int> Pixel(std::size_t x, std::size_t y) const {
    const unsigned char* p = &pixels_[((height_ - 1 - y) * width_ + x) * 4];
    if (info_ == kCGBitmapAlphaFirst) return {p[1], p[2], p[3], p[0]};
    return {p[2], p[1], p[0], p[3]};
  }
  // The sum of alpha over all pixels, in pixels: the area of what was painted opaquely.
  double Area() const {
    double sum = 0;
    for (std::size_t y = 0; y < height_; ++y) {
      for (std::size_t x = 0; x < width_; ++x) sum += Pixel(x, y)[3] / 255.0;
    }
    return sum;
  }
  std::vector<unsigned char>& Bytes() { return pixels_; }

 private:
  std::size_t width_;
  std::size_t height_;
  std::uint32_t info_;
  std::vector<unsigned char> pixels_;
  CGContextRef context_ = nullptr;
};

void AddRect(CGContextRef context, double x, double y, double width, double height) {
  CGMutablePathRef path = CGPathCreateMutable();
  CGPathAddRect(path, nullptr, CGRectMake(x, y, width, height));
  CGContextAddPath(context, path);
  CGPathRelease(path);
}

using Color = std::vector<int>;
const Color kClear = {0, 0, 0, 0};
const Color kRed = {255, 0, 0, 255};

TEST(CGContextTest, Fill_HalfCoveredEdge_YUp) {
  for (const std::uint32_t info : {kCGBitmapBlueFirst, kCGBitmapAlphaFirst}) {
    Canvas canvas(info);
    CGContextSetRGBFillColor(canvas.Context(), 1, 0, 0, 1);
    CGContextFillRect(canvas.Context(), CGRectMake(2, 3, 4.5, 5));
    EXPECT_EQ(canvas.Pixel(2, 3), kRed);
    EXPECT_EQ(canvas.Pixel(5, 7), kRed);
    EXPECT_EQ(canvas.Pixel(2, 2), kClear);
    EXPECT_EQ(canvas.Pixel(2, 8), kClear);
    EXPECT_NEAR(canvas.Pixel(6, 5)[3], 128, 1);
    EXPECT_NEAR(canvas.Area(), 22.5, 0.05);

    CGContextSetShouldAntialias(canvas.Context(), false);
    CGContextClearRect(canvas.Context(), CGRectMake(0, 0, 40, 30));
    CGContextFillRect(canvas.Context(), CGRectMake(2, 3, 4.6, 5));
    EXPECT_EQ(canvas.Pixel(6, 5), kRed);
  }
}

TEST(CGContextTest, FillRules_DifferInTheOverlap) {
  for (const CGPathDrawingMode mode : {kCGPathFill, kCGPathEOFill}) {
    Canvas canvas;
    CGContextSetRGBFillColor(canvas.Context(), 1, 0, 0, 1);
    AddRect(canvas.Context(), 2, 2, 20, 20);
    AddRect(canvas.Context(), 8, 8, 5, 5);
    CGContextDrawPath(canvas.Context(), mode);
    EXPECT_EQ(canvas.Pixel(10, 10), mode == kCGPathFill ? kRed : kClear);
    EXPECT_EQ(canvas.Pixel(4, 4), kRed);
  }
}

TEST(CGContextTest, Stroke_WidthGoesThroughTheMatrix) {
  Canvas canvas;
  CGContextSetRGBStrokeColor(canvas.Context(), 1, 0, 0, 1);
  CGContextSetLineWidth(canvas.Context(), 2);
  CGContextConcatCTM(canvas.Context(), {3, 0, 0, 1, 0, 0});
  AddRect(canvas.Context(), 3, 5, 6, 14);  // pixels (9, 5) to (27, 19)
  CGContextDrawPath(canvas.Context(), kCGPathStroke);
  // Vertical edges are 6 wide, horizontal ones 2.
  EXPECT_EQ(canvas.Pixel(6, 12), kRed);
  EXPECT_EQ(canvas.Pixel(11, 12), kRed);
  EXPECT_EQ(canvas.Pixel(12, 12), kClear);
  EXPECT_EQ(canvas.Pixel(18, 4), kRed);
  EXPECT_EQ(canvas.Pixel(18, 5), kRed);
  EXPECT_EQ(canvas.Pixel(18, 6), kClear);
  EXPECT_NEAR(canvas.Area(), 24 * 16 - 12 * 12, 0.1);
}

// Long paths that are added again are known by what they are: whatever is done with them, a context that is given a new
// copy of them each time draws the same.
class KnownPaths {
 public:
  KnownPaths() {
    for (int i = 0; i < 60; ++i) AddPoint(i % 2);
    ForBoth([](CGContextRef c) { CGContextSetRGBFillColor(c, 0, 0.5, 0, 0.5); });  // hides nothing
  }
  ~KnownPaths() {
    for (CGMutablePathRef path : kept_) CGPathRelease(path);
  }

  // One or two clips within each other, or a fill, and all that may happen in between.
  void Draw(int depth) {
    ForBoth([](CGContextRef c) { CGContextSaveGState(c); });
    Disturb(depth);
    Add(Any(2));
    if (Any(4) == 0) Add(Any(2));
    Disturb(depth);
    const int red = Any(3);
    ForBoth([red](CGContextRef c) { CGContextSetRGBFillColor(c, red * 0.5, 0.5, 0.5, 0.5); });
    const bool isClip = Any(4) != 0;
    ForBoth([isClip](CGContextRef c) { isClip ? CGContextClip(c) : CGContextDrawPath(c, kCGPathEOFill); });
    while (depth < 2 && Any(2) == 0) Draw(depth + 1);
    ForBoth([](CGContextRef c) { CGContextFillRect(c, CGRectMake(0, 0, 40, 30)), CGContextRestoreGState(c); });
    if (Any(100) == 0) AddPoint(Any(2));
  }

  const unsigned int seed = std::random_device{}();
  Canvas known;
  Canvas copied;

 private:
  int Any(int count) { return static_cast<int>(random_() % static_cast<unsigned int>(count)); }

  // One path on the left, one on the right, with a common part.
  void AddPoint(int which) {
    CGMutablePathRef path = kept_[which];
    if (CGPathIsEmpty(path)) CGPathMoveToPoint(path, nullptr, 20, 15);
    CGPathAddLineToPoint(path, nullptr, which * 15 + Any(25), Any(30));
  }

  template <typename Work>
  void ForBoth(const Work& work) {
    for (const Canvas* canvas : {&known, &copied}) work(canvas->Context());
  }

  void Disturb(int depth) {
    const int kind = Any(12);
    ForBoth([kind, depth](CGContextRef c) {
      if (kind < 2) CGContextSetShouldAntialias(c, kind == 0);
      if (kind == 2) CGContextConcatCTM(c, CGAffineTransformTranslate(CGAffineTransformIdentity, 0.5, 0));
      for (int i = 0; i <= depth && kind == 3; ++i) CGContextRestoreGState(c);
      for (int i = 0; i <= depth && kind == 3; ++i) CGContextSaveGState(c);
      if (kind == 4) CGContextBeginPath(c);
    });
  }

  void Add(int which) {
    CGContextAddPath(known.Context(), kept_[which]);
    CGPathRef copy = CGPathCreateMutableCopy(kept_[which]);
    CGContextAddPath(copied.Context(), copy);
    CGPathRelease(copy);
  }

  std::mt19937 random_{seed};
  CGMutablePathRef kept_[2] = {CGPathCreateMutable(), CGPathCreateMutable()};
};

TEST(CGContextTest, PathsThatAreAddedAgain_DrawAsTheirCopies) {
  KnownPaths paths;
  SCOPED_TRACE(paths.seed);
  for (int i = 0; i < 3000; ++i) {
    paths.Draw(0);
    ASSERT_EQ(paths.known.Bytes(), paths.copied.Bytes()) << "drawing " << i;
  }
}

TEST(CGContextTest, Clip_NarrowsAndIsRestored) {
  Canvas canvas;
  CGContextRef context = canvas.Context();
  CGContextSetRGBFillColor(context, 1, 0, 0, 1);
  CGContextSaveGState(context);
  AddRect(context, 5, 5, 20, 20);
  CGContextClip(context);
  AddRect(context, 15, 0, 20, 12);
  CGContextClip(context);
  CGContextFillRect(context, CGRectMake(0, 0, 40, 30));
  EXPECT_NEAR(canvas.Area(), 10 * 7, 0.01);
  EXPECT_EQ(canvas.Pixel(15, 5), kRed);
  EXPECT_EQ(canvas.Pixel(14, 5), kClear);
  CGContextRestoreGState(context);
  CGContextFillRect(context, CGRectMake(0, 0, 1, 1));
  EXPECT_EQ(canvas.Pixel(0, 0), kRed);

  CGContextSaveGState(context);
  CGContextClip(context);  // an empty path clips everything away
  CGContextFillRect(context, CGRectMake(0, 0, 40, 30));
  EXPECT_NEAR(canvas.Area(), 71, 0.01);
}

TEST(CGContextTest, Alpha_MultipliesThePaint_OverWhatIsThere) {
  Canvas canvas;
  CGContextRef context = canvas.Context();
  CGContextSetRGBFillColor(context, 0, 0, 1, 1);
  CGContextFillRect(context, CGRectMake(0, 0, 40, 30));
  CGContextSetAlpha(context, 0.5);
  CGContextSetRGBFillColor(context, 1, 0, 0, 0.5);
  CGContextFillRect(context, CGRectMake(0, 0, 10, 10));
  const Color mixed = canvas.Pixel(5, 5);
  EXPECT_NEAR(mixed[0], 64, 1);
  EXPECT_NEAR(mixed[2], 191, 1);
  EXPECT_EQ(mixed[3], 255);
}

// What a pattern and a function draw from is there as long as they may be drawn, and released once.
TEST(CGContextTest, InfoOfPatternsAndFunctions_OutlivesTheirUse) {
  Canvas canvas;
  int released = 0;
  const auto release = [](void* info) { ++*static_cast<int*>(info); };
  const CGPatternCallbacks drawing{0,
                                   [](void* info, CGContextRef cell) {
                                     EXPECT_EQ(*static_cast<int*>(info), 0);
                                     CGContextSetRGBFillColor(cell, 1, 0, 0, 1);
                                     CGContextFillRect(cell, CGRectMake(0, 0, 8, 8));
                                   },
                                   release};
  CGPatternRef pattern = CGPatternCreate(&released, CGRectMake(0, 0, 8, 8), CGAffineTransformIdentity, 8, 8,
                                         kCGPatternTilingConstantSpacing, true, &drawing);
  CGColorSpaceRef space = CGColorSpaceCreatePattern(nullptr);
  const CGFloat opaque = 1;
  CGContextSetFillColorSpace(canvas.Context(), space);
  CGContextSetFillPattern(canvas.Context(), pattern, &opaque);
  CGColorSpaceRelease(space);
  CGPatternRelease(pattern);
  CGContextSaveGState(canvas.Context());
  CGContextSetRGBFillColor(canvas.Context(), 0, 0, 0, 1);
  CGContextRestoreGState(canvas.Context());
  CGContextFillRect(canvas.Context(), CGRectMake(0, 0, 40, 30));
  EXPECT_EQ(canvas.Pixel(33, 21), kRed);
  EXPECT_EQ(released, 0);
  CGContextSetRGBFillColor(canvas.Context(), 0, 0, 0, 1);
  EXPECT_EQ(released, 1);

  released = 0;
  const CGFunctionCallbacks evaluating{0, [](void*, const CGFloat*, CGFloat* out) { out[0] = out[3] = 1; }, release};
  CGFunctionRef function = CGFunctionCreate(&released, 1, nullptr, 4, nullptr, &evaluating);
  CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
  CGShadingRef shading = CGShadingCreateAxial(rgb, {0, 0}, {40, 0}, function, true, true);
  CGColorSpaceRelease(rgb);
  CGFunctionRelease(function);
  EXPECT_EQ(released, 0);
  CGContextDrawShading(canvas.Context(), shading);
  CGShadingRelease(shading);
  EXPECT_EQ(released, 1);
}

TEST(CGBitmapContextTest, AlphaFirst_EqualsBlueFirst_WhateverIsDrawnAndWritten) {
  const unsigned int seed = std::random_device{}();
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  const auto number = [&random](double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random); };
  Canvas blue(kCGBitmapBlueFirst);
  Canvas alpha(kCGBitmapAlphaFirst);
  for (int step = 0; step < 300; ++step) {
    const double c[4] = {number(0, 1), number(0, 1), number(0, 1), number(0, 1)};
    const double box[4] = {number(-20, 45), number(-20, 35), number(-30, 30), number(-30, 30)};
    const CGAffineTransform turn{number(-2, 2), number(-2, 2), number(-2, 2), number(-2, 2), 20, 15};
    const double width = number(0, 6);
    const auto at = static_cast<std::size_t>(number(0, 40 * 30 - 1)) * 4;
    for (Canvas* canvas : {&blue, &alpha}) {
      CGContextRef context = canvas->Context();
      CGContextSaveGState(context);
      CGContextConcatCTM(context, turn);
      CGContextSetRGBFillColor(context, c[0], c[1], c[2], c[3]);
      CGContextSetRGBStrokeColor(context, c[2], c[1], c[0], c[3]);
      CGContextSetLineWidth(context, width);
      AddRect(context, box[0], box[1], box[2], box[3]);
      CGContextDrawPath(context, step % 2 == 0 ? kCGPathFill : kCGPathStroke);
      CGContextRestoreGState(context);
      for (std::size_t i = 0; i < 4; ++i) canvas->Bytes()[at + i] = 0x77;  // the caller writes a pixel
    }
  }
  for (std::size_t y = 0; y < 30; ++y) {
    for (std::size_t x = 0; x < 40; ++x) ASSERT_EQ(blue.Pixel(x, y), alpha.Pixel(x, y)) << x << ", " << y;
  }
}

TEST(CGContextTest, BadNumbers_PaintNothingOrWhatTheyCover) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Canvas canvas;
  CGContextRef context = canvas.Context();
  CGContextSetRGBFillColor(context, 1, 0, 0, 1);
  const CGAffineTransform maps[] = {{0, 0, 0, 0, 0, 0}, {nan, 0, 0, 1, 0, 0}, {inf, 0, 0, 1, 0, 0}, {1, 1, 1, 1, 0, 0}};
  for (const CGAffineTransform& map : maps) {
    CGContextSaveGState(context);
    CGContextConcatCTM(context, map);
    for (const CGPathDrawingMode mode : {kCGPathFill, kCGPathEOFill, kCGPathStroke}) {
      AddRect(context, 1, 1, 5, 5);
      CGContextDrawPath(context, mode);
    }
    CGContextRestoreGState(context);
  }
  for (const double width : {0.0, -1.0, nan, inf}) {
    CGContextSetLineWidth(context, width);
    AddRect(context, 1, 1, 5, 5);
    CGContextDrawPath(context, kCGPathStroke);
  }
  EXPECT_EQ(canvas.Area(), 0);
  CGContextFillRect(context, CGRectMake(-1e12, -1e12, 2e12, 2e12));
  EXPECT_NEAR(canvas.Area(), 40 * 30, 0.01);
  CGContextRestoreGState(context);  // none was saved
  CGContextFillRect(nullptr, CGRectMake(0, 0, 1, 1));
}

TEST(CGBitmapContextTest, Create_RefusesWhatItCannotServe) {
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGColorSpaceRef pattern = CGColorSpaceCreatePattern(nullptr);
  unsigned char data[64];
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 4, 4, 8, 16, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 0, 4, 8, 16, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, std::size_t{1} << 30, 8, 16, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, 4, 8, 12, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, 4, 8, 18, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, 4, 8, 16, space, 1), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, 4, 16, 16, space, kCGBitmapBlueFirst), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(data, 4, 4, 8, 16, pattern, kCGBitmapBlueFirst), nullptr);
  CGColorSpaceRelease(pattern);
  CGColorSpaceRelease(space);
}

TEST(CGBitmapContextTest, PNG_ReadByLibpng_HasTheColours) {
  for (const std::uint32_t info : {kCGBitmapBlueFirst, kCGBitmapAlphaFirst}) {
    Canvas canvas(info, 3, 2);
    CGContextSetRGBFillColor(canvas.Context(), 0.2, 0.4, 0.8, 0.6);
    CGContextFillRect(canvas.Context(), CGRectMake(0, 1, 1, 1));  // the first pixel of the file
    CGContextSetRGBFillColor(canvas.Context(), 1, 1, 0, 1);
    CGContextFillRect(canvas.Context(), CGRectMake(2, 0, 1, 1));  // the last
    std::size_t size = 0;
    std::unique_ptr<void, decltype(&std::free)> file(CGBitmapContextCopyPNG(canvas.Context(), &size), &std::free);
    ASSERT_NE(file, nullptr);

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.get(), size));
    image.format = PNG_FORMAT_RGBA;
    ASSERT_EQ(image.width, 3U);
    ASSERT_EQ(image.height, 2U);
    std::vector<unsigned char> pixels(24);
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    const int expected[] = {51, 102, 204, 153};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(pixels[i], expected[i], 2);  // premultiplied and back: 1 part in 153
    EXPECT_EQ(std::vector<unsigned char>(pixels.begin() + 20, pixels.end()),
              (std::vector<unsigned char>{255, 255, 0, 255}));
    EXPECT_EQ(pixels[7], 0);
  }
}

}  // namespace
