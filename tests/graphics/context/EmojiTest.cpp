// Glyphs that are pictures: drawn as the font's file has them, and left out of what outlines are.
#include <gtest/gtest.h>
#include <hb-ot.h>
#include <hb.h>
#include <png.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "tests/graphics/images/ImageTestSupport.h"
#include "tests/graphics/text/TextTestSupport.h"

namespace {

constexpr AGAffineTransform kHere = kAGAffineTransformIdentity;
constexpr const char16_t* kFace = u"\U0001F600";
constexpr unsigned int kWidth = 136;  // of the font's pictures
constexpr unsigned int kHeight = 128;
constexpr double kSize = 109;  // at which they are not scaled

// The picture of the face on white, read from the font's file; red, green, blue, rows from the top.
std::vector<unsigned char> PictureOfFace() {
  hb_blob_t* file = hb_blob_create_from_file("/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf");
  hb_face_t* face = hb_face_create(file, 0);
  hb_font_t* font = hb_font_create(face);
  hb_codepoint_t glyph = 0;
  EXPECT_NE(hb_font_get_nominal_glyph(font, 0x1F600, &glyph), 0);
  hb_blob_t* picture = hb_ot_color_glyph_reference_png(font, glyph);
  unsigned int size = 0;
  const char* bytes = hb_blob_get_data(picture, &size);
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, bytes, size), 0);
  image.format = PNG_FORMAT_RGBA;
  std::vector<unsigned char> straight(PNG_IMAGE_SIZE(image));
  EXPECT_TRUE(image.width == kWidth && image.height == kHeight);
  EXPECT_NE(png_image_finish_read(&image, nullptr, straight.data(), 0, nullptr), 0);
  std::vector<unsigned char> pixels;
  for (std::size_t i = 0; i < straight.size(); ++i) {
    const int alpha = straight[i / 4 * 4 + 3];
    if (i % 4 < 3) pixels.push_back(static_cast<unsigned char>(255 - ((255 - straight[i]) * alpha + 127) / 255));
  }
  hb_blob_destroy(picture);
  hb_font_destroy(font);
  hb_face_destroy(face);
  hb_blob_destroy(file);
  return pixels;
}

using Sums = std::array<double, 3>;  // of 255 - red, green, blue

Sums SumsOf(const AGBitmap& bitmap) {
  Sums sums{};
  for (unsigned int y = 0; y < bitmap.Height(); ++y) {
    for (unsigned int x = 0; x < bitmap.Width(); ++x) {
      const AGColor color = bitmap.GetPixelColor(x, y);
      sums[0] += 255 - color.Red();
      sums[1] += 255 - color.Green();
      sums[2] += 255 - color.Blue();
    }
  }
  return sums;
}

class EmojiTest : public TextTest {};

TEST_F(EmojiTest, DrawText_AtTheSizeOfItsPictures_GivesThePixelsOfTheFontsFile) {
  const std::vector<unsigned char> expected = PictureOfFace();
  Page page(kWidth + 20, kHeight + 20);
  page.context.DrawUText(Utf16(kFace), AGFont(kFamily, kSize, 0), AGPoint{10, 37}, kHere, kAGTextAlignmentLeft);
  int largest = 0;
  for (unsigned int y = 0; y < kHeight; ++y) {
    for (unsigned int x = 0; x < kWidth; ++x) {
      const AGColor color = page.bitmap.GetPixelColor(x + 10, 10 + kHeight - 1 - y);
      const unsigned char* pixel = &expected[3 * (y * kWidth + x)];
      largest = std::max({largest, std::abs(color.Red() - pixel[0]), std::abs(color.Green() - pixel[1]),
                          std::abs(color.Blue() - pixel[2])});
    }
  }
  EXPECT_LE(largest, 2);
}

TEST_F(EmojiTest, DrawText_ScaledTurnedTranslucentOrClipped_HasTheColoursOfThePicture) {
  Sums picture{};
  const std::vector<unsigned char> pixels = PictureOfFace();
  for (std::size_t i = 0; i < pixels.size(); ++i) picture[i % 3] += 255 - pixels[i];
  const struct {
    const char* name;
    double size;
    bool antialias;
    void (*change)(AGContext& context);
    double share;
  } cases[] = {
      {"small", 12, true, [](AGContext&) {}, 1},
      {"without antialiasing", 24, false, [](AGContext&) {}, 1},
      {"large", 200, true, [](AGContext&) {}, 1},
      {"too large to be kept", 600, true, [](AGContext&) {}, 1},
      {"turned", 60, true, [](AGContext& c) { c.transform = {0.8, 0.6, -0.6, 0.8, 300, 100}; }, 1},
      {"half there", 60, true, [](AGContext& c) { c.alpha = 0.5; }, 0.5},
      {"translucent brush", 60, true, [](AGContext& c) { c.brush.SetStyleSolid(AGColor(0, 0, 255, 51)); }, 0.2},
      {"half there and large", 600, true, [](AGContext& c) { c.alpha = 0.5; }, 0.5},
      {"clipped away", 60, true,
       [](AGContext& c) {
         c.SetClipRect({0, 0, 90, 50});
       },
       0},
  };
  for (const auto& c : cases) {
    Page page(900, 900);
    page.context.antialias = c.antialias;
    c.change(page.context);
    page.context.DrawUText(Utf16(kFace), AGFont(kFamily, c.size, 0), AGPoint{100, 200}, kHere, kAGTextAlignmentLeft);
    const Sums sums = SumsOf(page.bitmap);
    for (std::size_t i = 0; i < 3; ++i) {
      const double expected = picture[i] * (c.size / kSize) * (c.size / kSize) * c.share;
      EXPECT_NEAR(sums[i], expected, expected * 0.04) << c.name << " " << i;
    }
  }
}

