#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "CoreGraphics/CGPath.h"
#include "graphics/paths/AGPath.h"
#include "kit/geometry/AGConstants.h"

namespace {

// One letter a verb and its end point in absolute coordinates: "m0,0 l10,0 z".
std::string Outline(const AGPath& path) {
  struct State {
    AGPoint origin;
    std::string text;
  } state = {path.Origin(), ""};
  CGPathApply(path.NativePath(), &state, [](void* info, const CGPathElement* element) {
    State& s = *static_cast<State*>(info);
    const int counts[] = {1, 1, 2, 3, 0};
    s.text += s.text.empty() ? "" : " ";
    s.text += "mlqcz"[element->type];
    if (const int count = counts[element->type]) {
      char point[64];
      std::snprintf(point, sizeof point, "%.6g,%.6g", element->points[count - 1].x + s.origin.x,
                    element->points[count - 1].y + s.origin.y);
      s.text += point;
    }
  });
  return state.text;
}

void ExpectNear(const AGRect& a, const AGRect& b, double tolerance) {
  EXPECT_NEAR(a.x0, b.x0, tolerance);
  EXPECT_NEAR(a.y0, b.y0, tolerance);
  EXPECT_NEAR(a.x1, b.x1, tolerance);
  EXPECT_NEAR(a.y1, b.y1, tolerance);
}

const AGPointArray kFour = {{1, 2}, {11, 2}, {11, 12}, {1, 12}};
const AGPointArray kOne = {{5, 5}};

TEST(AGPath, FirstOperation_EachKind_TakesItsOwnOriginAndOutline) {
  const struct {
    std::function<void(AGPath&)> add;
    AGPoint origin;
    const char* outline;
  } cases[] = {
      {[](AGPath& p) {
         p.StartSubPath({3, 4});
       },
       {3, 4},
       "m3,4"},
      {[](AGPath& p) {
         p.AddLine({3, 4});
       },
       {3, 4},
       ""},
      {[](AGPath& p) {
         p.AddSegment({3, 4}, {5, 6});
       },
       {3, 4},
       "m3,4 l5,6"},
      {[](AGPath& p) {
         p.AddQuadBezier({3, 4}, {5, 6});
       },
       {3, 4},
       ""},
      {[](AGPath& p) {
         p.AddCubicBezier({3, 4}, {5, 6}, {7, 8});
       },
       {3, 4},
       ""},
      {[](AGPath& p) {
         p.AddArc(AGPoint{3, 4}, AGPoint{5, 6}, 1.0);
       },
       {3, 4},
       ""},
      {[](AGPath& p) {
         p.AddArc(AGPoint{3, 4}, 2.0, 0.0, kPi / 2);
       },
       {5, 4},
       "m5,4 c3,6"},
      {[](AGPath& p) {
         p.AddArc(AGPoint{3, 4}, 2.0, 0.0, -kPi / 2);
       },
       {5, 4},
       "m5,4 c3,2"},
      {[](AGPath& p) {
         p.AddArc(AGRect{0, 0, 8, 4}, 0, kPi);
       },
       {8, 2},
       "m8,2 c4,4 c0,2"},
      {[](AGPath& p) {
         p.AddArc(AGRect{4, 0, 4, 6}, 0, kPi);
       },
       {4, 3},
       "m4,3 c4,6 c4,3"},
      {[](AGPath& p) { p.AddLines(kFour, true); }, {1, 2}, "m1,2 m1,2 l11,2 l11,12 l1,12 z"},
      {[](AGPath& p) { p.AddQuadBeziers(kFour, true); }, {1, 2}, "m1,2 q11,12 z"},
      {[](AGPath& p) { p.AddCubicBeziers(kFour, false); }, {1, 2}, "m1,2 c1,12"},
      {[](AGPath& p) { p.AddSplineCurves(kFour, 0.5, true); }, {1, 2}, "m1,2 c11,2 c11,12 c1,12 c1,2 z"},
      {[](AGPath& p) { p.AddSplineCurves(kFour, 0.05, false); }, {1, 2}, "m1,2 m1,2 l11,2 l11,12 l1,12"},
      {[](AGPath& p) {
         p.AddRect({5, 6, 1, 2}, false);
       },
       {5, 6},
       "m1,2 l5,2 l5,6 l1,6 z"},
      {[](AGPath& p) {
         p.AddRect({5, 6, 1, 2}, true);
       },
       {1, 2},
       "m1,2 l5,2 l5,6 l1,6 z"},
      {[](AGPath& p) {
         p.AddEllipseInRect({0, 0, 8, 4}, false);
       },
       {0, 0},
       "m8,2 c4,4 c0,2 c4,0 c8,2 z"},
      {[](AGPath& p) {
         p.AddRoundedRect({0, 0, 100, 50}, 0.5, false);
       },
       {0, 0},
       "m100,25 l100,37.5 c87.5,50 l12.5,50 c0,37.5 l0,12.5 c12.5,0 l87.5,0 c100,12.5 z"},
      {[](AGPath& p) {
         p.AddRoundedRect({0, 0, 9, 5}, 0.02, false);
       },
       {0, 0},
       "m0,0 l9,0 l9,5 l0,5 z"},
      {[](AGPath& p) {
         p.AddRoundedRect({0, 0, 9, 5}, std::nan(""), false);
       },
       {0, 0},
       "m0,0 l9,0 l9,5 l0,5 z"},
      // Too short: nothing, and no origin either.
      {[](AGPath& p) { p.AddLines(kOne, true); }, {0, 0}, ""},
      {[](AGPath& p) { p.AddQuadBeziers(kFour.Data(), 2, true); }, {0, 0}, ""},
      {[](AGPath& p) { p.AddCubicBeziers(kFour.Data(), 3, true); }, {0, 0}, ""},
      {[](AGPath& p) { p.AddSplineCurves(kOne, 1, true); }, {0, 0}, ""},
      {[](AGPath& p) { p.AddPath(AGPath()); }, {0, 0}, ""},
  };
  for (const auto& c : cases) {
    AGPath path;
    c.add(path);
    EXPECT_EQ(Outline(path), c.outline);
    EXPECT_EQ(path.Origin(), c.origin) << c.outline;
    // On a path that has an origin, the same operation gives the same absolute points after what is there.
    AGPath second;
    second.UpdateOrigin({-50, 7});
    c.add(second);
    EXPECT_EQ(Outline(second), c.outline);
    EXPECT_EQ(second.Origin(), (AGPoint{-50, 7}));
  }
}

TEST(AGPath, AddRoundedRect_CurvatureAboveOne_IsHalfCirclesOnTheShortSides) {
  AGPath one, three;
  one.AddRoundedRect({10, 10, 110, 60}, 1, false);
  three.AddRoundedRect({10, 10, 110, 60}, 3, false);
  EXPECT_EQ(Outline(one), Outline(three));
  for (int i = 0; i < 360; ++i) {  // points of the left half circle, drawn slightly larger and smaller
    const double angle = kPi / 2 + kPi * (i + 0.5) / 360, c = std::cos(angle), s = std::sin(angle);
    EXPECT_TRUE(one.IsPointInPath({35 + 24.98 * c, 35 + 24.98 * s}, 0));
    EXPECT_FALSE(one.IsPointInPath({35 + 25.02 * c, 35 + 25.02 * s}, 0));
  }
}

TEST(AGPath, AddSplineCurves_ClosedRing_IsSmoothAllRound) {
  AGPath path;
  path.AddSplineCurves({{0, 0}, {10, 3}, {12, 11}, {-2, 9}, {-5, 4}}, 0.8, true);
  std::vector<CGPoint> curve;  // the controls and ends of the pieces
  CGPathApply(path.NativePath(), &curve, [](void* info, const CGPathElement* e) {
    if (e->type == kCGPathElementAddCurveToPoint) {
      static_cast<std::vector<CGPoint>*>(info)->insert(static_cast<std::vector<CGPoint>*>(info)->end(), e->points,
                                                       e->points + 3);
    }
  });
  ASSERT_EQ(curve.size(), 15u);
  for (std::size_t piece = 0; piece < 5; ++piece) {
    const CGPoint before = curve[3 * piece + 1], at = curve[3 * piece + 2], after = curve[3 * (piece + 1) % 15];
    EXPECT_NEAR(at.x - before.x, after.x - at.x, 1e-12);
    EXPECT_NEAR(at.y - before.y, after.y - at.y, 1e-12);
  }
}

TEST(AGPath, AddPath_PathsWithOtherOrigins_KeepAbsolutePlaces) {
  AGPath source;
  source.AddRect({100, 100, 104, 102}, false);
  const AGAffineTransform turn = {0, 1, -1, 0, 5, 6};
  for (const bool hasOrigin : {false, true}) {
    AGPath path;
    if (hasOrigin) path.StartSubPath({1, 1});
    const std::string before = hasOrigin ? "m1,1 " : "";
    path.AddPath(source);
    EXPECT_EQ(Outline(path), before + "m100,100 l104,100 l104,102 l100,102 z");
    EXPECT_EQ(path.Origin(), hasOrigin ? (AGPoint{1, 1}) : (AGPoint{100, 100}));
    path.Clear();
    EXPECT_FALSE(path.HasOrigin());
    path.AddPath(source, turn);
    EXPECT_EQ(Outline(path), "m-95,106 l-95,110 l-97,110 l-97,106 z");
    EXPECT_EQ(path.Origin(), (AGPoint{-95, 106}));
  }
  source.AddPath(source, {1, 0, 0, 1, 10, 0});
  EXPECT_EQ(Outline(source), "m100,100 l104,100 l104,102 l100,102 z m110,100 l114,100 l114,102 l110,102 z");
}

TEST(AGPath, Copies_AfterChangingTheOriginal_StayAsTheyWere) {
  AGPath path;
  path.SetText("outline");
  path.AddRect({1, 1, 3, 3}, false);
  path.Precompute();
  AGPath copy(path), assigned;
  assigned.AddLine({9, 9});
  assigned = path;
  const AGPath fromNative(path.NativePath(), {10, 10});
  path.AddRect({-5, -5, 0, 0}, false);
  path.ApplyTransform({2, 0, 0, 2, 0, 0});
  for (const AGPath* same : {&copy, &assigned}) {
    EXPECT_EQ(Outline(*same), "m1,1 l3,1 l3,3 l1,3 z");
    EXPECT_EQ(same->GetBoundingBox(), (AGRect{1, 1, 3, 3}));
    EXPECT_EQ(same->Text(), AKString("outline"));
  }
  EXPECT_EQ(Outline(fromNative), "m10,10 l12,10 l12,12 l10,12 z");
  EXPECT_EQ(path.GetBoundingBox(), (AGRect{-10, -10, 6, 6}));
  AGPath& self = path;
  path = self;
  EXPECT_EQ(path.GetBoundingBox(), (AGRect{-10, -10, 6, 6}));
}

TEST(AGPath, Bounds_AfterEveryChange_AreThoseOfTheNewPath) {
  AGPath path;
  EXPECT_EQ(path.GetBoundingBox(), kAGNullRect);
  path.StartSubPath({0, 0});
  path.AddQuadBezier({10, 20}, {20, 0});
  EXPECT_EQ(path.GetBoundingBox(), (AGRect{0, 0, 20, 20}));
  EXPECT_EQ(path.GetFlattenedBoundingBox(), (AGRect{0, 0, 20, 10}));
  path.AddLine({-4, 2});
  EXPECT_EQ(path.GetFlattenedBoundingBox(), (AGRect{-4, 0, 20, 10}));
  path.AddArc(AGPoint{-4, 40}, AGPoint{-8, 40}, 3.0);
  EXPECT_EQ(path.GetFlattenedBoundingBox(), (AGRect{-7, 0, 20, 40}));
  path.ApplyTransform({1, 0, 0, 1, 100, 200});
  EXPECT_EQ(path.GetBoundingBox(), (AGRect{93, 200, 120, 240}));
  CGPathAddLineToPoint(path.NativePathToModify(), nullptr, 0, -50);
  EXPECT_EQ(path.GetBoundingBox(), (AGRect{93, 150, 120, 240}));
  path.Clear();
  EXPECT_EQ(path.GetFlattenedBoundingBox(), kAGNullRect);
}

TEST(AGPath, PutInBounds_EveryRatioAndMirroring_FillsOrCentres) {
  for (const AGRect& box : {AGRect{3, 4, 13, 6}, AGRect{3, 4, 5, 24}, AGRect{-7, -7, -3, -3}}) {
    for (const AGRect& bounds : {AGRect{0, 0, 60, 20}, AGRect{100, 50, 110, 90}, AGRect{60, 0, 0, 20},
                                 AGRect{0, 20, 60, 0}, AGRect{9, 9, 1, 1}}) {
      AGPath fill, keep;
      fill.AddSegment({box.x0, box.y0}, {box.x1, box.y1});
      keep.AddPath(fill);
      fill.PutInBounds(bounds, false);
      AGRect upright = bounds;
      upright.Normalize();
      ExpectNear(fill.GetBoundingBox(), upright, 1e-12);
      EXPECT_NEAR(fill.Origin().x, bounds.x0, 1e-12) << "the first corner goes to the first corner, mirrored or not";
      EXPECT_NEAR(fill.Origin().y, bounds.y0, 1e-12);
      keep.PutInBounds(bounds, true);
      const AGRect fitted = keep.GetBoundingBox();
      EXPECT_NEAR(fitted.Height() / fitted.Width(), box.Height() / box.Width(), 1e-12);
      EXPECT_NEAR(fitted.Center().x, upright.Center().x, 1e-12);
      EXPECT_NEAR(fitted.Center().y, upright.Center().y, 1e-12);
      EXPECT_NEAR(std::max(fitted.Width() / upright.Width(), fitted.Height() / upright.Height()), 1, 1e-12);
      EXPECT_EQ(keep.Origin().x < fitted.Center().x, bounds.x0 < bounds.x1);
      EXPECT_EQ(keep.Origin().y < fitted.Center().y, bounds.y0 < bounds.y1);
    }
  }
  AGPath level;
  level.AddSegment({1, 5}, {9, 5});
  level.PutInBounds({0, 0, 50, 50}, true);
  EXPECT_EQ(Outline(level), "m0,0 l0,0");
}

TEST(AGPath, IsPointInPath_RulesHolesAndOpenSubpaths_MatchTheDrawing) {
  AGPath nested, open, eight;
  nested.AddRect({0, 0, 30, 30}, false);
  nested.AddRect({10, 10, 20, 20}, false);                        // the same direction: a hole for even-odd alone
  nested.AddLines({{25, 2}, {22, 2}, {22, 28}, {25, 28}}, true);  // the other direction: a hole for both
  open.StartSubPath({0, 0});
  open.AddLine({10, 0});
  open.AddLine({10, 10});
  open.StartSubPath({20, 0});
  open.AddLine({30, 0});
  open.AddLine({30, 10});
  eight.AddLines({{0, 0}, {10, 10}, {10, 0}, {0, 10}}, true);
  const struct {
    const AGPath& path;
    AGPoint p;
    bool evenOdd, winding;
  } cases[] = {
      {nested, {5, 5}, true, true},
      {nested, {15, 15}, false, true},
      {nested, {23, 15}, false, false},
      {nested, {35, 15}, false, false},
      {open, {8, 3}, true, true},
      {open, {3, 8}, false, false},
      {open, {28, 3}, true, true},
      {open, {15, 3}, false, false},
      {eight, {1, 5}, true, true},
      {eight, {9, 5}, true, true},
      {eight, {5, 9}, false, false},
      // On an edge: left and bottom are inside, right and top are not.
      {nested, {0, 15}, true, true},
      {nested, {15, 0}, true, true},
      {nested, {30, 5}, false, false},
      {nested, {5, 30}, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.path.IsPointInPath(c.p, kAGBrushFillEvenOdd), c.evenOdd) << c.p.x << "," << c.p.y;
    EXPECT_EQ(c.path.IsPointInPath(c.p, kAGBrushFillWinding), c.winding) << c.p.x << "," << c.p.y;
  }
}

TEST(AGPath, IsPointOnPath_ToleranceTransformAndCurves_MeasureTheOutline) {
  AGPath path;
  path.AddRect({10, 10, 20, 20}, false);
  EXPECT_TRUE(path.IsPointOnPath({15, 10}, 0, nullptr));
  EXPECT_TRUE(path.IsPointOnPath({10, 12}, 0, nullptr)) << "the closing side";
  EXPECT_FALSE(path.IsPointOnPath({15, 15}, 4.9, nullptr));
  EXPECT_TRUE(path.IsPointOnPath({15, 15}, 5, nullptr));
  const AGAffineTransform twice = {2, 0, 0, 2, 0, 0};  // about the origin (10, 10)
  EXPECT_TRUE(path.IsPointOnPath({30, 25}, 1e-9, &twice));
  AGPath curve;
  curve.StartSubPath({0, 0});
  curve.AddQuadBezier({50, 100}, {100, 0});
  // A chord over an eighth of t leaves this curve by (100 · 2 / 8²) / 4 at most.
  EXPECT_TRUE(curve.IsPointOnPath({50, 50}, 1e-9, nullptr));
  EXPECT_FALSE(curve.IsPointOnPath({50, 55}, 4, nullptr));
  EXPECT_FALSE(AGPath().IsPointOnPath({0, 0}, 1e9, nullptr));
}

TEST(AGPath, AnyOperation_ArbitraryBits_EndsWithoutAFault) {
  constexpr unsigned int kSeed = 4711;
  std::mt19937_64 random(kSeed);
  const double kOdd[] = {0, -0.0, 5e-324, -1e-310, 1e308, -1.7e308, INFINITY, -INFINITY, NAN, 1, 2, 3};
  const auto value = [&] { return random() % 4 ? kOdd[random() % 12] : std::bit_cast<double>(random()); };
  const auto point = [&] { return AGPoint{value(), value()}; };
  const auto rect = [&] { return AGRect{value(), value(), value(), value()}; };
  const auto map = [&] { return AGAffineTransform{value(), value(), value(), value(), value(), value()}; };
  for (int round = 0; round < 4000; ++round) {
    AGPath path;
    AGPointArray points(4);
    bool odd = false;
    const std::function<void()> operations[] = {
        [&] { path.AddLines(points, odd); },
        [&] { path.AddCubicBeziers(points, odd); },
        [&] { path.AddQuadBeziers(points, odd); },
        [&] { path.AddSplineCurves(points, value(), odd); },
        [&] {
          path.AddArc(point(), AGSize{value(), value()}, value(), value());
        },
        [&] { path.AddArc(point(), point(), value()); },
        [&] { path.AddRoundedRect(rect(), value(), odd); },
        [&] { path.AddEllipseInRect(rect(), odd); },
        [&] { path.AddPath(path, map()); },
        [&] { path.ApplyTransform(map()); },
        [&] { path.PutInBounds(rect(), odd); },
    };
    if (round % 2) path.StartSubPath(point());
    for (int step = 0; step < 6; ++step) {
      odd = step % 2;
      for (AGPoint& p : points) p = point();
      operations[random() % std::size(operations)]();
    }
    const AGAffineTransform t = map();
    static_cast<void>(path.GetFlattenedBoundingBox());
    static_cast<void>(path.IsPointOnPath(point(), value(), &t));
    for (int i = 0; i < 4; ++i) {
      // Both rules count the same crossings: outside by winding is outside by parity.
      const AGPoint p = point();
      EXPECT_TRUE(path.IsPointInPath(p, kAGBrushFillWinding) || !path.IsPointInPath(p, kAGBrushFillEvenOdd));
    }
  }
}

}  // namespace
