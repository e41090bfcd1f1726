#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "graphics/geometry/AGAffineTransformFactorize.h"
#include "graphics/geometry/AGGeometry.h"

namespace {

constexpr unsigned int kSeed = 20240517;

AGPoint RandomPoint(std::mt19937& random, double reach) {
  std::uniform_real_distribution<double> value(-reach, reach);
  const double x = value(random);
  return {x, value(random)};
}

// A star-shaped polygon: simple, and far from convex.
AGPointArray RandomStar(std::mt19937& random, unsigned int count, const AGPoint& center, double radius) {
  std::uniform_real_distribution<double> length(0.3 * radius, radius);
  AGPointArray points;
  for (unsigned int i = 0; i < count; ++i) {
    const double angle = k2Pi * i / count, r = length(random);
    points.Append({center.x + r * std::cos(angle), center.y + r * std::sin(angle)});
  }
  return points;
}

TEST(AGGeometry, GetDistanceToSegment2_RandomSegments_IsTheLeastOverTheSegment) {
  std::mt19937 random(kSeed);
  for (int i = 0; i < 300; ++i) {
    const AGPoint p = RandomPoint(random, 10), a = RandomPoint(random, 10), b = RandomPoint(random, 10);
    double least = 1e30;
    for (int k = 0; k <= 4000; ++k) {
      const AGPoint q = a + (b - a) * (k / 4000.0);
      least = std::min(least, (q.x - p.x) * (q.x - p.x) + (q.y - p.y) * (q.y - p.y));
    }
    EXPECT_NEAR(std::sqrt(AGGeometry::GetDistanceToSegment2(p, a, b)), std::sqrt(least), 5e-3) << "seed " << kSeed;
  }
  // A segment of no length has no distance; nothing may turn it into one.
  EXPECT_TRUE(std::isnan(AGGeometry::GetDistanceToSegment2({3, 4}, {0, 0}, {0, 0})));
}

TEST(AGGeometry, GetIntersectionOfSegments_Table_MatchesTheDrawing) {
  const struct {
    AGPoint a1, a2, b1, b2;
    bool meets;
    AGPoint at;
  } cases[] = {
      {{0, 0}, {4, 4}, {0, 4}, {4, 0}, true, {2, 2}},     {{0, 0}, {1, 1}, {1, 1}, {2, 0}, true, {1, 1}},  // end to end
      {{0, 0}, {4, 0}, {2, 0}, {2, 5}, true, {2, 0}},                                                      // a T
      {{0, 0}, {4, 0}, {2, 1e-9}, {2, 5}, false, {0, 0}},  // a T with a gap
      {{0, 0}, {4, 0}, {1, 0}, {3, 0}, false, {0, 0}},     // overlapping on one line
      {{0, 0}, {4, 0}, {0, 1}, {4, 1}, false, {0, 0}},     // parallel
      {{0, 0}, {1, 0}, {3, -1}, {3, 1}, false, {0, 0}},    // beyond an end
      {{1, 1}, {1, 1}, {0, 0}, {2, 2}, false, {0, 0}},     // no length
  };
  for (const auto& c : cases) {
    AGPoint out = {-1, -1};
    EXPECT_EQ(AGGeometry::GetIntersectionOfSegments(c.a1, c.a2, c.b1, c.b2, &out), c.meets);
    EXPECT_EQ(out, c.at);
    EXPECT_EQ(AGGeometry::GetIntersectionOfSegments(c.b1, c.b2, c.a1, c.a2, nullptr), c.meets);
  }
}

TEST(AGGeometry, ResamplePoints_ZigZag_KeepsByTheSquareAndAlwaysTheEnds) {
  // Steps of 0.7065 and 0.7075 against a limit of 0.707: the first is dropped, the second kept.
  AGPointArray points = {{0, 0}, {0.7065, -0.7065}, {0.7075, 0}, {0.8, 0.75}, {0.9, 0.8}};
  ASSERT_TRUE(AGGeometry::ResamplePoints(&points, 1, nullptr));
  EXPECT_EQ(points, (AGPointArray{{0, 0}, {0.7075, 0}, {0.8, 0.75}, {0.9, 0.8}}));
  // A map that enlarges keeps more; its translation plays no role.
  AGPointArray close = {{0, 0}, {0.1, 0}, {0.2, 0}};
  const AGAffineTransform tenfold = {10, 0, 0, 10, 500, 500};
  EXPECT_FALSE(AGGeometry::ResamplePoints(&close, 1, &tenfold));
  ASSERT_TRUE(AGGeometry::ResamplePoints(&close, 1, nullptr));
  EXPECT_EQ(close, (AGPointArray{{0, 0}, {0.2, 0}}));
  AGPointArray two = {{0, 0}, {0, 0}};
  EXPECT_FALSE(AGGeometry::ResamplePoints(&two, 100, nullptr));
  EXPECT_EQ(two.Count(), 2u);
}

TEST(AGGeometry, IsPointInsidePolygon_RandomStars_AgreesWithTheWindingAngle) {
  std::mt19937 random(kSeed);
  for (int round = 0; round < 200; ++round) {
    AGPointArray star = RandomStar(random, 3 + round % 20, {1, -2}, 5);
    const AGPoint p = RandomPoint(random, 6);
    double turn = 0;  // the angle under which the outline is seen from p
    for (unsigned int i = 0; i < star.Count(); ++i) {
      const AGPoint a = star[i] - p, b = star[(i + 1) % star.Count()] - p;
      turn += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    }
    const bool inside = std::fabs(turn) > kPi;
    EXPECT_EQ(AGGeometry::IsPointInsidePolygon(star, p), inside) << "seed " << kSeed << " round " << round;
    star.Append(AGPoint(star[0]));
    EXPECT_EQ(AGGeometry::IsPointInsidePolygon(star, p), inside) << "with the first point repeated";
  }
}

TEST(AGGeometry, FindNearestSegment_RandomLines_FindsWhatTryingAllFinds) {
  std::mt19937 random(kSeed);
  for (const unsigned int count : {2u, 3u, 129u, 1000u}) {
    AGPointArray points;
    AGPoint at = {0, 0};
    for (unsigned int i = 0; i < count; ++i) points.Append(at = at + RandomPoint(random, 1));
    const AGAffineTransform stretch = {2, 0.5, -1, 0.25, 3, 4};
    for (const AGAffineTransform* t : {static_cast<const AGAffineTransform*>(nullptr), &stretch}) {
      for (const bool closed : {false, true}) {
        const AGPoint p = RandomPoint(random, 20);
        const AGAffineTransform map = t ? *t : kAGAffineTransformIdentity;
        unsigned int best = 0;
        double least = 1e30;
        for (unsigned int i = 0; i + (closed ? 0 : 1) < count; ++i) {
          const double d =
              AGGeometry::GetDistanceToSegment(map.Apply(p), map.Apply(points[i]), map.Apply(points[(i + 1) % count]));
          if (d < least) least = d, best = i;
        }
        unsigned int index = 0;
        double distance = 0;
        EXPECT_EQ(AGGeometry::FindNearestSegment(points, closed, p, 0, t, &index, &distance), least);
        EXPECT_EQ(index, best) << "seed " << kSeed;
        EXPECT_EQ(AGGeometry::FindNearestSegment(points, closed, p, least * 0.99, t, &index, &distance), 1e30);
        EXPECT_EQ(index, 0xFFFFFFFFu);
        EXPECT_EQ(distance, 1e30);
      }
    }
  }
}

TEST(AGGeometry, FindNearestSegment_OneLongSegmentBetweenFarPoints_IsFound) {
  for (unsigned int jump = 1; jump < 600; ++jump) {  // wherever the points are divided for the search
    AGPointArray points;
    for (unsigned int i = 0; i < 600; ++i) points.Append({0.01 * i, i < jump / 2 ? 50.0 : i < jump ? 100.0 : -100.0});
    unsigned int index = 0;
    AGGeometry::FindNearestSegment(points, false, {0.01 * (jump - 0.5), 0}, 0, nullptr, &index, nullptr);
    EXPECT_EQ(index, jump - 1);
  }
}

TEST(AGGeometry, FindNearestPoint_TiesLimitsAndNothing_FollowTheRules) {
  const AGPointArray points = {{5, 0}, {0, 3}, {0, -3}, {9, 9}};
  unsigned int index = 7;
  double distance = 7;
  EXPECT_EQ(AGGeometry::FindNearestPoint(points, {0, 0}, 0, nullptr, &index, &distance), 3);
  EXPECT_EQ(index, 1u);  // the earlier of two
  const AGAffineTransform flat = {0.1, 0, 0, 1, 0, 0};
  EXPECT_DOUBLE_EQ(AGGeometry::FindNearestPoint(points, {0, 0}, 3, &flat, &index, nullptr), 0.5);
  EXPECT_EQ(index, 0u);
  EXPECT_EQ(AGGeometry::FindNearestPoint(points, {0, 0}, 2.9, nullptr, &index, &distance), 1e30);
  EXPECT_EQ(index, 0xFFFFFFFFu);
  EXPECT_EQ(AGGeometry::FindNearestPoint(nullptr, 4, {0, 0}, -1, nullptr, nullptr, nullptr), 1e30);
}

TEST(AGGeometry, IsPolygonSect_RandomPairs_AgreesWithAllPairsAndIsSymmetric) {
  std::mt19937 random(kSeed);
  int meeting = 0;
  for (int round = 0; round < 400; ++round) {
    const AGPointArray a = RandomStar(random, 3 + round % 30, {0, 0}, 4);
    const AGPointArray b = RandomStar(random, 3 + round % 17, RandomPoint(random, 7), 0.2 + round % 5);
    bool expected = AGGeometry::IsPointInsidePolygon(a, b[0]) || AGGeometry::IsPointInsidePolygon(b, a[0]);
    for (unsigned int i = 0; i < a.Count(); ++i) {
      for (unsigned int j = 0; j < b.Count(); ++j) {
        expected |=
            AGGeometry::GetIntersectionOfSegments(a[i], a[(i + 1) % a.Count()], b[j], b[(j + 1) % b.Count()], nullptr);
      }
    }
    meeting += expected;
    EXPECT_EQ(AGGeometry::IsPolygonSect(a, b), expected) << "seed " << kSeed << " round " << round;
    EXPECT_EQ(AGGeometry::IsPolygonSect(b, a), expected);
  }
  EXPECT_GT(meeting, 50);
  EXPECT_LT(meeting, 350);
}

TEST(AGGeometry, MapsOfArrays_RandomMaps_AreThoseOfTheirPointsAndCanBeTakenBack) {
  std::mt19937 random(kSeed);
  for (unsigned int count = 0; count < 40; ++count) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + " count " + std::to_string(count));
    AGPointArray points;
    AGRectArray rects;
    for (unsigned int i = 0; i < count; ++i) {
      const AGPoint low = RandomPoint(random, 10), side = RandomPoint(random, 5);
      points.Append(low);
      rects.Append({low.x, low.y, low.x + std::fabs(side.x), low.y + std::fabs(side.y)});
    }
    const AGPoint turn = RandomPoint(random, 2);
    const AGAffineTransform t = {turn.x, turn.y, -turn.y, turn.x, 3, -7};
    AGPointArray mapped = points;
    AGPointArray corners;
    AGRectArray mappedRects = rects;
    AGGeometry::ApplyTransformToPoints(&mapped, t);
    AGGeometry::ApplyTransformToRects(&mappedRects, t);
    AGGeometry::GetRectTrapezoids(&corners, rects);
    ASSERT_EQ(corners.Count(), 4 * count);
    // A box holds all of its points, and none of its sides can be moved inwards.
    const AGRect box = AGGeometry::GetBoundingBox(points);
    int touched[4] = {};
    for (const AGPoint& p : points) {
      EXPECT_TRUE(p.x >= box.x0 && p.x <= box.x1 && p.y >= box.y0 && p.y <= box.y1);
      touched[0] += p.x == box.x0, touched[1] += p.y == box.y0, touched[2] += p.x == box.x1,
          touched[3] += p.y == box.y1;
    }
    EXPECT_EQ(std::count(touched, touched + 4, 0), count == 0 ? 4 : 0);
    EXPECT_EQ(AGGeometry::GetBoundingBox(rects), AGGeometry::GetBoundingBox(corners));
    AGGeometry::ApplyTransformToPoints(&corners, t);
    for (unsigned int i = 0; i < count; ++i) {
      EXPECT_EQ(mappedRects[i],
                (AGRect{corners[4 * i].x, corners[4 * i].y, corners[4 * i + 2].x, corners[4 * i + 2].y}));
      EXPECT_EQ(mapped[i], corners[4 * i]);
      const AGPoint across = corners[4 * i + 1] + (corners[4 * i + 3] - corners[4 * i]);
      EXPECT_NEAR(across.x, corners[4 * i + 2].x, 1e-12);
      EXPECT_NEAR(across.y, corners[4 * i + 2].y, 1e-12);
    }
    AGGeometry::ApplyTransformToPoints(&mapped, AGAffineTransformInverse(t));
    for (unsigned int i = 0; i < count; ++i)
      EXPECT_LT(std::hypot(mapped[i].x - points[i].x, mapped[i].y - points[i].y), 1e-9);
  }
  AGGeometry::ApplyTransformToPoints(nullptr, 3, kAGAffineTransformIdentity);
  AGGeometry::ApplyTransformToRects(nullptr, 3, kAGAffineTransformIdentity);
  EXPECT_EQ(AGGeometry::GetBoundingBox(static_cast<const AGRect*>(nullptr), 3), kAGNullRect);
}

