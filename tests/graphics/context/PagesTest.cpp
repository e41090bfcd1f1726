// The same scene on a bitmap, a PDF page and an SVG page, the pages read by programs of their own.
#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "AKPlatform/AKDashes.h"
#include "AKPlatform/AKGroup.h"
#include "AKPlatform/AKVectorContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/text/AGFont.h"
#include "kit/geometry/AGConstants.h"
#include "tests/graphics/context/LeakScope.h"
#include "tests/graphics/text/TextTestSupport.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

constexpr unsigned int kWidth = 240;
constexpr unsigned int kHeight = 160;

void DrawScene(AGContext context) {
  context.ClearPixels(kAGColorWhite);
  context.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, 0.3, 0.7);
  context.pen.SetStyleSolid(kAGColorBlack, 3, kAGPenSizeModeAbsolute);
  context.DrawRoundedRect({10, 10, 80, 70}, 0.5);
  context.brush.SetStyleRadialGradient(kAGColorWhite, AGColor(0, 120, 0), 0.6, 0.4, 0.3);
  context.DrawEllipseInRect({90, 10, 220, 70});
  context.alpha = 0.5;
  context.brush.SetStyleSolid(AGColor(200, 0, 200));
  context.transform = {0.8, 0.3, -0.3, 0.8, 40, -10};
  context.SetClipRect({20, 80, 150, 160});
  context.DrawRect({10, 70, 120, 140});
  context.ResetClip();
  context.alpha = 1;
  context.pen.SetRatio(0.3);
  context.pen.SetSize(10);
  context.pen.SetAngle(1);
  context.brush.SetStyleNone();
  context.DrawEllipseInRect({120, 60, 200, 120});
  context.SetClipRect({0, 90, 110, 160});
  ASSERT_TRUE(CGContextBeginGroup(context.NativePort(), CGRectMake(0, 60, 110, 100)));  // without our own transform
  const CGFloat dashes[] = {2, 1};
  CGContextSetDashes(context.NativePort(), dashes, 2);
  context.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, 0.3, 0.7);
  context.pen.SetStyleSolid(kAGColorBlack, 6, kAGPenSizeModeAbsolute);
  context.DrawRoundedRect({15, 95, 75, 140}, 0.5);
  context.ResetClip();
  context.DrawEllipseInRect({45, 85, 85, 125});
  CGContextSetDashes(context.NativePort(), nullptr, 0);
  CGContextEndGroup(context.NativePort(), 0.4);
  context.brush.SetStyleSolid(kAGColorBlue);
  context.DrawRect({190, 140, 235, 155});
}

bool Append(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

using Pixels = std::vector<unsigned char>;  // red, green, blue, rows from the top

Pixels ReadPNG(const std::string& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  Pixels pixels(kWidth * kHeight * 3);
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return {};
  image.format = PNG_FORMAT_RGB;
  if (image.width != kWidth || image.height != kHeight) return {};
  png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
  return pixels;
}

Pixels DrawOnBitmap() {
  AGBitmap bitmap(kWidth, kHeight, 0);
  DrawScene(bitmap.GetContextOfBitmap());
  Pixels pixels;
  for (unsigned int row = 0; row < kHeight; ++row) {
    for (unsigned int x = 0; x < kWidth; ++x) {
      const AGColor color = bitmap.GetPixelColor(x, kHeight - 1 - row);
      pixels.insert(pixels.end(), {color.Red(), color.Green(), color.Blue()});
    }
  }
  return pixels;
}

std::string DrawOnPage(decltype(&CGVectorContextCreatePDF) create) {
  const LeakScope scope;
  std::string file;
  CGContextRef page = create(kWidth, kHeight, &Append, &file);
  DrawScene(AGContext(page, {kWidth, kHeight}));
  EXPECT_TRUE(CGVectorContextFinish(page));
  CGContextRelease(page);
  return file;
}

// Rasterisers differ at edges: a pixel that an edge crosses may differ by much, one in an area by a rounding step of
// the gradient. So nearly all channels must agree closely, and the mean must.
void ExpectAlike(const Pixels& expected, const Pixels& actual) {
  ASSERT_EQ(expected.size(), actual.size());
  double sum = 0;
  std::size_t far = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const int difference = std::abs(expected[i] - actual[i]);
    sum += difference;
    if (difference > 6) ++far;
  }
  EXPECT_LT(sum / static_cast<double>(expected.size()), 1.5);
  EXPECT_LT(static_cast<double>(far) / static_cast<double>(expected.size()), 0.05);
}

