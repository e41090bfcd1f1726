// Coverage against areas that are worked out in another way.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/platform/raster/RasterScene.h"

namespace {

using raster::Box;
using raster::FillRule;
using raster::Point;
using raster_scene::Coverage;
using raster_scene::Filled;
using raster_scene::Path;
using raster_scene::Random;
using Polygon = std::vector<Point>;

// Corners are rounded to 1/256 pixel, which moves an edge of a pixel by half of that, and each of the few edges in it.
constexpr double kRounding = 3;

// The part of a polygon where a coordinate (x if axis is 0) is at least a bound, or at most.
Polygon CutBy(const Polygon& polygon, int axis, double bound, bool isAtLeast) {
  Polygon result;
  const auto side = [&](const Point& p) { return (axis == 0 ? p.x : p.y) - bound; };
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Point& a = polygon[i];
    const Point& b = polygon[(i + 1) % polygon.size()];
    const double sa = isAtLeast ? side(a) : -side(a);
    const double sb = isAtLeast ? side(b) : -side(b);
    if (sa >= 0) result.push_back(a);
    if ((sa < 0) != (sb < 0)) {
      Point p = a + (sa / (sa - sb)) * (b - a);
      (axis == 0 ? p.x : p.y) = bound;
      result.push_back(p);
    }
  }
  return result;
}

double AreaOf(const Polygon& polygon) {
  double area = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i)
    area += Cross(polygon[i] - polygon[0], polygon[(i + 1) % polygon.size()] - polygon[0]);
  return std::fabs(area) / 2;
}

// Of a pixel, in 255ths: the polygon cut to it (I. Sutherland and G. Hodgman, 1974).
double ExactCoverage(const Polygon& polygon, int x, int y) {
  Polygon part = CutBy(polygon, 0, x, true);
  part = CutBy(part, 0, x + 1, false);
  part = CutBy(part, 1, y, true);
  part = CutBy(part, 1, y + 1, false);
  return 255 * AreaOf(part);
}

Polygon Star(Random& random, Point middle, double radius) {
  Polygon polygon;
  const int count = 3 + random.Below(9);
  for (int i = 0; i < count; ++i) {
    const double angle = 2 * M_PI * (i + random.In(0.1, 0.9)) / count;
    const double r = random.In(0.2, 1) * radius;
    polygon.push_back({middle.x + r * std::cos(angle), middle.y + r * std::sin(angle)});
  }
  return polygon;
}

void ExpectExact(const Polygon& polygon, const Box& box, const std::string& label) {
  Path path;
  path.Polygon(polygon);
  const Coverage coverage(Filled(path), box);
  ASSERT_TRUE(coverage.isDone);
  for (int y = box.y0; y < box.y1; ++y) {
    for (int x = box.x0; x < box.x1; ++x) {
      ASSERT_NEAR(coverage.At(x, y), ExactCoverage(polygon, x, y), kRounding) << label << ", pixel " << x << " " << y;
    }
  }
}

TEST(RasterCoverageTest, Polygons_CoverTheirExactAreas) {
  for (unsigned int seed = 1; seed <= 400; ++seed) {
    Random random(seed);
    const Polygon polygon = Star(random, {random.In(-5, 45), random.In(-5, 35)}, random.In(0.2, 40));
    ExpectExact(polygon, {0, 0, 40, 30}, "seed " + std::to_string(seed));
  }
}

// However far away the corners are, the edges keep their slopes.
TEST(RasterCoverageTest, FarCorners_LeaveEdgesWhereTheyAre) {
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    const double far = std::pow(10, random.In(3, 9));
    const Point a{random.In(5, 35), random.In(5, 25)};
    const double angle = random.In(0, 2 * M_PI);
    const Point along{far * std::cos(angle), far * std::sin(angle)};
    const Point aside{-along.y, along.x};
    ExpectExact({a - along, a + random.In(0.1, 1) * along, a + along + aside, a - along + aside}, {0, 0, 40, 30},
                "seed " + std::to_string(seed));
  }
}