TEST(AGGeometry, GenerateRegularPolygon_HasEqualSidesAboutItsCenter) {
  for (const unsigned int count : {1u, 3u, 4u, 7u, 100000u}) {
    AGPointArray points = {{9, 9}};
    AGGeometry::GenerateRegularPolygon(&points, count, {3, -2}, 5, 0.25);
    ASSERT_EQ(points.Count(), count);
    EXPECT_NEAR(points[0].x, 3 + 5 * std::cos(0.25), 1e-12);
    EXPECT_NEAR(points[0].y, -2 + 5 * std::sin(0.25), 1e-12);
    for (unsigned int i = 0; i < count; ++i) {
      const AGPoint side = points[(i + 1) % count] - points[i], arm = points[i] - AGPoint{3, -2};
      ASSERT_NEAR(std::hypot(side.x, side.y), 10 * std::sin(kPi / count), 1e-9) << i << " of " << count;
      ASSERT_NEAR(std::hypot(arm.x, arm.y), 5, 1e-12);
    }
  }
}

TEST(AGGeometry, GetPlacementAFT_Table_PutsTheSourceWhereTheDrawingSays) {
  const AGRect dst = {10, 20, 110, 70};
  const struct {
    AGRect src;
    AGPlacement placement;
    AGRect expected;  // where the source lands
  } cases[] = {
      {{0, 0, 200, 100}, 0, {10, 20, 110, 70}},        // twice as large: halved
      {{5, 5, 45, 25}, 0, {10, 20, 50, 40}},           // fits: never enlarged
      {{5, 5, 45, 25}, 0x11, {40, 35, 80, 55}},        // centred
      {{5, 5, 45, 25}, 0x22, {70, 50, 110, 70}},       // right and bottom
      {{5, 5, 45, 25}, 0x44, {10, 20, 110, 70}},       // stretched
      {{5, 5, 45, 25}, 0x07, {10, 20, 110, 40}},       // stretch wins over right and centre
      {{5, 5, 45, 25}, 0xFFFFFF30, {10, 50, 50, 70}},  // bottom wins over centre; other bits are ignored
      {{0, 0, 100, 100}, 0x01, {35, 20, 85, 70}},      // shrunk, then centred
  };
  for (const auto& c : cases) {
    const AGAffineTransform t = AGGeometry::GetPlacementAFT(c.src, dst, c.placement);
    const AGPoint first = t.Apply({c.src.x0, c.src.y0}), second = t.Apply({c.src.x1, c.src.y1});
    EXPECT_NEAR(first.x, c.expected.x0, 1e-12);
    EXPECT_NEAR(first.y, c.expected.y0, 1e-12);
    EXPECT_NEAR(second.x, c.expected.x1, 1e-12);
    EXPECT_NEAR(second.y, c.expected.y1, 1e-12);
  }
  EXPECT_EQ(AGGeometry::GetPlacementAFT({3, 3, 3, 9}, dst, 0x44), kAGAffineTransformIdentity);
}

