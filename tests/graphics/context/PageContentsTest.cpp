// What pages are made of, as other programs find it: vectors, text, and each image once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "kit/geometry/AGConstants.h"
#include "tests/graphics/images/ImageTestSupport.h"

namespace {

using image_test::Output;
using image_test::Picture;

bool Append(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

using Draw = std::function<void(AGContext& context)>;

class PageContentsTest : public testing::Test {
 protected:
  // Writes a page to a file in the folder and returns its bytes.
  std::string Page(const std::string& name, const AGSize& size, const Draw& draw) {
    std::string file;
    const bool isPDF = name.ends_with(".pdf");
    CGContextRef page =
        (isPDF ? CGVectorContextCreatePDF : CGVectorContextCreateSVG)(size.width, size.height, &Append, &file);
    {
      AGContext context(page, size);
      draw(context);
    }
    EXPECT_TRUE(CGVectorContextFinish(page));
    CGContextRelease(page);
    std::ofstream(folder_.Path(name), std::ios::binary) << file;
    return file;
  }

  // Object numbers and encodings of the images of a PDF page.
  std::set<std::string> ImagesOf(const std::string& name) {
    std::istringstream lines(Output("pdfimages -list " + folder_.Path(name)));
    std::set<std::string> images;
    std::string line;
    for (int i = 0; std::getline(lines, line); ++i) {
      std::istringstream words(line);
      std::vector<std::string> word(16);
      for (std::string& w : word) words >> w;
      if (i >= 2) images.insert(word[10] + " " + word[8]);
    }
    return images;
  }

  // Red, green, blue, alpha of a square page as a picture, rows from the top down.
  std::vector<unsigned char> Rasterise(const std::string& name, int side) {
    const std::string page = folder_.Path(name);
    const std::string pixels = std::to_string(side);
    Output(name.ends_with(".pdf")
               ? "pdftoppm -scale-to " + pixels + " -png -singlefile " + page + " " + page
               : "rsvg-convert -w " + pixels + " -h " + pixels + " -b white -o " + page + ".png " + page);
    const std::vector<unsigned char> picture = image_test::Pixels(image_test::ImageOfFile(page + ".png"));
    EXPECT_EQ(picture.size(), static_cast<std::size_t>(4 * side * side)) << name;
    return picture;
  }

  const file_test::TempFolder folder_;
};

TEST_F(PageContentsTest, Images_DrawnTurnedManyTimes_AreStoredOnce) {
  const AGImage image = Picture(200, 150, false);
  for (const char* const name : {"turned.pdf", "turned.svg"}) {
    const auto draw = [&](int times) {
      return [&, times](AGContext& context) {
        for (int i = 0; i < times; ++i) {
          context.transform = AGAffineTransformRotation(i * 0.1 + 0.05, {100, 100});
          context.alpha = i % 2 == 0 ? 1 : 0.5;
          context.DrawImage(image, {0, 0, 60, 60}, true, 3);
        }
      };
    };
    const std::size_t once = Page(name, {200, 200}, draw(1)).size();
    EXPECT_LT(Page(name, {200, 200}, draw(50)).size(), once + 50 * 700) << name;
  }
  EXPECT_EQ(ImagesOf("turned.pdf").size(), 1U);
}

TEST_F(PageContentsTest, Images_OfJPEGFiles_AreStoredAsTheyWere) {
  const struct {
    const char* sample;
    const char* encoding;
  } cases[] = {{"baseline.jpg", "jpeg"},
               {"progressive.jpg", "jpeg"},
               {"grey.jpg", "jpeg"},
               {"sideways.jpg", "jpeg"},
               {"cmyk.jpg", "image"}};
  for (const auto& c : cases) {
    const AGImage image = image_test::ImageOfFile(image_test::Sample(c.sample));
    const std::string page = Page("photo.pdf", {100, 100}, [&](AGContext& context) {
      context.DrawImage(image, {0, 0, 90, 90}, true, 3);
    });
    EXPECT_EQ(page.find("Exif"), std::string::npos);  // in a viewer a wish to be turned would be heeded
    const std::set<std::string> images = ImagesOf("photo.pdf");
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images.begin()->substr(images.begin()->find(' ') + 1), c.encoding) << c.sample;
  }
}

// A gradient and lines, and an image mixed with them.
void DrawMixed(AGContext& context) {
  context.ClearPixels(kAGColorWhite);
  context.brush.SetStyleLinearGradient(kAGColorRed, kAGColorYellow, 0.5, 0.5);
  context.DrawRect({5, 5, 90, 90});
  context.colorFactor = 0.5;
  context.DrawImage(Picture(40, 30, true), {20, 20}, {0.9, 0.3, -0.3, 0.9, 10, 0}, 1);
  context.colorFactor = 1.5;
  context.alpha = 0.7;
  context.DrawImage(Picture(40, 30, false), {20, 60, 50, 90}, false, 1);
}

TEST_F(PageContentsTest, SVG_ImagesWithAColourFactor_AreMixedAndLeaveTheRestVectors) {
  const std::string file = Page("mixed.svg", {100, 100}, &DrawMixed);
  EXPECT_NE(file.find("<linearGradient"), std::string::npos);
  AGBitmap bitmap(100U, 100U, 0);
  AGContext context = bitmap.GetContextOfBitmap();
  DrawMixed(context);
  const std::vector<unsigned char> expected = image_test::Pixels(AGImage(bitmap));
  Output("rsvg-convert -w 100 -h 100 -o " + folder_.Path("mixed.png") + " " + folder_.Path("mixed.svg"));
  const std::vector<unsigned char> actual = image_test::Pixels(image_test::ImageOfFile(folder_.Path("mixed.png")));
  ASSERT_EQ(expected.size(), actual.size());
  double sum = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) sum += std::abs(expected[i] - actual[i]);
  EXPECT_LT(sum / static_cast<double>(expected.size()), 1.5);  // the image is looked at through other pixels
}