// A pixel that no edge comes near is inside or outside, by the winding number of its centre.
TEST(RasterCoverageTest, FillRules_DecideByTheWindingNumber) {
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    Polygon polygon;
    for (int i = 0; i < 9; ++i) polygon.push_back({random.In(-10, 50), random.In(-10, 40)});
    Path path;
    path.Polygon(polygon);
    for (const FillRule rule : {FillRule::kNonZero, FillRule::kEvenOdd}) {
      const Coverage coverage(Filled(path, rule), {0, 0, 40, 30});
      for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
          const Point p{x + 0.5, y + 0.5};
          int winding = 0;
          bool isNear = false;
          for (std::size_t i = 0; i < polygon.size(); ++i) {
            const Point a = polygon[i];
            const Point d = polygon[(i + 1) % polygon.size()] - a;
            isNear = isNear || std::fabs(Cross(d, p - a)) < 0.8 * std::sqrt(Dot(d, d));
            if ((a.y <= p.y) == (a.y + d.y <= p.y)) continue;
            if ((Cross(d, p - a) > 0) == (d.y > 0)) continue;
            winding += d.y > 0 ? 1 : -1;
          }
          if (isNear) continue;
          const bool isInside = rule == FillRule::kNonZero ? winding != 0 : winding % 2 != 0;
          ASSERT_EQ(coverage.At(x, y), isInside ? 255 : 0) << "seed " << seed << ", pixel " << x << " " << y;
        }
      }
    }
  }
}

TEST(RasterCoverageTest, Aliased_TakesPixelsWhoseCentresLieInside) {
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    const Polygon polygon = Star(random, {20, 15}, 25);
    Path path;
    path.Polygon(polygon);
    raster::Shape shape = Filled(path);
    shape.antialias = false;
    const Coverage hard(shape, {0, 0, 40, 30});
    for (int y = 0; y < 30; ++y) {
      for (int x = 0; x < 40; ++x) {
        // A small square around the centre: wholly in or wholly out but for ties.
        const Point c{x + 0.5, y + 0.5};
        Polygon part = CutBy(polygon, 0, c.x - 0.01, true);
        part = CutBy(part, 0, c.x + 0.01, false);
        part = CutBy(part, 1, c.y - 0.01, true);
        const double share = AreaOf(CutBy(part, 1, c.y + 0.01, false)) / 0.0004;
        if (share > 0.001 && share < 0.999) continue;
        ASSERT_EQ(hard.At(x, y), share > 0.5 ? 255 : 0) << "seed " << seed << ", pixel " << x << " " << y;
      }
    }
  }
}

// Curves: the area of a disc, in all and in each pixel that is far from its edge.
TEST(RasterCoverageTest, Discs_HaveTheirArea) {
  for (const double radius : {0.3, 2.0, 17.0, 400.0}) {
    const double k = 0.5522847498307936 * radius;
    const Point m{450.3, 420.7};
    Path path;
    path.Move(m.x + radius, m.y);
    path.Cubic(m.x + radius, m.y + k, m.x + k, m.y + radius, m.x, m.y + radius);
    path.Cubic(m.x - k, m.y + radius, m.x - radius, m.y + k, m.x - radius, m.y);
    path.Cubic(m.x - radius, m.y - k, m.x - k, m.y - radius, m.x, m.y - radius);
    path.Cubic(m.x + k, m.y - radius, m.x + radius, m.y - k, m.x + radius, m.y);
    const Coverage coverage(Filled(path), {0, 0, 900, 900});
    double area = 0;
    for (const unsigned char byte : coverage.bytes) area += byte / 255.0;
    // Lines lie within a curve; the curves lie outside of the circle, by up to 2.8e-4 of its radius.
    const double exact = M_PI * radius * radius;
    EXPECT_LE(area, exact * (1 + 2 * 2.8e-4) + 0.01) << radius;
    EXPECT_GE(area, exact - 2 * M_PI * radius * 0.08 - 0.01) << radius;
  }
}

// A million edges in one row, all one way round: numbers of 32 bits would run over.
TEST(RasterCoverageTest, AMillionEdges_CountAndEnd) {
  Path path;
  for (int i = 0; i < 250000; ++i) path.Rect(1.5, 0, 3, 1);
  const Coverage all(Filled(path), {0, 0, 5, 2});
  EXPECT_EQ((std::vector<int>{all.At(0, 0), all.At(1, 0), all.At(2, 0), all.At(3, 0), all.At(2, 1)}),
            (std::vector<int>{0, 255, 255, 0, 0}));
  const Coverage pairs(Filled(path, FillRule::kEvenOdd), {0, 0, 5, 2});
  EXPECT_EQ(pairs.At(2, 0), 0) << "an even number of times";
  // The workspace is as it was: the next shape is right.
  Path one;
  one.Rect(0, 0, 2, 0.5);
  EXPECT_EQ(Coverage(Filled(one), {0, 0, 5, 2}).At(1, 0), 128);
}