bool AppendBytes(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

TEST_F(EmojiTest, Page_HasThePicture_WithTheTextsOpacity_AndNoneForAPen) {
  Sums picture{};
  const std::vector<unsigned char> pixels = PictureOfFace();
  for (std::size_t i = 0; i < pixels.size(); ++i) picture[i % 3] += 255 - pixels[i];
  file_test::TempFolder folder;
  for (const double share : {1.0, 0.5, 0.0}) {
    std::string file;
    CGContextRef page = CGVectorContextCreatePDF(200, 200, &AppendBytes, &file);
    AGContext context(page, {200, 200});
    context.brush.SetStyleSolid(kAGColorBlack);
    context.alpha = share;
    if (share == 0) {
      context.alpha = 1;
      context.brush.SetStyleNone();
      context.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
    }
    context.DrawUText(Utf16(kFace), AGFont(kFamily, kSize, 0), AGPoint{20, 50}, kHere, kAGTextAlignmentLeft);
    EXPECT_TRUE(CGVectorContextFinish(page));
    CGContextRelease(page);
    file_test::WriteBytes(folder.Path("page.pdf"), file);
    image_test::Output("cd " + folder.Path("") + " && pdftocairo -png -r 72 -singlefile page.pdf page");
    const std::vector<unsigned char> shown = image_test::Pixels(image_test::ImageOfFile(folder.Path("page.png")));
    Sums sums{};
    for (std::size_t i = 0; i < shown.size(); ++i) {
      if (i % 4 < 3) sums[i % 4] += 255 - shown[i];
    }
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(sums[i], picture[i] * share, picture[i] * 0.03) << share;
  }
}

// See make_layered_font.py: A and D are put together of B and C.
TEST_F(EmojiTest, DrawText_OfLayers_IsEachOfThemInItsColour) {
  const AGColor blue(0, 0, 255);
  for (const double size : {20.0, 60.0, 160.0, 2000.0}) {
    for (const char* letter : {"A", "D"}) {
      Page layered;
      layered.context.brush.SetStyleSolid(blue);
      layered.context.DrawText(letter, AGFont("LayeredSans", size, 0), AGPoint{20, 30}, kHere, kAGTextAlignmentLeft);
      Page parts;
      parts.context.brush.SetStyleSolid(kAGColorRed);
      parts.context.DrawText("B", AGFont(kFamily, size, 0), AGPoint{20, 30}, kHere, kAGTextAlignmentLeft);
      parts.context.brush.SetStyleSolid(*letter == 'A' ? AGColor(0, 200, 0) : blue);
      parts.context.DrawText("C", AGFont(kFamily, size, 0), AGPoint{20, 30}, kHere, kAGTextAlignmentLeft);
      const Sums expected = SumsOf(parts.bitmap);
      const Sums sums = SumsOf(layered.bitmap);
      for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(sums[i], expected[i], expected[1] * 0.01) << letter << size << i;
    }
  }
  EXPECT_GT(AGFont("LayeredSans", 60, 0).GetTextExtent("A").width, 30);
}

TEST_F(EmojiTest, Outlines_LeavePicturesOut) {
  AGPath layered;
  layered.AddText("A", AGFont("LayeredSans", 40, 0), {10, 10}, kAGTextAlignmentLeft);
  EXPECT_TRUE(layered.IsEmpty());
  const AGFont font(kFamily, 40, 0);
  AGPath path;
  path.AddUText(Utf16(kFace), font, {10, 10}, kAGTextAlignmentLeft);
  EXPECT_TRUE(path.IsEmpty());
  Page outlined;
  outlined.context.brush.SetStyleNone();
  outlined.context.pen.SetStyleSolid(kAGColorBlack, 2, kAGPenSizeModeAbsolute);
  outlined.context.DrawUText(Utf16(kFace), font, AGPoint{100, 100}, kHere, kAGTextAlignmentLeft);
  EXPECT_TRUE(InkOf(outlined.bitmap).IsEmpty());
  EXPECT_GT(font.GetUTextExtent(Utf16(kFace)).width, 40);
}

TEST_F(EmojiTest, DrawText_AmongLetters_TakesTheirLineAndKeepsTheirPixels) {
  const AGFont font(kFamily, 30, 0);
  Page both;
  both.context.DrawUText(Utf16(u"Hill \U0001F600\U0001F389"), font, AGPoint{20, 60}, kHere, kAGTextAlignmentLeft);
  Page letters;
  letters.context.DrawUText(Utf16(u"Hill"), font, AGPoint{20, 60}, kHere, kAGTextAlignmentLeft);
  const int end = InkOf(letters.bitmap).x1;
  int differing = 0;
  for (unsigned int y = 0; y < 200; ++y) {
    for (unsigned int x = 0; x < unsigned(end); ++x) {
      differing += both.bitmap.GetPixelColor(x, y) == letters.bitmap.GetPixelColor(x, y) ? 0 : 1;
    }
  }
  EXPECT_EQ(differing, 0);
  EXPECT_NEAR(InkOf(both.bitmap).x1, 20 + font.GetUTextExtent(Utf16(u"Hill \U0001F600\U0001F389")).width, 4);
}

}  // namespace
