// What brushes and pens paint, probed where geometry gives the answer.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "CoreGraphics/CGContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "kit/geometry/AGConstants.h"
#include "kit/streams/AKFile.h"

namespace {

constexpr unsigned int kSide = 64;

class AGContextDrawTest : public testing::Test {
 protected:
  AGContextDrawTest() : bitmap_(kSide, kSide, AGBitmap::kFlagZeroFill), context_(bitmap_.GetContextOfBitmap()) {}

  AGColor At(unsigned int x, unsigned int y) const { return bitmap_.GetPixelColor(x, y); }
  double Area() const {
    double area = 0;
    for (unsigned int y = 0; y < kSide; ++y) {
      for (unsigned int x = 0; x < kSide; ++x) area += At(x, y).Alpha() / 255.0;
    }
    return area;
  }
  // How many pixels of a row or column have ink.
  double InkOfRow(unsigned int y) const {
    double ink = 0;
    for (unsigned int x = 0; x < kSide; ++x) ink += At(x, y).Alpha() / 255.0;
    return ink;
  }
  double InkOfColumn(unsigned int x) const {
    double ink = 0;
    for (unsigned int y = 0; y < kSide; ++y) ink += At(x, y).Alpha() / 255.0;
    return ink;
  }

  AGBitmap bitmap_;
  AGContext context_;
};

TEST_F(AGContextDrawTest, Modes_FillAndStroke) {
  context_.brush.SetStyleSolid(kAGColorRed);
  context_.pen.SetStyleSolid(kAGColorBlue, 4, kAGPenSizeModeAbsolute);
  AGPath path;
  path.AddRect({10, 10, 50, 50}, false);
  const struct {
    AGDrawMode mode;
    bool attempted;
    bool inside;
    bool edge;
  } cases[] = {{0, true, true, true}, {1, true, true, false}, {2, true, false, true}, {3, false, false, false}};
  for (const auto& c : cases) {
    bitmap_.ClearPixels();
    EXPECT_EQ(AGGraphicsLow::AGContextDrawPath(context_, path, kAGAffineTransformIdentity, c.mode), c.attempted);
    EXPECT_EQ(At(30, 30) == kAGColorRed, c.inside) << c.mode;
    EXPECT_EQ(At(9, 30) == kAGColorBlue, c.edge) << c.mode;
  }
}

TEST_F(AGContextDrawTest, Shapes_InvisibleOrEmpty_DrawNothing) {
  context_.brush.SetStyleSolid(kAGColorRed);
  context_.DrawRect({10, 10, 10, 30});
  context_.DrawSegment({0, 0}, {60, 60});  // the pen does not appear
  context_.alpha = 0.003;
  context_.DrawRect({0, 0, 30, 30});
  EXPECT_EQ(Area(), 0);
  context_.alpha = 0.004;
  context_.DrawRect({30, 30, 0, 0});
  EXPECT_GT(Area(), 0);
}

TEST_F(AGContextDrawTest, Transforms_PerCallThenContext_AroundTheOrigin) {
  context_.brush.SetStyleSolid(kAGColorRed);
  context_.transform = AGAffineTransformTranslation(20, 0);
  AGPath path;
  path.AddRect({5, 5, 10, 15}, false);
  context_.DrawPath(path, {0, 1, -1, 0, 20, 0});  // (x, y) to (20 - y, x), then 20 to the right
  EXPECT_NEAR(Area(), 50, 0.01);
  EXPECT_TRUE(At(25, 5) == kAGColorRed);
  EXPECT_TRUE(At(34, 9) == kAGColorRed);
  EXPECT_TRUE(At(24, 5) == kAGNullColor);
}

TEST_F(AGContextDrawTest, FillMode_EvenOddByDefault) {
  context_.brush.SetStyleSolid(kAGColorRed);
  AGPath path;
  path.AddRect({5, 5, 45, 45}, false);
  path.AddRect({15, 15, 35, 35}, false);
  context_.DrawPath(path);
  EXPECT_NEAR(Area(), 1600 - 400, 0.01);
  context_.brush.SetFillMode(kAGBrushFillWinding);
  context_.DrawPath(path);
  EXPECT_NEAR(Area(), 1600, 0.01);
}

TEST_F(AGContextDrawTest, PenWidth_RelativeFollowsTheContextsTransform) {
  context_.pen.SetStyleSolid(kAGColorBlue, 2, kAGPenSizeModeRelative);
  context_.DrawSegment({0, 30}, {60, 30});
  EXPECT_NEAR(InkOfColumn(30), 2, 0.01);
  bitmap_.ClearPixels();
  context_.transform = AGAffineTransformScaling(3, 3);
  context_.DrawSegment({0, 10}, {20, 10});
  EXPECT_NEAR(InkOfColumn(30), 6, 0.01);
  bitmap_.ClearPixels();
  context_.pen.SetSizeMode(kAGPenSizeModeAbsolute);
  context_.DrawSegment({0, 10}, {20, 10});
  EXPECT_NEAR(InkOfColumn(30), 2, 0.01);
}

TEST_F(AGContextDrawTest, Nib_IsThinAcrossItsDirection) {
  context_.pen.SetStyleSolid(kAGColorBlue, 8, kAGPenSizeModeAbsolute);
  context_.pen.SetRatio(0.25);
  const struct {
    double angle;
    double alongX;  // thickness of a line along x, measured across it
    double alongY;
  } cases[] = {{0, 2, 8}, {kPi / 2, 8, 2}};
  for (const auto& c : cases) {
    context_.pen.SetAngle(c.angle);
    bitmap_.ClearPixels();
    context_.DrawSegment({-20, 30}, {80, 30});
    EXPECT_NEAR(InkOfColumn(30), c.alongX, 0.05) << c.angle;
    bitmap_.ClearPixels();
    context_.DrawSegment({30, -20}, {30, 80});
    EXPECT_NEAR(InkOfRow(30), c.alongY, 0.05) << c.angle;
  }
  // At 45 degrees both are as thick as the ellipse's extent: sqrt((8² + 2²) / 2).
  context_.pen.SetAngle(kPi / 4);
  bitmap_.ClearPixels();
  context_.DrawSegment({-20, 30}, {80, 30});
  EXPECT_NEAR(InkOfColumn(30), std::sqrt(34.0), 0.06);
}

TEST_F(AGContextDrawTest, ColorFactor_ScalesColoursButNotAlpha) {
  const struct {
    double factor;
    AGColor color;
  } cases[] = {{0.999, {200, 100, 51}}, {0.5, {100, 50, 26}}, {2, {255, 200, 102}}, {-1, {0, 0, 0}}};
  for (const auto& c : cases) {
    context_.colorFactor = c.factor;
    context_.brush.SetStyleSolid(AGColor(200, 100, 51));
    context_.DrawRect({0, 0, 10, 10});
    EXPECT_TRUE(At(5, 5) == c.color) << c.factor;
  }
  EXPECT_EQ(AGGraphicsLow::ApplyColorFactor(AGColor(200, 100, 51, 77), 0.5).Alpha(), 77);
}

TEST_F(AGContextDrawTest, Clip_GoesThroughTheContextsTransform) {
  context_.brush.SetStyleSolid(kAGColorRed);
  context_.SetClipRect({20, 20, 10, 10});
  context_.transform = AGAffineTransformScaling(2, 1);
  context_.DrawRect({0, 0, 60, 60});
  EXPECT_NEAR(Area(), 200, 0.01);
  EXPECT_TRUE(At(20, 10) == kAGColorRed);
  AGContext copy(context_);
  copy.ResetClip();
  EXPECT_TRUE(context_.HasClip());
  context_.SetClipRect({5, 5, 5, 9});
  EXPECT_FALSE(context_.HasClip());
}

TEST_F(AGContextDrawTest, Clear_OpaqueColours_RoundedAndCut) {
  context_.ClearPixelsRect(AGColor(10, 20, 30, 0), {-5, 60.4, 3.6, 99});
  EXPECT_TRUE(At(3, 60) == AGColor(10, 20, 30, 255));
  EXPECT_NEAR(Area(), 4 * 4, 0.001);
  context_.ClearPixels(kAGColorRed);
  EXPECT_NEAR(Area(), kSide * kSide, 0.001);
  context_.ClearPixels();
  EXPECT_EQ(Area(), 0);
}

// Every pattern against its bits, turned and scaled drawing included: the cell stays in the port's own space.
TEST_F(AGContextDrawTest, Patterns_EveryBit_WhateverTheTransform) {
  for (unsigned int index = 1; index <= AGBrush::kPatternCount; ++index) {
    context_.brush.SetStylePattern(kAGColorBlack, kAGColorYellow, index);
    context_.patternOrigin = {index % 5 + 0.4, index % 3 - 0.4};
    context_.transform = {0.6, 0.8, -0.8, 0.6, 32.3, -7.9};
    context_.DrawRect({-200, -200, 200, 200});
    for (unsigned int y = 0; y < 16; ++y) {
      for (unsigned int x = 0; x < 16; ++x) {
        const unsigned int column = (x + 16 - index % 5) % 8;
        const unsigned int row = (y + 16 - index % 3) % 8;
        const unsigned char bits = AGGraphicsLow::kAGBrushPatterns[index - 1][row];
        const bool set = (bits >> (7 - column) & 1) != 0;
        ASSERT_TRUE(At(x, y) == (set ? kAGColorBlack : kAGColorYellow)) << index << ": " << x << ", " << y;
      }
    }
  }
}

// The style, fill mode and pattern index of a record, which no setter has seen.
TEST_F(AGContextDrawTest, Pattern_IndexOutOfRangeInARecord_DrawsTheNearest) {
  const struct {
    unsigned char index;
    unsigned int drawn;
  } cases[] = {{60, 53}, {0, 1}, {255, 53}};
  for (const auto& c : cases) {
    unsigned char record[40] = {2, 0, 0, 0, c.index, 0, 0, 0, 0, 0, 0, 255, 255, 255, 0, 255};
    AKFile file(record, sizeof(record));
    file.OpenForRead();
    ASSERT_EQ(context_.brush.ReadFromFile(file), 0);
    EXPECT_EQ(context_.brush.PatternIndex(), c.index) << "records are kept as read";
    context_.DrawRect({0, 0, 20, 20});
    for (unsigned int i = 0; i < 64; ++i) {
      const bool set = (AGGraphicsLow::kAGBrushPatterns[c.drawn - 1][i / 8] >> (7 - i % 8) & 1) != 0;
      ASSERT_TRUE(At(i % 8, i / 8) == (set ? kAGColorBlack : kAGColorYellow)) << c.drawn << " at " << i;
    }
  }
}

TEST_F(AGContextDrawTest, Picture_OfPathAndImage_FillItsRectangle) {
  context_.brush.SetStyleSolid(kAGColorBlue);
  AGPath path;
  path.AddRect({100, 100, 110, 120}, false);
  context_.DrawPicture(AGPicture(path), {0, 0, 40, 40}, true, 0);  // 10 by 20 fits as 20 by 40
  EXPECT_NEAR(Area(), 800, 0.01);
  EXPECT_TRUE(At(10, 0) == kAGColorBlue);
  AGBitmap solid(2U, 4U, 0);
  solid.ClearPixels(kAGColorRed);
  context_.DrawPicture(AGPicture(AGImage(solid)), {0, 0, 40, 40}, true, 0);
  EXPECT_NEAR(Area(), 800, 0.01);
  EXPECT_TRUE(At(29, 39) == kAGColorRed);
  context_.DrawPicture(AGPicture(), {0, 0, 60, 60}, false, 0);
  EXPECT_NEAR(Area(), 800, 0.01);
}

// A window hands over a cairo context with y down and a scale of its own.
TEST_F(AGContextDrawTest, PortOverCairo_StandsOnItsMatrix_UprightAndCrisp) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 100, 100);
  cairo_t* cairo = cairo_create(surface);
  cairo_translate(cairo, 10, 20);
  cairo_scale(cairo, 2, 2);
  CGContextRef port = CGContextCreateOverCairo(cairo, 40, 30);
  ASSERT_NE(port, nullptr);
  {
    AGContext context(port, {40, 30});
    context.brush.SetStyleLinearGradient(kAGColorRed, kAGColorRed, 0.5, 1);
    context.DrawRect({0, 0, 5, 10});  // the lower left corner: pixels (10, 60) to (20, 80)
  }
  CGContextRelease(port);
  cairo_surface_flush(surface);
  unsigned int ink = 0;
  for (int y = 0; y < 100; ++y) {
    const auto* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
    for (int x = 0; x < 100; ++x) {
      const bool inside = x >= 10 && x < 20 && y >= 60 && y < 80;
      ASSERT_EQ(row[x * 4 + 3], inside ? 255 : 0) << x << ", " << y;
      ink += inside ? 1 : 0;
    }
  }
  EXPECT_EQ(ink, 200U);
  EXPECT_EQ(CGContextCreateOverCairo(nullptr, 40, 30), nullptr);
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}

