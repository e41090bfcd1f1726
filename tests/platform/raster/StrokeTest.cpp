// Strokes against the distance from the path, which is what a round nib covers.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>

#include "tests/platform/raster/RasterScene.h"

namespace {

using raster::Cap;
using raster::Join;
using raster::Point;
using raster_scene::Coverage;
using raster_scene::Path;
using raster_scene::Random;

raster::Shape Stroked(const Path& path, const raster::StrokeStyle& style) {
  raster::Shape shape;
  shape.path = path.View();
  shape.stroke = &style;
  return shape;
}

double DistanceToSegment(Point p, Point a, Point b) {
  const Point d = b - a;
  const double length = Dot(d, d);
  const double t = length > 0 ? std::clamp(Dot(p - a, d) / length, 0.0, 1.0) : 0;
  const Point away = p - a - t * d;
  return std::sqrt(Dot(away, away));
}

// The points of a curve, closer together than any tolerance.
std::vector<Point> PointsOf(const Point (&c)[4]) {
  std::vector<Point> points;
  for (int i = 0; i <= 400; ++i) {
    const double t = i / 400.0;
    const double u = 1 - t;
    points.push_back(u * u * u * c[0] + 3 * u * u * t * c[1] + 3 * u * t * t * c[2] + t * t * t * c[3]);
  }
  return points;
}

// With round caps and joins a pixel is covered as far as it lies within half the width. Where the edge goes through a
// pixel it is nearly straight, and its coverage tells its place: to 0.1 pixels, and what a corner or a crossing adds.
TEST(RasterStrokeTest, RoundStrokes_CoverWhatIsNear) {
  for (unsigned int seed = 1; seed <= 150; ++seed) {
    Random random(seed);
    const Point c[4] = {{random.In(10, 90), random.In(10, 90)},
                        {random.In(-50, 150), random.In(-50, 150)},
                        {random.In(-50, 150), random.In(-50, 150)},
                        {random.In(10, 90), random.In(10, 90)}};
    Path path;
    path.Move(c[0].x, c[0].y);
    path.Cubic(c[1].x, c[1].y, c[2].x, c[2].y, c[3].x, c[3].y);
    raster::StrokeStyle style;
    style.width = random.In(3, 60);
    style.cap = Cap::kRound;
    style.join = Join::kRound;
    const Coverage coverage(Stroked(path, style), {0, 0, 100, 100});
    const std::vector<Point> points = PointsOf(c);
    for (int y = 0; y < 100; y += 3) {
      for (int x = 0; x < 100; x += 3) {
        double distance = 1e9;
        for (std::size_t i = 1; i < points.size(); ++i) {
          distance = std::min(distance, DistanceToSegment({x + 0.5, y + 0.5}, points[i - 1], points[i]));
        }
        // From inside to outside an edge takes at most the pixel's diagonal.
        const double inside = style.width / 2 - distance;
        const double least = inside > 0.7072 + 0.1 ? 255 : 0;
        const double most = inside < -0.7072 - 0.1 ? 0 : 255;
        ASSERT_GE(coverage.At(x, y), least) << "seed " << seed << ", pixel " << x << " " << y << ", " << inside;
        ASSERT_LE(coverage.At(x, y), most) << "seed " << seed << ", pixel " << x << " " << y << ", " << inside;
      }
    }
  }
}

// The area of a ring is known: its edges are off by less than a tenth of a pixel on both sides together.
TEST(RasterStrokeTest, Rings_HaveTheirArea) {
  for (const double radius : {3.0, 20.0, 90.0}) {
    for (const double width : {0.4, 1.0, 5.0}) {
      const double k = 0.5522847498307936 * radius;
      Path path;
      path.Move(100 + radius, 100);
      path.Cubic(100 + radius, 100 + k, 100 + k, 100 + radius, 100, 100 + radius);
      path.Cubic(100 - k, 100 + radius, 100 - radius, 100 + k, 100 - radius, 100);
      path.Cubic(100 - radius, 100 - k, 100 - k, 100 - radius, 100, 100 - radius);
      path.Cubic(100 + k, 100 - radius, 100 + radius, 100 - k, 100 + radius, 100);
      path.Close();
      raster::StrokeStyle style;
      style.width = width;
      const Coverage coverage(Stroked(path, style), {0, 0, 200, 200});
      double area = 0;
      for (const unsigned char byte : coverage.bytes) area += byte / 255.0;
      EXPECT_NEAR(area / (2 * std::numbers::pi * radius), width, 0.02 * width + 0.01) << radius << " " << width;
    }
  }
}

struct CapCase {
  Cap cap;
  Join join;
  std::vector<raster::Box> covered;  // all pixels of these and no others
  Path path;
};

Path LinePath(std::initializer_list<Point> points, bool isClosed) {
  Path path;
  for (const Point& p : points) path.verbs.empty() ? path.Move(p.x, p.y) : path.Line(p.x, p.y);
  if (isClosed) path.Close();
  return path;
}

// Strokes of width 4 whose edges lie on whole pixels.
TEST(RasterStrokeTest, CapsJoinsAndDots_CoverWholePixels) {
  const CapCase cases[] = {
      {Cap::kButt, Join::kMiter, {{5, 8, 15, 12}}, LinePath({{5, 10}, {15, 10}}, false)},
      {Cap::kSquare, Join::kMiter, {{3, 8, 17, 12}}, LinePath({{5, 10}, {15, 10}}, false)},
      {Cap::kButt, Join::kMiter, {{5, 3, 17, 7}, {13, 3, 17, 15}}, LinePath({{5, 5}, {15, 5}, {15, 15}}, false)},
      {Cap::kButt,
       Join::kMiter,
       {{3, 3, 17, 7}, {3, 13, 17, 17}, {3, 3, 7, 17}, {13, 3, 17, 17}},
       LinePath({{5, 5}, {15, 5}, {15, 15}, {5, 15}}, true)},
      {Cap::kSquare, Join::kRound, {{8, 8, 12, 12}}, LinePath({{10, 10}, {10, 10}}, false)},
      {Cap::kButt, Join::kRound, {}, LinePath({{10, 10}, {10, 10}}, true)},
      {Cap::kSquare, Join::kRound, {}, LinePath({{10, 10}}, false)},
      // Back on itself: painted once, and a mitre of no length.
      {Cap::kButt, Join::kMiter, {{5, 8, 15, 12}}, LinePath({{5, 10}, {15, 10}, {7, 10}}, false)},
  };
  raster::StrokeStyle style;
  style.width = 4;
  for (const CapCase& c : cases) {
    style.cap = c.cap;
    style.join = c.join;
    const Coverage coverage(Stroked(c.path, style), {0, 0, 20, 20});
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        bool isCovered = false;
        for (const raster::Box& b : c.covered)
          isCovered = isCovered || (x >= b.x0 && x < b.x1 && y >= b.y0 && y < b.y1);
        ASSERT_EQ(coverage.At(x, y), isCovered ? 255 : 0) << &c - cases << ", pixel " << x << " " << y;
      }
    }
  }
}

