// What is left of paths that are cut to a box, against the paths as they were.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/paths/PathCut.h"

namespace {

using platform::CutBox;

constexpr CutBox kBox{-50, -40, 60, 70};

struct Owned {
  ~Owned() { CGPathRelease(native); }
  CGMutablePathRef native = CGPathCreateMutable();
};

// The path as chords, each subpath closed for filling; cubic curves in many steps.
using Chords = std::vector<std::pair<CGPoint, CGPoint>>;

struct Chopper {
  Chords chords;
  CGPoint start{0, 0};
  CGPoint current{0, 0};
  bool closes = true;

  void To(CGPoint p) {
    chords.push_back({current, p});
    current = p;
  }
  void Take(const CGPathElement& e) {
    const CGPoint* p = e.points;
    const CGPoint from = current;
    if (e.type == kCGPathElementMoveToPoint || e.type == kCGPathElementCloseSubpath) {
      if (closes || e.type == kCGPathElementCloseSubpath) To(start);
      if (p != nullptr) start = current = p[0];
    } else if (e.type == kCGPathElementAddLineToPoint) {
      To(p[0]);
    } else {
      for (int k = 1; k <= 400; ++k) {
        const double t = k / 400.0, s = 1 - t;
        const double w[] = {s * s * s, 3 * t * s * s, 3 * t * t * s, t * t * t};
        To({w[0] * from.x + w[1] * p[0].x + w[2] * p[1].x + w[3] * p[2].x,
            w[0] * from.y + w[1] * p[0].y + w[2] * p[1].y + w[3] * p[2].y});
      }
    }
  }
};

Chords ChordsOf(CGPathRef path, bool closes) {
  Chopper chopper;
  chopper.closes = closes;
  CGPathApply(path, &chopper, [](void* info, const CGPathElement* e) { static_cast<Chopper*>(info)->Take(*e); });
  if (closes) chopper.To(chopper.start);
  return chopper.chords;
}

int WindingOf(const Chords& chords, CGPoint p) {
  int winding = 0;
  for (const auto& [a, b] : chords) {
    if ((a.y <= p.y) == (b.y <= p.y)) continue;
    if (a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x) > p.x) winding += a.y <= p.y ? 1 : -1;
  }
  return winding;
}

double DistanceTo(const Chords& chords, CGPoint p) {
  double least = INFINITY;
  for (const auto& [a, b] : chords) {
    const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    double t = length > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / length : 0;
    t = std::fmin(std::fmax(t, 0), 1);
    least = std::fmin(least, std::hypot(a.x + t * dx - p.x, a.y + t * dy - p.y));
  }
  return least;
}

class PathCutTest : public testing::Test {
 protected:
  double Number(double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random_); }
  // Some near the box, some far beyond it.
  CGPoint Point() {
    const double reach = std::pow(10, Number(1.5, 3));
    return {Number(-reach, reach), Number(-reach, reach)};
  }
  CGPoint InBox() { return {Number(kBox.x0, kBox.x1), Number(kBox.y0, kBox.y1)}; }

  void AddAnything(CGMutablePathRef path) {
    CGPoint p = Point(), a = Point(), b = Point();
    CGPathMoveToPoint(path, nullptr, p.x, p.y);
    for (unsigned int i = 0, count = 1 + random_() % 5; i < count; ++i, p = Point(), a = Point(), b = Point()) {
      if (random_() % 2 == 0) {
        CGPathAddLineToPoint(path, nullptr, p.x, p.y);
      } else {
        CGPathAddCurveToPoint(path, nullptr, a.x, a.y, b.x, b.y, p.x, p.y);
      }
      if (random_() % 6 == 0) CGPathCloseSubpath(path);  // what follows begins at the start
    }
    if (random_() % 2 == 0) CGPathCloseSubpath(path);
  }

  const unsigned int seed_ = std::random_device{}();
  std::mt19937 random_{seed_};
};