TEST_F(AGContextDrawTest, PatternTable_SpotChecks) {
  const auto row = [](unsigned int index, unsigned int k) { return AGGraphicsLow::kAGBrushPatterns[index - 1][k]; };
  EXPECT_EQ(row(1, 7), 0xFF);
  EXPECT_EQ(row(18, 0), 0x7F);
  EXPECT_EQ(row(36, 3), 0xD8);
  EXPECT_EQ(row(48, 4), 0x8F);
  EXPECT_EQ(row(53, 4), 0xFE);
}

TEST_F(AGContextDrawTest, Pattern_TranslucentContext_FadesBothColours) {
  context_.brush.SetStylePattern(kAGColorRed, AGColor(0, 255, 0, 0), 27);  // columns of 1 and 0
  context_.alpha = 0.5;
  context_.DrawRect({0, 0, 20, 20});
  EXPECT_NEAR(At(1, 5).Alpha(), 128, 1);
  EXPECT_EQ(At(0, 5).Alpha(), 0);
}

// Along the axis of a linear gradient from red to blue, and outwards from the centre of a radial one.
TEST_F(AGContextDrawTest, Gradients_ReachTheirColoursWhereTheyShould) {
  const AGRect square{2, 2, 62, 62};
  for (const double blend : {0.25, 0.5, 0.8}) {
    context_.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, blend, 0);
    context_.DrawRect(square);
    for (unsigned int x = 2; x < 62; x += 5) {
      const double t = (x + 0.5 - 2) / 60;
      const double mixed = t < blend ? 0.5 * t / blend : 0.5 + 0.5 * (t - blend) / (1 - blend);
      EXPECT_NEAR(At(x, 30).Blue(), 255 * mixed, 3) << blend << " at " << x;
      EXPECT_NEAR(At(x, 30).Red(), 255 * (1 - mixed), 3) << blend << " at " << x;
    }
    context_.brush.SetStyleRadialGradient(kAGColorRed, kAGColorBlue, blend, 0.5, 0.5);
    context_.DrawRect(square);
    for (unsigned int x = 32; x < 62; x += 3) {
      const double t = (x + 0.5 - 32) / (60 * 0.707);
      const double middle = 1 - blend;
      const double mixed = t < middle ? 0.5 * t / middle : 0.5 + 0.5 * (t - middle) / (1 - middle);
      EXPECT_NEAR(At(x, 31).Blue(), 255 * mixed, 5) << blend << " at " << x;
    }
  }
}