// A nib under any map covers what the map makes of a stroke by a plain nib.
TEST(RasterStrokeTest, MappedNibs_CoverTheMappedStroke) {
  for (unsigned int seed = 1; seed <= 60; ++seed) {
    Random random(seed);
    raster::StrokeStyle style;
    style.width = random.In(2, 8);
    style.cap = Cap::kRound;
    style.join = Join::kRound;
    style.a = random.In(-2, 2);
    style.b = random.In(-2, 2);
    style.c = random.In(-2, 2);
    style.d = random.In(-2, 2);
    const double determinant = style.a * style.d - style.b * style.c;
    if (std::fabs(determinant) < 0.5) continue;
    const Point a{random.In(20, 80), random.In(20, 80)};
    const Point b{random.In(20, 80), random.In(20, 80)};
    const Path path = LinePath({a, b}, false);
    const Coverage coverage(Stroked(path, style), {0, 0, 100, 100});
    const auto toPen = [&](Point p) {
      return Point{(style.d * p.x - style.c * p.y) / determinant, (style.a * p.y - style.b * p.x) / determinant};
    };
    const double shrink = std::fabs(determinant) /
                          std::sqrt(style.a * style.a + style.b * style.b + style.c * style.c + style.d * style.d);
    for (int y = 0; y < 100; y += 2) {
      for (int x = 0; x < 100; x += 2) {
        const double inside =
            (style.width / 2 - DistanceToSegment(toPen({x + 0.5, y + 0.5}), toPen(a), toPen(b))) * shrink;
        ASSERT_GE(coverage.At(x, y), inside > 0.85 ? 255 : 0) << "seed " << seed << ", pixel " << x << " " << y;
        ASSERT_LE(coverage.At(x, y), inside < -3 ? 0 : 255) << "seed " << seed << ", pixel " << x << " " << y;
      }
    }
  }
}

