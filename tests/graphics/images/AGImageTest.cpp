// Images made from bitmaps and drawn again.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/bitmaps/AGBitmapOfContext.h"
#include "graphics/images/AGImage.h"

namespace {

// Three by two pixels, each of its own colour, opaque but one.
AGImage SmallImage() {
  AGBitmap bitmap(3U, 2U, AGBitmap::kFlagZeroFill);
  for (unsigned int y = 0; y < 2; ++y) {
    for (unsigned int x = 0; x < 3; ++x) {
      bitmap.SetPixelColor(x, y, AGColor(static_cast<unsigned char>(80 * x), static_cast<unsigned char>(200 * y), 50));
    }
  }
  bitmap.SetPixelColor(2, 1, kAGNullColor);
  return AGImage(bitmap);
}

class AGImageTest : public testing::Test {
 protected:
  AGImageTest() : bitmap_(20U, 20U, AGBitmap::kFlagZeroFill), context_(bitmap_.GetContextOfBitmap()) {}
  AGBitmap bitmap_;
  AGContext context_;
};

TEST_F(AGImageTest, Draw_AtAPoint_PixelForPixel_Upright) {
  const AGImage image = SmallImage();
  context_.DrawImage(image, AGPoint{5, 7}, kAGAffineTransformIdentity, 4);
  for (unsigned int y = 0; y < 2; ++y) {
    for (unsigned int x = 0; x < 3; ++x) {
      const AGColor expected =
          x == 2 && y == 1 ? kAGNullColor
                           : AGColor(static_cast<unsigned char>(80 * x), static_cast<unsigned char>(200 * y), 50);
      EXPECT_TRUE(bitmap_.GetPixelColor(5 + x, 7 + y) == expected) << x << ", " << y;
    }
  }
  EXPECT_TRUE(bitmap_.GetPixelColor(4, 7) == kAGNullColor);
  EXPECT_TRUE(bitmap_.GetPixelColor(8, 7) == kAGNullColor);
}

TEST_F(AGImageTest, Draw_FittedKeepingAspect_IsCentred_WithSharpEdges) {
  AGBitmap solid(4U, 2U, 0);
  solid.ClearPixels(kAGColorRed);
  context_.DrawImage(AGImage(solid), AGRect{0, 0, 20, 20}, true, 1);
  unsigned int ink = 0;
  for (unsigned int y = 0; y < 20; ++y) {
    for (unsigned int x = 0; x < 20; ++x) ink += bitmap_.GetPixelColor(x, y) == kAGColorRed ? 1 : 0;
  }
  EXPECT_EQ(ink, 200U);
  EXPECT_TRUE(bitmap_.GetPixelColor(0, 5) == kAGColorRed);
  EXPECT_TRUE(bitmap_.GetPixelColor(0, 4) == kAGNullColor);
}

TEST_F(AGImageTest, Draw_AlphaAndColorFactor) {
  AGBitmap solid(20U, 20U, 0);
  solid.ClearPixels(AGColor(200, 200, 200));
  const AGImage image(solid);
  const struct {
    double alpha;
    double factor;
    int red;  // over a red channel of 100
  } cases[] = {{0.003, 1, 100},
               {0.5, 1, 150},
               {1, 1.003, 200},
               // Hard light of a source s above a half: 1 - 2 (1 - s) (1 - b).
               {1, 1.5, 189},
               // Soft light above a half and b above a quarter: b + (2 s - 1) (√b - b).
               {1, 0.5, 132}};
  for (const auto& c : cases) {
    context_.ClearPixels(AGColor(100, 100, 100));
    context_.alpha = c.alpha;
    context_.colorFactor = c.factor;
    context_.DrawImage(image, AGRect{0, 0, 20, 20}, false, 0);
    EXPECT_NEAR(bitmap_.GetPixelColor(10, 10).Red(), c.red, 2) << c.alpha << " " << c.factor;
  }
}

// Stripes too fine for the target: what is left of them would be a false pattern.
TEST(AGImageScaleTest, Shrink_AtHighQuality_MakesFineStripesGrey_AndKeepsTheMean) {
  AGBitmap stripes(600U, 450U, 0);
  for (unsigned int y = 0; y < 450; ++y) {
    for (unsigned int x = 0; x < 600; ++x) {
      const auto level = [](unsigned int at) { return static_cast<unsigned char>(at * 2 % 5 < 3 ? 200 : 50); };
      stripes.SetPixelColor(x, y, AGColor(level(x), level(y), level(x + y)));
    }
  }
  const AGImage image(stripes);
  for (const double width : {37.3, 60.0, 100.0, 133.4, 150.0, 170.0}) {
    AGBitmap bitmap(200U, 200U, AGBitmap::kFlagZeroFill);
    bitmap.GetContextOfBitmap().DrawImage(image, AGRect{0, 0, width, width * 0.75}, false, 3);
    for (unsigned int y = 3; y < width * 0.75 - 3; ++y) {
      for (unsigned int x = 3; x < width - 3; ++x) {
        const AGColor color = bitmap.GetPixelColor(x, y);
        // Of the 90 levels around the mean of 140 next to nothing.
        for (const int channel : {color.Red(), color.Green(), color.Blue()}) ASSERT_NEAR(channel, 140, 5) << width;
      }
    }
  }
}

// Fine stripes of a third black across the axis that shrinks: grey, at high quality no less than at the default.
TEST(AGImageScaleTest, ShrinkOneAxisAndEnlargeTheOther_AtHighQuality_MakesFineStripesGrey) {
  for (const bool upright : {true, false}) {
    AGBitmap stripes(upright ? 400U : 20U, upright ? 20U : 400U, AGBitmap::kFlagZeroFill);
    for (unsigned int y = 0; y < stripes.Height(); ++y) {
      for (unsigned int x = 0; x < stripes.Width(); ++x) {
        stripes.SetPixelColor(x, y, (upright ? x : y) % 3 == 0 ? kAGColorBlack : kAGColorWhite);
      }
    }
    AGBitmap bitmap(upright ? 90U : 300U, upright ? 300U : 90U, AGBitmap::kFlagZeroFill);
    const AGRect all{0, 0, 1.0 * bitmap.Width(), 1.0 * bitmap.Height()};
    const auto worst = [&](AGImageQuality quality) {
      bitmap.GetContextOfBitmap().DrawImage(AGImage(stripes), all, false, quality);
      int difference = 0;
      for (unsigned int y = 3; y < bitmap.Height() - 3; ++y) {
        for (unsigned int x = 3; x < bitmap.Width() - 3; ++x) {
          difference = std::max(difference, std::abs(bitmap.GetPixelColor(x, y).Green() - 170));
        }
      }
      return difference;
    };
    const int atDefault = worst(0);
    EXPECT_LE(worst(3), std::min(atDefault, 6)) << upright;
  }
}

TEST(AGImageScaleTest, Shrink_PartlyOutside_DrawsThePixelsOfTheWhole) {
  AGBitmap source(203U, 151U, 0);
  for (unsigned int y = 0; y < 151; ++y) {
    for (unsigned int x = 0; x < 203; ++x) {
      source.SetPixelColor(x, y, AGColor(static_cast<unsigned char>(x), static_cast<unsigned char>(y), 100));
    }
  }
  const AGImage image(source);
  const AGRect turned[] = {{0, 0, 70, 50}, {70, 0, 0, 50}, {0, 50, 70, 0}};
  for (const AGRect& rect : turned) {
    AGBitmap whole(70U, 50U, AGBitmap::kFlagZeroFill);
    whole.GetContextOfBitmap().DrawImage(image, rect, false, 3);
    AGBitmap part(20U, 15U, AGBitmap::kFlagZeroFill);
    AGContext context = part.GetContextOfBitmap();
    context.transform = {1, 0, 0, 1, -31, -22};
    context.DrawImage(image, rect, false, 3);
    for (unsigned int y = 0; y < 15; ++y) {
      for (unsigned int x = 0; x < 20; ++x) {
        EXPECT_TRUE(part.GetPixelColor(x, y) == whole.GetPixelColor(x + 31, y + 22)) << x << ", " << y;
      }
    }
  }
}

TEST(AGImageCountTest, CopiesShareNothing_AndAreCounted) {
  const unsigned int count = AGImage::GetImageGlobalCount();
  {
    AGImage image = SmallImage();
    AGImage copy(image);
    image = *&image;
    image.Clear();
    EXPECT_FALSE(copy.IsEmpty());
    EXPECT_EQ(AGImage::GetImageGlobalCount(), count + 1);
    EXPECT_EQ(AGImage::GetImageGlobalBytes() % 24, 0U);
    EXPECT_FALSE(image.SetupFromBitmap(AGBitmap()));
  }
  EXPECT_EQ(AGImage::GetImageGlobalCount(), count);
}

TEST(AGBitmapImageTest, FromImage_UprightOrFlipped) {
  const AGImage image = SmallImage();
  AGBitmap upright(image, 0);
  EXPECT_TRUE(upright.GetPixelColor(1, 0) == AGColor(80, 0, 50));
  EXPECT_TRUE(upright.GetPixelColor(2, 1) == kAGNullColor);
  AGBitmap flipped(image, AGBitmap::kFlagLittleEndian);
  // The pixels are blue first, but pixel access keeps the alpha-first packing.
  EXPECT_TRUE(flipped.GetPixelColor(1, 1) == AGColor(0, 80, 255, 50));
  EXPECT_FALSE(AGBitmap(AGImage(), 0).IsOpen());
}

TEST(AGBitmapOfContextTest, DescribesForeignPixels) {
  AGBitmap bitmap(7U, 5U, AGBitmap::kFlagZeroFill);
  {
    AGBitmapOfContext view(bitmap.GetContextOfBitmap(), 0);
    EXPECT_EQ(view.Width(), 7U);
    EXPECT_EQ(view.RowStride(), 7U);
    view.SetPixelColor(6, 4, kAGColorCyan);
  }
  EXPECT_TRUE(bitmap.GetPixelColor(6, 4) == kAGColorCyan);
  EXPECT_FALSE(AGBitmapOfContext(nullptr, 0).IsOpen());
}

}  // namespace