TEST_F(AGContextDrawTest, LinearGradient_AngleTurnsTheAxis) {
  context_.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, 0.5, kPi / 2);
  context_.DrawRect({0, 0, 64, 64});
  EXPECT_GT(At(30, 62).Red(), 245);  // starts at the top
  EXPECT_GT(At(30, 1).Blue(), 245);
  EXPECT_NEAR(At(5, 20).Blue(), At(60, 20).Blue(), 1);
}

TEST_F(AGContextDrawTest, RadialGradient_IsAnEllipseInAWideRectangle_CentreFromTheTop) {
  context_.brush.SetStyleRadialGradient(kAGColorWhite, kAGColorBlack, 0.5, 0.5, 0.5);
  context_.DrawRect({0, 20, 64, 36});
  // The same fraction of the half width and of the half height gives the same colour.
  EXPECT_NEAR(At(32 + 16, 28).Red(), At(32, 28 + 4).Red(), 10);
  context_.brush.SetStyleRadialGradient(kAGColorWhite, kAGColorBlack, 0.5, 0.25, 0.25);
  context_.DrawRect({0, 0, 64, 64});
  EXPECT_GT(At(16, 48).Red(), 245);
  EXPECT_LT(At(48, 16).Red(), 60);
}

TEST_F(AGContextDrawTest, CustomGradient_GapsStayColour1_OneStopFallsBack) {
  ATBrushCustomGradient<double> gradient;
  const double factors[] = {1, 1, 0};
  const double positions[] = {0.25, 0.5, 0.75};
  gradient.SetFactors(factors, positions, 3);
  context_.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, gradient, 0);
  context_.DrawRect({0, 0, 64, 64});
  EXPECT_TRUE(At(10, 30) == kAGColorRed);
  EXPECT_GT(At(24, 30).Blue(), 250);
  EXPECT_NEAR(At(40, 30).Blue(), 255 * (1 - (40.5 / 64 - 0.5) / 0.25), 3);
  EXPECT_TRUE(At(55, 30) == kAGColorRed);

  gradient.SetFactors(factors, positions, 1);
  context_.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, gradient, 0);
  context_.DrawRect({0, 0, 64, 64});
  EXPECT_GT(At(62, 30).Blue(), 245);
}