// Tiles: shapes across several of them, both ways, meet without a seam.
TEST(RasterCoverageTest, LongBitmaps_HaveNoSeams) {
  for (const Box& box : {Box{0, 0, 200000, 3}, Box{0, 0, 3, 100000}, Box{0, 0, 3000, 900}}) {
    Path path;
    path.Rect(0.5, 0.5, box.x1 - 0.5, box.y1 - 0.5);
    const Coverage coverage(Filled(path), box);
    ASSERT_TRUE(coverage.isDone);
    for (int y = 0; y < box.y1; ++y) {
      for (int x = 0; x < box.x1; ++x) {
        const bool onSide = x == 0 || x == box.x1 - 1;
        const bool onEnd = y == 0 || y == box.y1 - 1;
        ASSERT_EQ(coverage.At(x, y), onSide && onEnd ? 64 : onSide || onEnd ? 128 : 255) << x << " " << y;
      }
    }
  }
}

TEST(RasterCoverageTest, WhatIsNoNumber_CoversNothing_AndInfinity_IsFarAway) {
  Path none;
  none.Polygon({{1, 1}, {NAN, 5}, {9, 9}});
  Path half;
  half.Polygon({{-INFINITY, -1e300}, {4.5, -1e300}, {4.5, 1e300}, {-INFINITY, 1e300}});
  for (const bool antialias : {true, false}) {
    raster::Shape shape = Filled(none);
    shape.antialias = antialias;
    EXPECT_EQ(Coverage(shape, {0, 0, 10, 10}).bytes, std::vector<unsigned char>(100, 0));
  }
  const Coverage coverage(Filled(half), {0, 0, 10, 10});
  EXPECT_EQ((std::vector<int>{coverage.At(0, 5), coverage.At(4, 5), coverage.At(5, 5)}),
            (std::vector<int>{255, 128, 0}));
}

// From far away to within the box, and as good as level: the slope is more than a number can say.
TEST(RasterCoverageTest, EdgesAsGoodAsLevel_CutNothing) {
  for (const double sign : {1.0, -1.0}) {
    Path path;
    path.Polygon({{sign * 1e15, -1e-300}, {5, 1e-300}, {5, 8}, {8, 8}, {8, -1e-300}});
    const Coverage coverage(Filled(path), {0, 0, 16, 16});
    EXPECT_EQ((std::vector<int>{coverage.At(4, 4), coverage.At(6, 4), coverage.At(9, 4)}),
              (std::vector<int>{0, 255, 0}));
  }
}

// A source that draws itself, or throws, leaves the shape around it, and those after it, as they are.
TEST(RasterCoverageTest, SourcesThatDraw_DisturbNothing) {
  struct Source final : raster::RowSource {
    void Fetch(int x, int, int count, std::uint32_t* pixels) const override {
      Path inner;
      inner.Polygon({{0.3, 0.3}, {190, 40}, {20, 77}});
      EXPECT_GT(Coverage(Filled(inner), {0, 0, 200, 80}).At(40, 30), 0);
      if (throws && x > 10) throw 1;
      std::fill_n(pixels, count, 0xFF010203U);
    }
    bool throws = false;
  };
  const Polygon star = {{32, 1}, {50, 60}, {3, 20}, {61, 25}, {12, 63}};
  Path path;
  path.Polygon(star);
  Source source;
  const auto painted = [&](raster::Ink::Kind kind) {
    std::vector<std::uint32_t> pixels(64 * 64);
    const raster::Surface surface{reinterpret_cast<unsigned char*>(pixels.data()), 256, 64, 64};
    EXPECT_TRUE(Paint(surface, Filled(path), {surface.Bounds()}, {kind, false, 0xFF010203U, &source}));
    return pixels;
  };
  const auto wanted = painted(raster::Ink::Kind::kColor);
  EXPECT_EQ(painted(raster::Ink::Kind::kRows), wanted);
  source.throws = true;
  EXPECT_THROW(painted(raster::Ink::Kind::kRows), int);
  EXPECT_EQ(painted(raster::Ink::Kind::kColor), wanted);
}

}  // namespace