TEST(AGAffineTransformFactorize, RandomMaps_PartsRebuildTheMap) {
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> value(-5, 5);
  for (int i = 0; i < 20000; ++i) {
    AGAffineTransform t = {value(random), value(random), value(random), value(random), value(random), value(random)};
    if (i % 4 == 0) t.b = 1e-9 * value(random);    // next to no rotation, or half a turn
    if (i % 8 == 1) t.c = 2 * t.a, t.d = 2 * t.b;  // flat
    AGPoint shear, scale, translation;
    double rotation = -1;
    AGAffineTransformFactorize(t, &shear, &scale, &rotation, &translation);
    ASSERT_TRUE(rotation >= 0 && rotation < k2Pi) << rotation;
    ASSERT_GE(scale.x, 0);
    if (scale.y == 0) continue;  // exactly flat: no shear is given
    // In scaled units the shear moves along the first axis.
    const AGAffineTransform stretched = {scale.x, 0, shear.x * scale.x, scale.y, 0, 0};
    const AGAffineTransform turn = {std::cos(rotation), std::sin(rotation), -std::sin(rotation),
                                    std::cos(rotation), translation.x,      translation.y};
    const AGAffineTransform rebuilt = AGAffineTransformConcat(stretched, turn);
    for (const auto part : {&AGAffineTransform::a, &AGAffineTransform::b, &AGAffineTransform::c, &AGAffineTransform::d,
                            &AGAffineTransform::tx, &AGAffineTransform::ty}) {
      ASSERT_NEAR(rebuilt.*part, t.*part, 1e-12) << "seed " << kSeed << " round " << i;
    }
  }
}