// Small objects see a small part of a gradient that they share.
TEST_F(AGContextDrawTest, CustomGradient_SharedByTinyObjects_HasAllItsSteps) {
  ATBrushCustomGradient<double> gradient;
  const double factors[] = {0, 1, 0, 1};
  const double positions[] = {0, 0.3, 0.35, 1};
  gradient.SetFactors(factors, positions, 4);
  gradient.SetBounds({-2000, 0, 2000, 64});
  context_.brush.SetStyleLinearGradient(kAGColorBlack, kAGColorWhite, gradient, kPi);
  // An angle of half a turn runs from the right to the left.
  AGGraphicsLow::_LowCGShadingRobot robot;
  robot.SetBlend(factors, positions, 4);
  for (double place = -1990; place < 1990; place += 37) {
    context_.transform = {1, 0, 0, 1, -place, 0};
    context_.DrawRect({place, 10, place + 3, 13});
    for (unsigned int x = 0; x < 3; ++x) {
      const double t = (2000 - (place + x + 0.5)) / 4000;
      const double drawn = At(x, 11).Red();
      double error = 255;
      // The axis is turned by a thousandth, which may take a pixel over the border of two entries.
      for (const double rounding : {0.4, 0.5, 0.6}) {
        const double f = robot.table[static_cast<int>(std::fmin(t * 512 + rounding, 511))];
        error = std::fmin(error, std::fabs(drawn - 255 * f));
      }
      EXPECT_LE(error, 1) << place << " + " << x;
    }
  }
}