// Widths and places beyond any target end soon, and are right where they are seen.
TEST(RasterStrokeTest, GiantStrokes_AreHalfPlanes) {
  raster::StrokeStyle style;
  style.width = 2e9;
  for (const Cap cap : {Cap::kButt, Cap::kRound}) {
    style.cap = cap;
    const Path path = LinePath({{-1e9 + 20.5, -1e8}, {-1e9 + 20.5, 1e8}}, false);
    const Coverage coverage(Stroked(path, style), {0, 0, 40, 10});
    EXPECT_EQ(coverage.At(19, 5), 255);
    EXPECT_NEAR(coverage.At(20, 5), 128, cap == Cap::kButt ? 1 : 30);
    EXPECT_EQ(coverage.At(21, 5), 0);
  }
  Path spiral;
  spiral.Move(50, 50);
  for (int i = 0; i < 20000; ++i) spiral.Line(50 + 0.02 * i * std::cos(i), 50 + 0.02 * i * std::sin(i));
  style.width = 10000;
  const Coverage coverage(Stroked(spiral, style), {0, 0, 100, 100});
  EXPECT_EQ(coverage.bytes, std::vector<unsigned char>(10000, 255));
}

// Curves and nibs of any size take as many lines as can be told apart, no more.
TEST(RasterStrokeTest, GiantCurvesAndNibs_End) {
  raster::StrokeStyle style;
  style.cap = Cap::kRound;
  style.join = Join::kRound;
  Path curve;
  curve.Move(-1e15, 2);
  curve.Cubic(1e15, 9e14, -7e14, 3e14, 1e15, -1e15);
  for (const double width : {1e16, 1e55, 1e300}) {
    style.width = width;
    EXPECT_EQ(Coverage(Stroked(curve, style), {0, 0, 4, 4}).bytes, std::vector<unsigned char>(16, 255)) << width;
  }
}

// A map that is all but flat makes lengths of which nothing is left but infinity.
TEST(RasterStrokeTest, FlatNibs_StayWithinTheBox) {
  for (const auto& [a, c] : {std::pair{1e-307, 0.0}, {1e-200, 0.0}, {1.0, 0.9999999999999999}}) {
    raster::StrokeStyle style;
    style.width = 2;
    style.a = style.b = a;
    style.c = a == 1 ? c : 0;
    const Path path = LinePath({{20, 2}, {150, 9}, {90, 3}, {30, 12}}, true);
    EXPECT_TRUE(Coverage(Stroked(path, style), {0, 0, 200, 20}).isDone);
  }
}

// A closed line there and back is the line itself, in any direction: its ends are no corners.
TEST(RasterStrokeTest, ClosedLines_AreWhole) {
  raster::StrokeStyle style;
  style.width = 20;
  style.join = Join::kRound;
  Random random(7);
  for (int i = 0; i < 200; ++i) {
    const Point a{random.In(20, 80), random.In(20, 80)};
    const Point b{random.In(-50, 150), random.In(-50, 150)};
    const Coverage coverage(Stroked(LinePath({a, b}, true), style), {0, 0, 100, 100});
    for (int pixel = 0; pixel < 10000; ++pixel) {
      const Point middle{pixel % 100 + 0.5, pixel / 100 + 0.5};
      if (DistanceToSegment(middle, a, b) > 9) continue;
      ASSERT_EQ(coverage.At(pixel % 100, pixel / 100), 255) << i;
    }
  }
}

// Of lines that go almost back none is left out as long as they are apart.
TEST(RasterStrokeTest, NarrowAngles_KeepBothLegs) {
  raster::StrokeStyle style;
  for (const double back : {11.5, -0.5}) {
    const Coverage coverage(Stroked(LinePath({{0, 5.5}, {20000, 5.5}, {0, back}}, false), style), {0, -2, 64, 14});
    EXPECT_EQ(coverage.At(1, 5), 255) << back;
    EXPECT_NEAR(coverage.At(1, static_cast<int>(std::floor(back))), 255, 2) << back;
  }
}

// What is out of sight still tells where a mitre points that is seen.
TEST(RasterStrokeTest, MitresOfHiddenCurves_AreSeen) {
  const Point c[4] = {{-25, 100}, {-1400, 400}, {-3000, 3000}, {-100, 9000}};
  Path curve;
  Path lines;
  for (Path* path : {&curve, &lines}) {
    path->Move(-3000, 100);
    path->Line(c[0].x, c[0].y);
  }
  curve.Cubic(c[1].x, c[1].y, c[2].x, c[2].y, c[3].x, c[3].y);
  lines.Line(-1400, 400);  // the same direction
  raster::StrokeStyle style;
  style.width = 40;
  const Coverage seen(Stroked(curve, style), {0, 0, 300, 300});
  const Coverage wanted(Stroked(lines, style), {0, 0, 300, 300});
  const double area = std::accumulate(wanted.bytes.begin(), wanted.bytes.end(), 0.0);
  EXPECT_GT(area, 255 * 1000);
  EXPECT_NEAR(std::accumulate(seen.bytes.begin(), seen.bytes.end(), 0.0), area, 0.1 * area);
}

}  // namespace
