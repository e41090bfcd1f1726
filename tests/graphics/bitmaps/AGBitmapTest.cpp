#include <gtest/gtest.h>

#include <cmath>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/text/AGFont.h"
#include "tests/graphics/text/TextTestSupport.h"

namespace {

TEST(AGBitmapTest, Pixels_AlphaFirst_LastRowFirst) {
  AGBitmap bitmap(3U, 2U, AGBitmap::kFlagZeroFill);
  bitmap.SetPixelColor(0, 0, AGColor(1, 2, 3, 4));
  bitmap.SetPixelColor(2, 1, AGColor(5, 6, 7, 8));
  const unsigned char expected[24] = {0, 0, 0, 0, 0, 0, 0, 0, 8, 5, 6, 7, 4, 1, 2, 3};
  EXPECT_EQ(std::vector<unsigned char>(bitmap.Pixels(), bitmap.Pixels() + 24),
            std::vector<unsigned char>(expected, expected + 24));
  bitmap.SetPixelColor(3, 0, kAGColorRed);
  bitmap.SetPixelColor(0, 2, kAGColorRed);
  EXPECT_TRUE(bitmap.GetPixelColor(3, 0) == kAGNullColor);
  EXPECT_TRUE(bitmap.GetPixelColor(2, 1) == AGColor(5, 6, 7, 8));
}

TEST(AGBitmapTest, ClearPixelsRect_RoundsFlipsAndCuts) {
  const struct {
    AGRect rect;
    unsigned int count;
    AGPoint inside;
  } cases[] = {{{0.4, 0.6, 2.5, 3.4}, 3 * 2, {0, 1}},
               {{-5, -5, 2, 2}, 4, {1, 1}},
               {{8, 7, 99, 99}, 2 * 1, {9, 7}},
               {{3, 3, 3, 5}, 0, {0, 0}},
               {{5, 5, 2, 2}, 0, {0, 0}},
               {{-1e300, 0, 1e300, 1}, 10, {9, 0}},
               {{std::nan(""), 0, 1, 1}, 1, {0, 0}}};
  for (const auto& c : cases) {
    AGBitmap bitmap(10U, 8U, AGBitmap::kFlagZeroFill);
    bitmap.ClearPixelsRect(kAGColorGreen, c.rect);
    unsigned int count = 0;
    for (unsigned int y = 0; y < 8; ++y) {
      for (unsigned int x = 0; x < 10; ++x) count += bitmap.GetPixelColor(x, y) == kAGColorGreen ? 1 : 0;
    }
    EXPECT_EQ(count, c.count) << c.rect.x0;
    const bool inside = bitmap.GetPixelColor(static_cast<unsigned int>(c.inside.x),
                                             static_cast<unsigned int>(c.inside.y)) == kAGColorGreen;
    EXPECT_EQ(inside, c.count != 0) << c.rect.x0;
  }
}

TEST(AGBitmapTest, Create_ImpossibleSizes_StayEmpty) {
  const AGSize sizes[] = {{-3, 10}, {0.4, 10}, {40000, 40000}, {1e300, 1}, {std::nan(""), 5}};
  for (const AGSize& size : sizes) {
    AGBitmap bitmap(size, 0);
    EXPECT_FALSE(bitmap.IsOpen()) << size.width;
    bitmap.ClearPixels(kAGColorRed);
    bitmap.SetPixelColor(0, 0, kAGColorRed);
    EXPECT_TRUE(bitmap.GetPixelColor(0, 0) == kAGNullColor);
    bitmap.GetContextOfBitmap().DrawRect({0, 0, 5, 5});
  }
  // 65536 by 16384 pixels are 2^32 bytes, which 32 bits would count as 0; one column more wraps into a small number.
  EXPECT_FALSE(AGBitmap(65536U, 16384U, 0).IsOpen());
  EXPECT_FALSE(AGBitmap(65537U, 16384U, 0).IsOpen());
}

TEST(AGBitmapTest, DrawingAndPixelAccess_AlternateFreely) {
  for (const unsigned int flags : {AGBitmap::kFlagZeroFill, AGBitmap::kFlagZeroFill | AGBitmap::kFlagLittleEndian}) {
    AGBitmap bitmap(10U, 10U, flags);
    AGContext context = bitmap.GetContextOfBitmap();
    for (const bool cleared : {false, true}) {
      // After a clear of the whole surface too, pixels written directly lie below what is drawn next.
      if (cleared) context.ClearPixels();
      bitmap.SetPixelColor(2, 2, AGColor(255, 255, 255, 255));
      EXPECT_TRUE(bitmap.GetPixelColor(2, 2) == kAGColorWhite);
      context.brush.SetStyleSolid(AGColor(0, 0, 0, 128));
      context.DrawRect({0, 0, 10, 10});
      EXPECT_NEAR(bitmap.GetPixelColor(2, 2).Green(), 127, 1) << flags << cleared;
      context.brush.SetStyleSolid(kAGColorBlack);
      context.DrawRect({4, 4, 5, 5});
      bitmap.SetPixelColor(4, 4, kAGColorWhite);
      EXPECT_TRUE(bitmap.GetPixelColor(4, 4) == kAGColorWhite);
    }
  }
}

// Sides beyond what cairo's numbers hold: everything is drawn at the far end as at the near one.
TEST(AGBitmapTest, LongBitmaps_AreDrawnOnToTheirEnds) {
  const AGFont font(kFamily, 9, 0);
  for (const bool isWide : {true, false}) {
    AGBitmap bitmap(isWide ? 1200000U : 12U, isWide ? 12U : 100000U, AGBitmap::kFlagZeroFill);
    ASSERT_TRUE(bitmap.IsOpen());
    AGContext context = bitmap.GetContextOfBitmap();
    context.antialias = true;
    const AGPoint far = isWide ? AGPoint{1199980, 0} : AGPoint{0, 99980};
    const auto drawnAt = [&](double x, double y) {
      return bitmap.GetPixelColor(static_cast<unsigned int>(far.x + x), static_cast<unsigned int>(far.y + y));
    };
    const AGRect part{far.x + 2, far.y + 2, far.x + 10, far.y + 10};
    const auto clear = [&] {
      context.ClearPixels(kAGColorWhite);
      EXPECT_TRUE(drawnAt(1, 1) == kAGColorWhite);
    };
    clear();
    context.brush.SetStyleSolid(kAGColorRed);
    context.DrawEllipseInRect(part);
    EXPECT_TRUE(drawnAt(5, 5) == kAGColorRed);
    clear();
    context.brush.SetStyleLinearGradient(kAGColorBlack, kAGColorRed, 0.5, 0);
    context.DrawRect(part);
    EXPECT_LT(drawnAt(2, 5).Red() + 100, drawnAt(9, 5).Red());
    clear();
    context.brush.SetStylePattern(kAGColorBlack, kAGColorRed, 12);
    context.DrawRect(part);
    EXPECT_EQ(drawnAt(5, 5).Green(), 0);
    clear();
    context.brush.SetStyleSolid(kAGColorBlack);
    context.DrawText("#", font, AGPoint{far.x + 2, far.y + 3}, kAGAffineTransformIdentity, kAGTextAlignmentLeft);
    int dark = 0;
    for (int i = 0; i < 100; ++i) dark += drawnAt(2 + i % 10, 2 + i / 10).Red() < 128 ? 1 : 0;
    EXPECT_GT(dark, 5);
    // The whole as an image, moved back to a small bitmap: its far end is there.
    clear();
    context.brush.SetStyleSolid(kAGColorBlue);
    context.DrawRect(part);
    const AGImage image(bitmap);
    AGBitmap small(20U, 20U, AGBitmap::kFlagZeroFill);
    small.GetContextOfBitmap().DrawImage(image, AGPoint{-far.x, -far.y}, kAGAffineTransformIdentity,
                                         kAGImageQualityHigh);
    EXPECT_TRUE(small.GetPixelColor(5, 5) == kAGColorBlue);
    EXPECT_TRUE(small.GetPixelColor(1, 1) == kAGColorWhite);
  }
}

}  // namespace
