// Images drawn by a procedure, and how drawn images are kept.
#include <cmath>
#include <limits>

#include "graphics/bitmaps/AGImageCreate.h"
#include "graphics/images/AGImageCacheInfo.h"
#include "kit/host/AKHostServices.h"
#include "tests/graphics/images/ImageTestSupport.h"

namespace {

struct Call {
  unsigned int count = 0;
  double scale = 0;
  AGRect bounds;
  AGRect visible;
};

// A rectangle in the lower left quarter, and a disc.
void DrawScene(AGContext& context, const AGRect& bounds) {
  context.brush.SetStyleSolid(kAGColorRed);
  context.DrawRect({0, 0, bounds.x1 / 2, bounds.y1 / 2});
  context.brush.SetStyleSolid(kAGColorBlue);
  context.DrawEllipseInRect({bounds.x1 / 2, bounds.y1 / 2, bounds.x1, bounds.y1});
}

void Draw(AGContext& context, double scale, const AGRect& bounds, const void* userData) {
  *static_cast<Call*>(const_cast<void*>(userData)) = {1, scale, bounds, {}};
  DrawScene(context, bounds);
}

void DrawScrolled(AGContext& context, double scale, const AGRect& bounds, const AGRect& visible, const void* userData) {
  *static_cast<Call*>(const_cast<void*>(userData)) = {1, scale, bounds, visible};
  DrawScene(context, bounds);
}

TEST(AGImageCreateTest, Draw_ScaledAndUpright) {
  Call call;
  const auto image = AGImageCreateWithProc(&Draw, {10, 10}, 2, 1.5, &call);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->Width(), 30U);
  EXPECT_EQ(image->Height(), 30U);
  EXPECT_EQ(call.scale, 3);
  EXPECT_TRUE(call.bounds == (AGRect{0, 0, 10, 10}));
  const AGBitmap bitmap(*image, 0);
  EXPECT_TRUE(bitmap.GetPixelColor(14, 14) == kAGColorRed);
  EXPECT_TRUE(bitmap.GetPixelColor(14, 15) == kAGNullColor);
  EXPECT_TRUE(bitmap.GetPixelColor(22, 22) == kAGColorBlue);
}

TEST(AGImageCreateTest, Draw_SizesWithoutPixels_GiveNull_WithoutACall) {
  const double nan = std::nan("");
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    AGSize size;
    double scale;
  } cases[] = {{{0, 10}, 1},  {{10, -1}, 1},   {{nan, 10}, 1},      {{10, nan}, 1}, {{10, 10}, 0},  {{10, 10}, -1},
               {{0.4, 9}, 1}, {{10, 10}, nan}, {{infinity, 10}, 1}, {{2e9, 1}, 1},  {{1e8, 1e8}, 1}};
  for (const auto& c : cases) {
    Call call;
    EXPECT_EQ(AGImageCreateWithProc(&Draw, c.size, c.scale, 1, &call), nullptr) << c.size.width << " " << c.scale;
    EXPECT_EQ(AGImageScrolledCreateWithProc(&DrawScrolled, c.size, {0, 0, 1e9, 1e9}, c.scale, 1, &call), nullptr);
    EXPECT_EQ(call.count, 0U);
  }
  EXPECT_EQ(AGImageCreateWithProc(nullptr, {1, 1}, 1, 1, nullptr), nullptr);
}

TEST(AGImageCreateTest, Scrolled_IsTheVisiblePartOfTheWhole) {
  Call call;
  const auto whole = AGImageCreateWithProc(&Draw, {40, 30}, 2, 1, &call);
  ASSERT_NE(whole, nullptr);
  const AGBitmap pixels(*whole, 0);
  const struct {
    AGRect asked;
    AGRect visible;
  } cases[] = {{{10, 8, 30, 25}, {10, 8, 30, 25}},
               {{30, 25, 10, 8}, {10, 8, 30, 25}},
               {{-5, 20, 100, 100}, {0, 20, 40, 30}},
               {{0, 0, 40, 30}, {0, 0, 40, 30}}};
  for (const auto& c : cases) {
    const auto part = AGImageScrolledCreateWithProc(&DrawScrolled, {40, 30}, c.asked, 2, 1, &call);
    ASSERT_NE(part, nullptr);
    EXPECT_TRUE(call.bounds == (AGRect{0, 0, 40, 30}));
    EXPECT_TRUE(call.visible == c.visible);
    const AGBitmap partPixels(*part, 0);
    const auto left = static_cast<unsigned int>(2 * c.visible.x0);
    const auto bottom = static_cast<unsigned int>(2 * c.visible.y0);
    ASSERT_EQ(part->Width(), 2 * (c.visible.x1 - c.visible.x0));
    ASSERT_EQ(part->Height(), 2 * (c.visible.y1 - c.visible.y0));
    unsigned int different = 0;
    for (unsigned int y = 0; y < part->Height(); ++y) {
      for (unsigned int x = 0; x < part->Width(); ++x) {
        different += partPixels.GetPixelColor(x, y) == pixels.GetPixelColor(left + x, bottom + y) ? 0 : 1;
      }
    }
    EXPECT_EQ(different, 0U);
  }
  EXPECT_EQ(AGImageScrolledCreateWithProc(&DrawScrolled, {40, 30}, {40, 0, 50, 30}, 2, 1, &call), nullptr);
}

class CountingInfo : public AGImageCacheInfo {
 public:
  using AGImageCacheInfo::AGImageCacheInfo;
  unsigned int changes = 0;

 private:
  void ImageCacheChanged() override { ++changes; }
};

TEST(AGImageCacheInfoTest, ScaleAndQuality_SetTheFactor_AndTellOfChanges) {
  gAGDisplayScale = 2;
  CountingInfo info(4);
  gAGDisplayScale = 1;
  EXPECT_EQ(info.DisplayScale(), 2);
  EXPECT_EQ(info.Factor(), 2);
  const struct {
    double scale;
    AGImageQuality quality;
    unsigned int changes;
    double factor;
  } steps[] = {{1, 4, 0, 2},        {3, 4, 1, 6},      {3, 2, 1, 3},
               {9, 4, 2, 16},       {8, 4, 0, 16},     {0.1, 4, 1, 0.25},
               {0.125, 4, 0, 0.25}, {-1, 3, 1, 0.125}, {std::nan(""), 3, 0, 0.125}};
  for (const auto& step : steps) {
    info.changes = 0;
    const bool scaled = info.SetImageScale(step.scale);
    const bool changed = info.SetImageQuality(step.quality);
    EXPECT_EQ(info.changes, step.changes) << step.scale;
    EXPECT_EQ(info.changes, (scaled ? 1U : 0U) + (changed ? 1U : 0U)) << step.scale;
    EXPECT_EQ(info.Factor(), step.factor) << step.scale;
  }
}

}  // namespace