TEST_F(PageContentsTest, ClearPixels_OfAPageOfFractionalSize_ForgetsWhatWasThereAndKeepsVectors) {
  for (const char* const name : {"cleared.pdf", "cleared.svg"}) {
    for (const double size : {100.0, 100.3, 100.5, 100.8}) {
      const std::string file = Page(name, {size, size}, [](AGContext& context) {
        context.brush.SetStyleSolid(AGColor(255, 0, 0));
        context.DrawRect({0, 0, 101, 101});
        context.ClearPixels();
        context.brush.SetStyleLinearGradient(AGColor(0, 0, 255), AGColor(0, 255, 0), 0.5, 0);
        context.DrawRect({20, 20, 80, 80});
      });
      if (name == std::string("cleared.pdf")) {
        EXPECT_TRUE(ImagesOf(name).empty()) << size;
      } else {
        EXPECT_EQ(file.find("<image"), std::string::npos) << size;
      }
      const std::vector<unsigned char> pixels = Rasterise(name, 100);
      EXPECT_EQ(std::vector<unsigned char>(pixels.begin(), pixels.begin() + 4), std::vector<unsigned char>(4, 255));
    }
  }
}

TEST_F(PageContentsTest, Patterns_OfAnEnlargedPage_StayCrisp) {
  constexpr int kScale = 8;
  for (const char* const name : {"pattern.pdf", "pattern.svg"}) {
    Page(name, {40, 40}, [](AGContext& context) {
      context.ClearPixels(kAGColorWhite);
      context.brush.SetStylePattern(AGColor(255, 0, 0), AGColor(0, 0, 255), 20);
      context.DrawRect({0, 0, 40, 40});
    });
    const std::vector<unsigned char> pixels = Rasterise(name, 40 * kScale);
    std::size_t mixed = 0;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
      const bool isRed = pixels[i] > 250 && pixels[i + 2] < 5, isBlue = pixels[i] < 5 && pixels[i + 2] > 250;
      if (!isRed && !isBlue) ++mixed;
    }
    EXPECT_LT(mixed * 4, pixels.size() / 100) << name;
  }
}

}  // namespace
