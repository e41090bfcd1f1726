#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "graphics/geometry/AGBezier.h"

namespace {

constexpr unsigned int kSeed = 77;

struct LongPoint {
  long double x, y;
};

// The curve by repeated linear interpolation, in a wider type.
LongPoint DeCasteljau(const std::vector<AGPoint>& control, long double t) {
  std::vector<LongPoint> p;
  for (const AGPoint& c : control) p.push_back({c.x, c.y});
  for (; p.size() > 1; p.pop_back()) {
    for (std::size_t i = 0; i + 1 < p.size(); ++i) {
      p[i] = {p[i].x + (p[i + 1].x - p[i].x) * t, p[i].y + (p[i + 1].y - p[i].y) * t};
    }
  }
  return p[0];
}

AGPoint PointAt(const std::vector<AGPoint>& c, double t) {
  return c.size() == 3 ? AGBezierQuadGetPoint(c[0], c[1], c[2], t) : AGBezierCubicGetPoint(c[0], c[1], c[2], c[3], t);
}

AGPointArray Adaptive(const std::vector<AGPoint>& c, double precision, bool first) {
  return c.size() == 3 ? AGBezierQuadGetResampledAdaptive(c[0], c[1], c[2], precision, first)
                       : AGBezierCubicGetResampledAdaptive(c[0], c[1], c[2], c[3], precision, first);
}

AGPointArray Regular(const std::vector<AGPoint>& c, unsigned int count, bool first) {
  return c.size() == 3 ? AGBezierQuadGetResampledRegular(c[0], c[1], c[2], count, first)
                       : AGBezierCubicGetResampledRegular(c[0], c[1], c[2], c[3], count, first);
}

std::vector<AGPoint> RandomCurve(std::mt19937& random, int round) {
  std::uniform_real_distribution<double> value(-100, 100);
  std::vector<AGPoint> control(3 + round % 2);
  for (AGPoint& p : control) p = {value(random), value(random)};
  if (round % 5 == 0) control[1].x = control[0].x;                        // an extremum at the very start
  if (round % 7 == 0) control[2] = control[1] + control[1] - control[0];  // a derivative of a lower degree
  return control;
}

TEST(AGBezier, GetPoint_RandomCurves_AgreesWithDeCasteljau) {
  std::mt19937 random(kSeed);
  for (int round = 0; round < 500; ++round) {
    const std::vector<AGPoint> control = RandomCurve(random, round);
    for (const double t : {0.0, 1e-9, 0.1, 0.5, 0.7321, 1.0}) {
      const AGPoint p = PointAt(control, t);
      const LongPoint expected = DeCasteljau(control, t);
      ASSERT_NEAR(p.x, static_cast<double>(expected.x), 1e-12) << "seed " << kSeed << " round " << round;
      ASSERT_NEAR(p.y, static_cast<double>(expected.y), 1e-12);
    }
  }
}

TEST(AGBezier, GetMinimax_RandomCurves_TouchesTheCurveAndHoldsIt) {
  std::mt19937 random(kSeed);
  for (int round = 0; round < 70; ++round) {
    const std::vector<AGPoint> c = RandomCurve(random, round);
    AGPoint min, max;
    if (c.size() == 3) {
      AGBezierQuadGetMinimax(c[0], c[1], c[2], &min, &max);
    } else {
      AGBezierCubicGetMinimax(c[0], c[1], c[2], c[3], &min, &max);
    }
    long double x0 = 1e30L, x1 = -1e30L, y0 = 1e30L, y1 = -1e30L;
    for (int k = 0; k <= 20000; ++k) {
      const LongPoint p = DeCasteljau(c, k / 20000.0L);
      x0 = std::min(x0, p.x), x1 = std::max(x1, p.x), y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
    }
    // Sampling misses an extremum by half a step squared times half the second derivative (at most 2400): 8e-7.
    const double kSlack = 1e-6;
    ASSERT_TRUE(min.x <= x0 + 1e-12 && max.x >= x1 - 1e-12 && min.y <= y0 + 1e-12 && max.y >= y1 - 1e-12)
        << "seed " << kSeed << " round " << round;
    ASSERT_NEAR(min.x, static_cast<double>(x0), kSlack);
    ASSERT_NEAR(max.x, static_cast<double>(x1), kSlack);
    ASSERT_NEAR(min.y, static_cast<double>(y0), kSlack);
    ASSERT_NEAR(max.y, static_cast<double>(y1), kSlack);
  }
}

TEST(AGBezier, GetMinimax_ControlsFarOutsideWithoutAnExtremum_IsTheBoxOfTheEnds) {
  AGPoint min, max;
  // x rises all the way, though its last control lies beyond the end's y range.
  AGBezierQuadGetMinimax({0, 0}, {50, 100}, {100, 200}, &min, nullptr);
  EXPECT_EQ(min, (AGPoint{0, 0}));
  // The cubic term nearly vanishes: the textbook formula for the roots loses every digit here.
  AGBezierCubicGetMinimax({0, 0}, {1, 100}, {2, 100 + 1e-13}, {3, 0}, &min, &max);
  EXPECT_NEAR(max.y, 75, 1e-10);
  EXPECT_EQ(max.x, 3);
}

TEST(AGBezier, ResampledRegular_Counts_AreClampedAndEndAtTheEnd) {
  for (const std::vector<AGPoint>& c :
       {std::vector<AGPoint>{{0, 0}, {5, 9}, {10, 1}}, {{0, 0}, {5, 9}, {7, -9}, {10, 1}}}) {
    const struct {
      unsigned int count;
      bool first;
      unsigned int expected;
    } cases[] = {{0, true, 0}, {1, true, 0}, {2, false, 1}, {2, true, 2}, {5, false, 4}, {2000, true, 1024}};
    for (const auto& k : cases) {
      const AGPointArray points = Regular(c, k.count, k.first);
      ASSERT_EQ(points.Count(), k.expected);
      if (k.expected == 0) continue;
      EXPECT_EQ(points[k.expected - 1], c.back());
      EXPECT_EQ(points[0] == c[0], k.first);
    }
    EXPECT_NEAR(Regular(c, 5, true)[1].x, static_cast<double>(DeCasteljau(c, 0.25L).x), 1e-12);
  }
}

TEST(AGBezier, ResampledAdaptive_StraightCurves_AddOnlyMiddlesOfFlatPieces) {
  EXPECT_EQ(Adaptive({{0, 0}, {4, 4}, {8, 8}}, 1, true), (AGPointArray{{0, 0}, {4, 4}, {8, 8}}));
  EXPECT_EQ(Adaptive({{0, 0}, {4, 0}, {8, 0}, {12, 0}}, 1, true), (AGPointArray{{0, 0}, {3, 0}, {9, 0}, {12, 0}}));
  EXPECT_EQ(Adaptive({{0, 0}, {4, 0}, {8, 0}, {12, 0}}, 1, false).Count(), 3u);
  // A flat quadratic whose hump is 0.5 high at precision 1: k² = tolerance · chord² exactly when its control is 0.5
  // high.
  EXPECT_EQ(Adaptive({{0, 0}, {5, 0.5}, {10, 0}}, 1, true).Count(), 3u);
  EXPECT_EQ(Adaptive({{0, 0}, {5, 0.5000001}, {10, 0}}, 1, true).Count(), 4u);
}

TEST(AGBezier, ResampledAdaptive_RandomCurves_StayWithinThePrecisionOfTheCurve) {
  std::mt19937 random(kSeed);
  for (int round = 0; round < 100; ++round) {
    const std::vector<AGPoint> c = RandomCurve(random, round);
    const double precision = 0.25 * (1 << round % 7);
    const AGPointArray line = Adaptive(c, precision, true);
    ASSERT_EQ(line, Adaptive(c, precision > 16 ? 100 : precision, true));
    // Neighbouring middles skip the split point between them, and pieces of unlike
    // length may meet there: the line may leave the curve by the deviation of three pieces, not by more.
    for (int k = 0; k <= 500; ++k) {
      const LongPoint p = DeCasteljau(c, k / 500.0L);
      double least = 1e30;
      for (unsigned int i = 0; i + 1 < line.Count(); ++i) {
        const AGPoint a = line[i], d = line[i + 1] - a;
        const double length2 = d.x * d.x + d.y * d.y;
        const double px = static_cast<double>(p.x) - a.x, py = static_cast<double>(p.y) - a.y;
        const double u = length2 > 0 ? std::clamp((px * d.x + py * d.y) / length2, 0.0, 1.0) : 0;
        least = std::min(least, std::hypot(px - u * d.x, py - u * d.y));
      }
      ASSERT_LT(least, 3 * 0.5 / precision) << "seed " << kSeed << " round " << round;
    }
  }
}

TEST(AGBezier, ResampledAdaptive_Extremes_EndAndAreBounded) {
  // 10^9 units across never gets flat: the deepest pieces are dropped, and only the ends remain.
  const AGPointArray wild = Adaptive({{0, 0}, {1e9, 3e9}, {-2e9, 3e9}, {1e9, 0}}, 16, true);
  EXPECT_EQ(wild, (AGPointArray{{0, 0}, {1e9, 0}}));
  // A flat hump's height falls to a quarter with each halving: 2000 units are below 0.5 / 16 after 8 halvings, 4000
  // not.
  EXPECT_EQ(Adaptive({{0, 0}, {1e7, 2000}, {2e7, 0}}, 16, true).Count(), 256u + 2);
  EXPECT_EQ(Adaptive({{0, 0}, {1e7, 4000}, {2e7, 0}}, 16, true).Count(), 2u);
  EXPECT_EQ(Adaptive({{0, 0}, {50, 90}, {100, 0}}, 0, true), Adaptive({{0, 0}, {50, 90}, {100, 0}}, 0.25, true));
  EXPECT_EQ(Adaptive({{0, 0}, {50, 90}, {100, 0}}, std::nan(""), true),
            Adaptive({{0, 0}, {50, 90}, {100, 0}}, 0, true));
}

TEST(AGBezier, Resampled_QualityLevels_AreTheListedOnes) {
  const AGPoint a = {0, 0}, b = {30, 90}, c = {70, -90}, d = {100, 0};
  EXPECT_EQ(AGBezierCubicGetResampled(a, b, c, d, 3, true), Regular({a, b, c, d}, 17, true));
  EXPECT_EQ(AGBezierQuadGetResampled(a, b, d, 1, false), Regular({a, b, d}, 5, false));
  for (const auto& [quality, precision] : {std::pair{0u, 2.0}, {4u, 1.0}, {5u, 2.0}, {6u, 4.0}, {7u, 2.0}}) {
    EXPECT_EQ(AGBezierCubicGetResampled(a, b, c, d, quality, true), Adaptive({a, b, c, d}, precision, true));
    EXPECT_EQ(AGBezierQuadGetResampled(a, b, d, quality, true), Adaptive({a, b, d}, precision, true));
  }
}

}  // namespace
