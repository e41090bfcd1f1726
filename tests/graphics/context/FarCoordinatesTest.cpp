// Shapes that reach far beyond what they are drawn on: their edges lie where geometry puts them.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "kit/geometry/AGConstants.h"
#include "tests/graphics/context/LeakScope.h"
#include "tests/graphics/images/ImageTestSupport.h"

namespace {

constexpr unsigned int kSide = 64;
constexpr double kWidth = 12;
const AGPoint kMiddle{29, 36};

enum class Kind { kSolid, kGradient, kPattern, kClip, kStroke, kWideStroke, kCurvedStroke, kCurve };
constexpr Kind kKinds[] = {Kind::kSolid,  Kind::kGradient,   Kind::kPattern,      Kind::kClip,
                           Kind::kStroke, Kind::kWideStroke, Kind::kCurvedStroke, Kind::kCurve};

struct Shape {
  Kind kind;
  double reach;  // how far it goes
  double angle;  // of its edge

  AGPoint Along() const { return {std::cos(angle), std::sin(angle)}; }
  AGPoint Across() const { return {-std::sin(angle), std::cos(angle)}; }

  // The widest pen is 96.
  double PenScale() const { return reach / 96; }

  // How far inside of the shape a point lies; below 0 outside.
  double DepthAt(AGPoint p) const {
    const AGPoint d{p.x - kMiddle.x, p.y - kMiddle.y};
    const double across = d.x * Across().x + d.y * Across().y;
    const double along = d.x * Along().x + d.y * Along().y;
    const double depth = across - along * along / (2 * reach);  // above the parabola
    if (kind == Kind::kStroke) return kWidth / 2 - std::fabs(across);
    if (kind == Kind::kCurvedStroke) return kWidth / 2 - std::fabs(depth);
    return kind == Kind::kCurve ? depth : across;
  }
};

AGPath PathOf(const Shape& shape) {
  AGPath path;
  const AGPoint far = shape.Along() * shape.reach;
  const AGPoint from = kMiddle + far * -1;
  const AGPoint to = kMiddle + far;
  if (shape.kind == Kind::kCurvedStroke || shape.kind == Kind::kCurve) {
    const AGPoint height = shape.Across() * (shape.reach / 2);
    path.StartSubPath(from + height);
    path.AddQuadBezier(kMiddle - height, to + height);  // a parabola with its foot in the middle
  } else if (shape.kind == Kind::kStroke) {
    path.AddSegment(from, to);
  } else if (shape.kind == Kind::kWideStroke) {
    // As wide as it is long, one of its edges through the middle.
    const AGPoint inward = shape.Across() * (shape.reach / 2);
    path.AddSegment(from + inward, to + inward);
    path.ApplyTransform({1 / shape.PenScale(), 0, 0, 1 / shape.PenScale(), 0, 0});
  } else {
    const AGPoint inward = shape.Across() * shape.reach;
    path.AddLines({from, to, to + inward, from + inward}, true);
  }
  return path;
}

void Draw(AGContext& context, const Shape& shape) {
  const AGPath path = PathOf(shape);
  context.brush.SetStyleSolid(kAGColorBlack);
  switch (shape.kind) {
    case Kind::kGradient:
      context.brush.SetStyleLinearGradient(kAGColorBlack, kAGColorBlack, 0.5, 1);
      break;
    case Kind::kPattern:
      context.brush.SetStylePattern(kAGColorBlack, kAGColorBlack, 20);
      context.patternOrigin = {1e9, -1e9};
      break;
    case Kind::kClip:
      context.SetClipPath(path);
      context.DrawRect({-10, -10, 100, 100});
      return;
    case Kind::kWideStroke:
      context.transform = {shape.PenScale(), 0, 0, shape.PenScale(), 0, 0};
      context.brush.SetStyleNone();
      context.pen.SetStyleSolid(kAGColorBlack, 96, kAGPenSizeModeRelative);
      break;
    case Kind::kStroke:
    case Kind::kCurvedStroke:
      context.brush.SetStyleNone();
      context.pen.SetStyleSolid(kAGColorBlack, kWidth, kAGPenSizeModeAbsolute);
      break;
    default:
      break;
  }
  context.DrawPath(path);
}

// `darkness` tells how much ink a pixel has, 0 to 255, rows from the top down.
template <typename Darkness>
void ExpectShape(const Shape& shape, double slack, Darkness darkness) {
  for (unsigned int row = 0; row < kSide; ++row) {
    for (unsigned int x = 0; x < kSide; ++x) {
      const double depth = shape.DepthAt({x + 0.5, kSide - row - 0.5});
      if (std::fabs(depth) < slack) continue;
      ASSERT_NEAR(darkness(x, row), depth > 0 ? 255 : 0, 2)
          << static_cast<int>(shape.kind) << " of " << shape.reach << " at " << shape.angle << ": " << x << ", " << row;
    }
  }
}

TEST(FarCoordinatesTest, OnPixelsOfTheHost_EdgesAreRight) {
  for (const Kind kind : kKinds) {
    for (const double reach : {3e3, 1.4e5, 1e7, 1e9}) {
      for (const double angle : {0.3, 1.2, 2.9, 4.4}) {
        const Shape shape{kind, reach, angle};
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
        cairo_t* cairo = cairo_create(surface);
        CGContextRef port = CGContextCreateOverCairo(cairo, kSide, kSide);
        {
          AGContext context(port, {kSide, kSide});
          Draw(context, shape);
        }
        CGContextRelease(port);
        cairo_surface_flush(surface);
        ExpectShape(shape, 0.85, [surface](unsigned int x, unsigned int row) {
          return cairo_image_surface_get_data(surface)[(row * kSide + x) * 4 + 3];
        });
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

bool Append(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

TEST(FarCoordinatesTest, OnPages_EdgesAreRight) {
  const LeakScope scope;
  char pattern[] = "/tmp/farXXXXXX";
  const std::string page = mkdtemp(pattern) + std::string("/page");
  const struct {
    decltype(&CGVectorContextCreatePDF) create;
    std::string command;
  } pages[] = {{&CGVectorContextCreatePDF, "pdftoppm -r 72 -png -singlefile " + page + " " + page},
               {&CGVectorContextCreateSVG, "rsvg-convert -w 64 -h 64 -b white -o " + page + ".png " + page}};
  for (const auto& p : pages) {
    for (const Kind kind : kKinds) {
      const Shape shape{kind, 1e9, 0.3};
      std::string file;
      CGContextRef port = p.create(kSide, kSide, &Append, &file);
      {
        AGContext context(port, {kSide, kSide});
        Draw(context, shape);
      }
      EXPECT_TRUE(CGVectorContextFinish(port));
      CGContextRelease(port);
      std::ofstream(page, std::ios::binary) << file;
      image_test::Output(p.command);
      const std::vector<unsigned char> pixels = image_test::Pixels(image_test::ImageOfFile(page + ".png"));
      ASSERT_EQ(pixels.size(), kSide * kSide * 4);
      ExpectShape(shape, 1,
                  [&pixels](unsigned int x, unsigned int row) { return 255 - pixels[(row * kSide + x) * 4]; });
    }
  }
  std::filesystem::remove_all(std::filesystem::path(page).parent_path());
}

}  // namespace