TEST(AGGraphicsLowTest, PointOnRect_EveryDirection_LiesOnTheBorder) {
  const AGRect rect{10, 20, 50, 30};
  for (int degrees = -360; degrees <= 720; degrees += 7) {
    const AGPoint p = AGGraphicsLow::_LowCGShadingPointOnRectAtAngle(rect, degrees * kDegToRad);
    const double ux = std::fabs(p.x - 30) / 20;
    const double uy = std::fabs(p.y - 25) / 5;
    EXPECT_NEAR(std::max(ux, uy), 1, 1e-9) << degrees;
    // Opposite directions give opposite points.
    const AGPoint q = AGGraphicsLow::_LowCGShadingPointOnRectAtAngle(rect, degrees * kDegToRad + kPi);
    EXPECT_NEAR(p.x + q.x, 60, 1e-6) << degrees;
    EXPECT_NEAR(p.y + q.y, 50, 1e-6) << degrees;
  }
}

TEST_F(AGContextDrawTest, RandomDraws_LeaveThePortAsItWas) {
  const unsigned int seed = std::random_device{}();
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::srand(seed);
  const auto number = [&random](double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random); };
  CGContextRef port = context_.NativePort();
  CGContextConcatCTM(port, {0.5, 0.1, -0.2, 0.7, 3, 4});
  const CGAffineTransform before = CGContextGetCTM(port);
  for (int i = 0; i < 500; ++i) {
    context_.brush.Randomize(0.9);
    context_.pen.Randomize(0.9);
    context_.alpha = number(0, 1);
    context_.transform = {number(-2, 2), number(-2, 2), number(-2, 2), number(-2, 2), number(-9, 9), number(-9, 9)};
    if (i % 3 == 0) context_.SetClipRect({number(0, 60), number(0, 60), number(0, 60), number(0, 60)});
    context_.DrawRoundedRect({number(0, 60), number(0, 60), number(0, 60), number(0, 60)}, number(0, 1));
  }
  const CGAffineTransform after = CGContextGetCTM(port);
  EXPECT_EQ(std::vector<double>({before.a, before.b, before.c, before.d, before.tx, before.ty}),
            std::vector<double>({after.a, after.b, after.c, after.d, after.tx, after.ty}));
  // Opaque black without a clip, as a fresh port has it.
  bitmap_.ClearPixels();
  CGContextFillRect(port, CGRectMake(-500, -500, 1000, 1000));
  EXPECT_NEAR(Area(), kSide * kSide, 0.001);
}

}  // namespace