TEST_F(PathCutTest, Fill_AnyPath_CoversTheSameOfTheBoxAndLeavesItNowhere) {
  SCOPED_TRACE(testing::Message() << "seed " << seed_);
  unsigned int tested = 0;
  for (int round = 0; round < 150; ++round) {
    Owned path, cut;
    for (unsigned int i = 0, count = 1 + random_() % 3; i < count; ++i) AddAnything(path.native);
    platform::CutForFill(*path.native, kBox, cut.native);
    for (const CGPoint& p : cut.native->points) {
      // Of a curve that is kept the controls are inside too.
      ASSERT_TRUE(kBox.Contains(p)) << p.x << ", " << p.y;
    }
    const Chords whole = ChordsOf(path.native, true), rest = ChordsOf(cut.native, true);
    for (int i = 0; i < 20; ++i) {
      const CGPoint p = InBox();
      if (DistanceTo(whole, p) < 0.2) continue;
      ++tested;
      ASSERT_EQ(WindingOf(rest, p), WindingOf(whole, p)) << p.x << ", " << p.y << " round " << round;
    }
  }
  EXPECT_GT(tested, 1000U);
}

TEST_F(PathCutTest, Stroke_AnyPath_KeepsAllOfTheOutlineInTheBoxAndNothingElse) {
  SCOPED_TRACE(testing::Message() << "seed " << seed_);
  for (int round = 0; round < 60; ++round) {
    Owned path, cut;
    AddAnything(path.native);
    platform::CutForStroke(*path.native, kBox, cut.native);
    const Chords whole = ChordsOf(path.native, false), rest = ChordsOf(cut.native, false);
    for (std::size_t i = 0; i < whole.size(); i += 7) {
      const auto& [a, b] = whole[i];
      if (!kBox.Contains(a) || !kBox.Contains(b)) continue;
      ASSERT_LT(DistanceTo(rest, a), 0.2) << "round " << round;
    }
    for (std::size_t i = 0; i < rest.size(); i += 7) {
      ASSERT_LT(DistanceTo(whole, rest[i].second), 0.2) << "round " << round;
    }
  }
}

std::string VerbsOf(CGPathRef path) {
  std::string verbs;
  for (const CGPath::Verb verb : path->verbs) verbs += "mlqcz"[verb];
  return verbs;
}

TEST_F(PathCutTest, Stroke_ClosedOutlines_KeepTheJoinAtTheirStart) {
  Owned inside, across;
  CGPathAddRect(inside.native, nullptr, {{0, 0}, {10, 10}});
  CGPathAddRect(across.native, nullptr, {{0, 0}, {1e9, 10}});
  Owned cutInside, cutAcross;
  platform::CutForStroke(*inside.native, kBox, cutInside.native);
  platform::CutForStroke(*across.native, kBox, cutAcross.native);
  EXPECT_EQ(VerbsOf(cutInside.native), "mlllz");
  EXPECT_EQ(VerbsOf(cutAcross.native), "mlll");  // from the cut, around both corners, to the cut
  EXPECT_NEAR(cutAcross.native->points.Data()[0].x, 60, 1e-6);
  EXPECT_EQ(cutAcross.native->points.Data()[1].x, 0);
  EXPECT_NEAR(cutAcross.native->points.Data()[3].x, 60, 1e-6);
}

// The cost of a curve grows with the logarithm of its size, not with its size.
TEST_F(PathCutTest, HugeCurves_AreCutToAFewPieces) {
  for (const double size : {1e4, 1e6, 1e9, 1e12}) {
    Owned circle, fill, stroke;
    CGPathAddEllipseInRect(circle.native, nullptr, {{-2 * size, -size}, {2 * size, 2 * size}});
    platform::CutForFill(*circle.native, kBox, fill.native);
    platform::CutForStroke(*circle.native, kBox, stroke.native);
    EXPECT_LT(fill.native->verbs.Count(), 400U) << size;
    EXPECT_LT(stroke.native->verbs.Count(), 400U) << size;
    // It touches x = 0 at its rightmost point, and is as good as straight there.
    EXPECT_EQ(WindingOf(ChordsOf(fill.native, true), {-1, 5}), 1) << size;
    EXPECT_EQ(WindingOf(ChordsOf(fill.native, true), {1, 5}), 0) << size;
    EXPECT_NEAR(DistanceTo(ChordsOf(stroke.native, false), {0, 0}), 0, 0.1) << size;
  }
}

}  // namespace