class PagesTest : public testing::Test {
 protected:
  Pixels Rasterise(const std::string& file, const std::string& command) {
    std::FILE* page = std::fopen(folder_.Path("page").c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), page);
    std::fclose(page);
    const int code = std::system(("cd " + folder_.Path("") + " && " + command).c_str());
    EXPECT_EQ(code, 0) << command;
    return ReadPNG(folder_.Path("picture.png"));
  }

  const file_test::TempFolder folder_;
};

TEST_F(PagesTest, PDF_ShowsWhatTheBitmapShows) {
  const std::string file = DrawOnPage(&CGVectorContextCreatePDF);
  ExpectAlike(DrawOnBitmap(), Rasterise(file, "pdftoppm -r 72 -png -singlefile page picture"));
}

TEST_F(PagesTest, SVG_ShowsWhatTheBitmapShows_GradientsAsFewStops) {
  const std::string file = DrawOnPage(&CGVectorContextCreateSVG);
  ExpectAlike(DrawOnBitmap(), Rasterise(file, "rsvg-convert -w 240 -h 160 -o picture.png page"));
  EXPECT_NE(file.find("<linearGradient"), std::string::npos);
  EXPECT_NE(file.find("<radialGradient"), std::string::npos);
  EXPECT_EQ(file.find("<image"), std::string::npos);
  std::size_t stops = 0;
  for (std::size_t at = file.find("<stop"); at != std::string::npos; at = file.find("<stop", at + 1)) ++stops;
  EXPECT_LE(stops, 16U);
}

// Noncharacters of every plane, lone surrogates, controls and anything else, and then a red square.
void DrawAnyText(AGContext context, unsigned int seed) {
  std::mt19937 random(seed);
  context.ClearPixels(kAGColorWhite);
  context.brush.SetStyleSolid(kAGColorBlack);
  const AGFont font("DejaVu Sans", 9, kAGFontStyleRegular);
  for (int line = 0; line < 12; ++line) {
    AKUniChars text = Utf16(u"\uFFFE\uFFFF\uFDD0\uFDEF\U0001FFFE\U0010FFFF");
    for (int i = 0; i < 20; ++i) {
      const unsigned int kind = random() % 4;
      const unsigned int unit = kind == 0   ? random() % 0x300
                                : kind == 1 ? 0xFDC0 + random() % 0x240
                                            : random() & 0xFFFF;
      text.Append(static_cast<char16_t>(unit));
    }
    context.DrawUText(text, font, AGPoint{100, 10.0 + 12 * line}, kAGAffineTransformIdentity, kAGTextAlignmentLeft);
  }
  context.brush.SetStyleSolid(kAGColorRed);
  context.DrawRect({10, 10, 60, 60});
}

TEST_F(PagesTest, AnyText_LeavesThePageWhole) {
  AGFont::LowInitialize(AGFont::kOptionFallBack | AGFont::kOptionAcceptSubstitute);
  const struct {
    decltype(&CGVectorContextCreatePDF) create;
    const char* command;
  } pages[] = {{&CGVectorContextCreatePDF, "pdftoppm -r 72 -png -singlefile page picture"},
               {&CGVectorContextCreateSVG, "rsvg-convert -w 240 -h 160 -o picture.png page"}};
  for (const auto& page : pages) {
    for (unsigned int seed = 0; seed < 8; ++seed) {
      std::string file;
      CGContextRef port = page.create(kWidth, kHeight, &Append, &file);
      DrawAnyText(AGContext(port, {kWidth, kHeight}), seed);
      EXPECT_TRUE(CGVectorContextFinish(port)) << "seed " << seed;
      CGContextRelease(port);
      const Pixels pixels = Rasterise(file, page.command);
      ASSERT_FALSE(pixels.empty()) << "seed " << seed;
      const unsigned char* inSquare = &pixels[3 * ((kHeight - 30) * kWidth + 30)];
      EXPECT_TRUE(inSquare[0] == 255 && inSquare[1] == 0 && inSquare[2] == 0) << page.command << " seed " << seed;
    }
  }
  AGFont::LowTerminate();
}

}  // namespace