TEST(AGAffineTransformFactorize, FixedMaps_GiveTheKnownParts) {
  const struct {
    AGAffineTransform t;
    AGPoint shear, scale;
    double rotation;
  } cases[] = {
      {{0, 2, -3, 0, 0, 0}, {0, 0}, {2, 3}, kPi / 2},
      {{1, 0, 0, -1, 0, 0}, {0, 0}, {1, -1}, 0},  // a mirror
      {{-2, 0, 0, -2, 0, 0}, {0, 0}, {2, 2}, kPi},
      {{0, -1, 1, 0, 0, 0}, {0, 0}, {1, 1}, 3 * kPi / 2},
      {{2, 0, 6, 1, 0, 0}, {3, 0}, {2, 1}, 0},
      {{0, 0, 3, 4, 0, 0}, {0, 0}, {0, 5}, kPi / 2},  // no first column
      {kAGNullAffineTransform, {0, 0}, {0, 0}, kPi / 2},
  };
  for (const auto& c : cases) {
    AGPoint shear = {9, 9}, scale = {9, 9};
    double rotation = 9;
    AGAffineTransformFactorize(c.t, &shear, &scale, &rotation, nullptr);
    EXPECT_EQ(shear, c.shear);
    EXPECT_EQ(scale, c.scale);
    EXPECT_DOUBLE_EQ(rotation, c.rotation);
  }
}

}  // namespace
