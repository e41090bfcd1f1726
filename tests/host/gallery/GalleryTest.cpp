// Each picture of the gallery against the one that was looked at and kept.
#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <string>

#include "host/Fonts.h"
#include "host/gallery/Gallery.h"
#include "host/storage/WholeFiles.h"

namespace {

using Pixels = std::vector<unsigned char>;  // red, green, blue, rows from the top; empty when it could not be read

Pixels Finish(png_image* image) {
  image->format = PNG_FORMAT_RGB;
  Pixels pixels(PNG_IMAGE_SIZE(*image));
  if (image->width != host::kGalleryWidth || image->height != host::kGalleryHeight) return {};
  return png_image_finish_read(image, nullptr, pixels.data(), 0, nullptr) != 0 ? pixels : Pixels();
}

Pixels Reference(const std::string& name) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  const std::string path = AK_PICTURES "/" + name + ".png";
  return png_image_begin_read_from_file(&image, path.c_str()) != 0 ? Finish(&image) : Pixels();
}

Pixels Draw(const host::GalleryItem& item, unsigned int flags) {
  std::vector<unsigned char> png;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!host::EncodePNG(*host::DrawGalleryItem(item, flags), &png)) return {};
  return png_image_begin_read_from_memory(&image, png.data(), png.size()) != 0 ? Finish(&image) : Pixels();
}

// How far the channels are apart, at most and on average. Sizes must be equal.
struct Difference {
  int greatest = 0;
  double mean = 0;
};

Difference Compare(const Pixels& a, const Pixels& b) {
  Difference result;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const int difference = std::abs(a[i] - b[i]);
    result.greatest = std::max(result.greatest, difference);
    result.mean += difference / static_cast<double>(a.size());
  }
  return result;
}

// Gradients are taken from a table, of which a steep one has some 6 levels an entry, and coverage is rounded to 1/255:
// so much a single channel may differ. On average such roundings are far below half a level.
constexpr int kTolerance = 6;
constexpr double kMeanTolerance = 0.5;

TEST(GalleryTest, EveryPicture_IsAsItWas_InBothByteOrders) {
  const host::Fonts fonts;
  for (const host::GalleryItem& item : host::GalleryItems()) {
    const Pixels reference = Reference(item.name);
    for (const unsigned int flags : {0U, AGBitmap::kFlagLittleEndian}) {
      const Pixels drawn = Draw(item, flags);
      ASSERT_FALSE(drawn.empty()) << item.name;
      ASSERT_EQ(drawn.size(), reference.size()) << item.name << ": no such picture of this size";
      const Difference difference = Compare(drawn, reference);
      EXPECT_LE(difference.greatest, kTolerance) << item.name << ", flags " << flags;
      EXPECT_LE(difference.mean, kMeanTolerance) << item.name << ", flags " << flags;
    }
  }
}

// A picture that looks like another one shows nothing of its own.
TEST(GalleryTest, EveryPicture_ShowsSomethingOfItsOwn) {
  const host::Fonts fonts;
  // A single stop must look like no stops; the flat path draws nothing, as do the invisible things.
  const std::map<std::string, std::string> alike = {{"custom-one-stop", "linear-0"},
                                                    {"invisible", "fit-of-a-flat-path"}};
  std::map<Pixels, std::string> seen;
  std::set<std::string> names;
  for (const host::GalleryItem& item : host::GalleryItems()) {
    EXPECT_TRUE(names.insert(item.name).second) << item.name << " twice";
    const auto [other, isNew] = seen.emplace(Draw(item, 0), item.name);
    const auto twin = alike.find(item.name);
    EXPECT_EQ(isNew ? "" : other->second, twin == alike.end() ? "" : twin->second) << item.name;
  }
  EXPECT_GE(names.size(), 60U);
}

}  // namespace
