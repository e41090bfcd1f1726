// Drawing through a cairo context of the host's.
#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo-svg.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "kit/geometry/AGConstants.h"
#include "tests/graphics/context/LeakScope.h"
#include "tests/graphics/images/ImageTestSupport.h"

namespace {

using image_test::Output;

struct Deleter {
  void operator()(cairo_t* c) const { cairo_destroy(c); }
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using Cairo = std::unique_ptr<cairo_t, Deleter>;
using Surface = std::unique_ptr<cairo_surface_t, Deleter>;

void DrawThrough(cairo_t* cairo, const AGSize& size, const std::function<void(AGContext&)>& draw) {
  CGContextRef port = CGContextCreateOverCairo(cairo, size.width, size.height);
  ASSERT_NE(port, nullptr);
  {
    AGContext context(port, size);
    draw(context);
  }
  CGContextRelease(port);
}

std::vector<unsigned char> PixelsOf(cairo_surface_t* surface) {
  cairo_surface_flush(surface);
  const unsigned char* data = cairo_image_surface_get_data(surface);
  const auto count =
      std::size_t(cairo_image_surface_get_stride(surface)) * std::size_t(cairo_image_surface_get_height(surface));
  return {data, data + count};
}

// A gradient, a text, and an image that is drawn much smaller than it is.
void DrawAll(AGContext& context) {
  context.brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, 0.3, 0.7);
  context.DrawRoundedRect({5, 5, 60, 60}, 0.5);
  context.brush.SetStyleSolid(kAGColorBlack);
  context.DrawText("Text", AGFont("DejaVu Sans", 12, kAGFontStyleRegular), AGPoint{10, 70}, kAGAffineTransformIdentity,
                   kAGTextAlignmentLeft);
  context.DrawImage(image_test::Picture(200, 150, false), {60, 5, 95, 40}, true, 3);
}

class ForeignPageTest : public testing::Test {
 protected:
  const file_test::TempFolder folder_;
};

TEST_F(ForeignPageTest, PagesGroupsPartsAndRecordings_KeepGradientsTextAndWholeImages) {
  const LeakScope scope;
  const std::string path = folder_.Path("page.pdf");
  const auto onGroup = [](cairo_t* cairo) {
    cairo_push_group(cairo);
    DrawThrough(cairo, {100, 100}, &DrawAll);
    cairo_pop_group_to_source(cairo);
    cairo_paint(cairo);
  };
  const auto onPart = [](cairo_t* cairo) {
    const Surface part(cairo_surface_create_for_rectangle(cairo_get_target(cairo), 10, 10, 100, 100));
    DrawThrough(Cairo(cairo_create(part.get())).get(), {100, 100}, &DrawAll);
  };
  const auto onRecording = [](cairo_t* cairo) {
    const Surface recording(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    DrawThrough(Cairo(cairo_create(recording.get())).get(), {100, 100}, &DrawAll);
    cairo_set_source_surface(cairo, recording.get(), 0, 0);
    cairo_paint(cairo);
  };
  const auto onPage = [](cairo_t* cairo) { DrawThrough(cairo, {100, 100}, &DrawAll); };
  const struct {
    const char* name;
    std::function<void(cairo_t*)> draw;
  } cases[] = {{"page", onPage}, {"group", onGroup}, {"part", onPart}, {"recording", onRecording}};
  for (const auto& c : cases) {
    {
      const Surface surface(cairo_pdf_surface_create(path.c_str(), 120, 120));
      c.draw(Cairo(cairo_create(surface.get())).get());
    }
    EXPECT_NE(Output("pdffonts " + path).find("DejaVu"), std::string::npos) << c.name;
    EXPECT_NE(Output("pdftotext " + path + " -").find("Text"), std::string::npos) << c.name;
    const std::string images = Output("pdfimages -list " + path);
    EXPECT_NE(images.find(" 200   15"), std::string::npos) << c.name << images;
    EXPECT_EQ(std::count(images.begin(), images.end(), '\n'), 3) << c.name << images;
  }
}

TEST_F(ForeignPageTest, SVGAndPostScript_KeepGradients) {
  const auto onPart = [this](Surface surface) {
    Cairo cairo(cairo_create(surface.get()));
    cairo_translate(cairo.get(), 10, 10);
    DrawThrough(cairo.get(), {100, 100}, [](AGContext& context) {
      context.ClearPixels();  // a part of the page, on which nothing is
      DrawAll(context);
    });
    cairo.reset();
    surface.reset();
    return Output("cat " + folder_.Path("page"));
  };
  const std::string page = folder_.Path("page");
  const std::string svg = onPart(Surface(cairo_svg_surface_create(page.c_str(), 120, 120)));
  EXPECT_NE(svg.find("<linearGradient"), std::string::npos);
  EXPECT_NE(svg.find("width=\"200\" height=\"150\""), std::string::npos);
  EXPECT_EQ(svg.find("<image", svg.find("<image") + 1), std::string::npos);
  const std::string ps = onPart(Surface(cairo_ps_surface_create(page.c_str(), 120, 120)));
  EXPECT_NE(ps.find("/ShadingType 2"), std::string::npos);
  EXPECT_NE(ps.find("DejaVu"), std::string::npos);
}

TEST(ForeignContextTest, HostsClipAndMatrix_HoldMeanwhileAndAfterwards) {
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 100, 100));
  const Cairo cairo(cairo_create(surface.get()));
  cairo_translate(cairo.get(), 10, 20);
  cairo_scale(cairo.get(), 2, 2);
  cairo_rectangle(cairo.get(), 5, 5, 20, 10);  // pixels (20, 30) to (60, 50)
  cairo_clip(cairo.get());
  cairo_matrix_t before;
  cairo_get_matrix(cairo.get(), &before);
  DrawThrough(cairo.get(), {40, 30}, [](AGContext& context) {
    context.brush.SetStyleSolid(kAGColorRed);
    context.DrawRect({-100, -100, 100, 100});
    context.SetClipRect({0, 0, 10, 100});
    context.brush.SetStyleLinearGradient(kAGColorBlue, kAGColorBlue, 0.5, 1);
    context.DrawRect({-100, -100, 100, 100});
    context.ResetClip();
    context.brush.SetStyleSolid(AGColor(0, 255, 0));
    context.DrawRect({15, -100, 100, 100});
    context.pen.SetStyleSolid(kAGColorRed, 4, kAGPenSizeModeAbsolute);
    context.SetClipRect({0, 0, 1, 1});  // leaves a clip behind
    context.DrawRect({0, 0, 5, 5});
  });
  cairo_matrix_t after;
  cairo_get_matrix(cairo.get(), &after);
  EXPECT_EQ(0, std::memcmp(&before, &after, sizeof(before)));
  const auto colorAt = [&](int x, int y) {
    const std::vector<unsigned char> pixels = PixelsOf(surface.get());
    const unsigned char* p = &pixels[std::size_t(y * 100 + x) * 4];
    return AGColor(p[2], p[1], p[0], p[3]);
  };
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 100; ++x) {
      const bool inside = x >= 20 && x < 60 && y >= 30 && y < 50;
      const AGColor expected = !inside  ? AGColor(0, 0, 0, 0)
                               : x < 30 ? kAGColorBlue
                               : x < 40 ? kAGColorRed
                                        : AGColor(0, 255, 0);
      ASSERT_TRUE(colorAt(x, y) == expected) << x << ", " << y;
    }
  }
  cairo_paint(cairo.get());  // the host's black, within the host's clip
  EXPECT_TRUE(colorAt(20, 30) == kAGColorBlack);
  EXPECT_TRUE(colorAt(59, 49) == kAGColorBlack);
  EXPECT_EQ(colorAt(19, 30).Alpha(), 0);
  EXPECT_EQ(colorAt(60, 49).Alpha(), 0);
}

TEST(ForeignContextTest, DeviceScale_CountsAsTheMatrixDoes_ForAllThatIsMadeOfPixels) {
  const auto drawn = [](double deviceScale) {
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 300, 300));
    cairo_surface_set_device_scale(surface.get(), deviceScale, deviceScale);
    const Cairo cairo(cairo_create(surface.get()));
    cairo_scale(cairo.get(), 3 / deviceScale, 3 / deviceScale);
    DrawThrough(cairo.get(), {100, 100}, &DrawAll);
    double x = 0;
    double y = 0;
    cairo_surface_get_device_scale(surface.get(), &x, &y);
    EXPECT_EQ(x, deviceScale);
    EXPECT_EQ(y, deviceScale);
    cairo_identity_matrix(cairo.get());
    cairo_rectangle(cairo.get(), 0, 0, 30 / deviceScale, 30 / deviceScale);
    cairo_fill(cairo.get());
    return PixelsOf(surface.get());
  };
  EXPECT_EQ(image_test::Difference(drawn(1), drawn(2)), 0);
  EXPECT_EQ(image_test::Difference(drawn(1), drawn(1.5)), 0);
}

}  // namespace
