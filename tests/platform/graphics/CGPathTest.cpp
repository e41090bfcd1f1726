// The round shapes of native paths, measured against the circles that they stand for.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "CoreGraphics/CGPath.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

struct Element {
  CGPathElementType type;
  std::vector<CGPoint> points;
};

class Path {
 public:
  ~Path() { CGPathRelease(native); }

  std::vector<Element> Elements() const {
    std::vector<Element> elements;
    CGPathApply(native, &elements, [](void* info, const CGPathElement* e) {
      const int counts[] = {1, 1, 2, 3, 0};
      std::vector<CGPoint> points(e->points, e->points + counts[e->type]);
      static_cast<std::vector<Element>*>(info)->push_back({e->type, points});
    });
    return elements;
  }
  std::string Verbs() const {
    std::string verbs;
    for (const Element& e : Elements()) verbs += "mlqcz"[e.type];
    return verbs;
  }

  CGMutablePathRef native = CGPathCreateMutable();
};

// The largest distance of the cubic pieces from a circle, and the angle that they go around it, signed.
struct Fit {
  double deviation = 0;
  double sweep = 0;
};

Fit FitToCircle(const std::vector<Element>& elements, CGPoint center, double radius) {
  Fit fit;
  CGPoint current = {0, 0};
  for (const Element& e : elements) {
    if (e.type == kCGPathElementAddCurveToPoint) {
      double angle = std::atan2(current.y - center.y, current.x - center.x);
      for (int k = 1; k <= 200; ++k) {
        const double t = k / 200.0, s = 1 - t;
        const double w[] = {s * s * s, 3 * t * s * s, 3 * t * t * s, t * t * t};
        const double x = w[0] * current.x + w[1] * e.points[0].x + w[2] * e.points[1].x + w[3] * e.points[2].x;
        const double y = w[0] * current.y + w[1] * e.points[0].y + w[2] * e.points[1].y + w[3] * e.points[2].y;
        fit.deviation = std::max(fit.deviation, std::fabs(std::hypot(x - center.x, y - center.y) - radius));
        const double next = std::atan2(y - center.y, x - center.x);
        fit.sweep += std::remainder(next - angle, 2 * kPi);
        angle = next;
      }
    }
    if (!e.points.empty()) current = e.points.back();
  }
  return fit;
}

TEST(CGPathAddArc, AnglesAndDirections_SweepAsAskedOnTheCircle) {
  const struct {
    double start, end;
    bool clockwise;
    double sweep;
  } cases[] = {
      {0, kPi / 2, false, kPi / 2},
      {0, kPi / 2, true, -1.5 * kPi},
      {1, 0.5, false, 2 * kPi - 0.5},
      {1, 0.5, true, -0.5},
      {0, 2 * kPi, false, 2 * kPi},
      {0, -2 * kPi, true, -2 * kPi},
      {0, 2 * kPi, true, 0},
      {0, -2 * kPi, false, 0},  // against the direction: taken back
      {1, 1 + 6 * kPi, true, 0},
      {2, 2, false, 0},
      {0, 5 * kPi, false, 5 * kPi},
      {0, -5 * kPi, true, -5 * kPi},
      {0, 1 + 20 * kPi, false, 1 + 4 * kPi},  // pairs of turns beyond the second
      {0, 1 + 22 * kPi, false, 1 + 2 * kPi},
  };
  for (const auto& c : cases) {
    Path path;
    CGPathAddArc(path.native, nullptr, 3, -2, 10, c.start, c.end, c.clockwise);
    const std::vector<Element> elements = path.Elements();
    const Fit fit = FitToCircle(elements, {3, -2}, 10);
    EXPECT_NEAR(fit.sweep, c.sweep, 1e-9) << c.start << " to " << c.end;
    EXPECT_LT(fit.deviation, 2.8e-4 * 10);
    ASSERT_FALSE(elements.empty());
    EXPECT_NEAR(elements.back().points.back().x, 3 + 10 * std::cos(c.end), 1e-12);
    EXPECT_NEAR(elements.back().points.back().y, -2 + 10 * std::sin(c.end), 1e-12);
  }
}

TEST(CGPathAddRect, MirroredEitherWay_StartsAtItsLeastCornerAndTurnsTheSameWay) {
  for (const CGRect& rect :
       {CGRect{{1, 2}, {4, 6}}, CGRect{{5, 2}, {-4, 6}}, CGRect{{1, 8}, {4, -6}}, CGRect{{5, 8}, {-4, -6}}}) {
    Path path;
    CGPathAddRect(path.native, nullptr, rect);
    std::string outline = path.Verbs();
    for (const Element& e : path.Elements()) {
      for (const CGPoint& p : e.points) outline += " " + std::to_string(int(p.x)) + "," + std::to_string(int(p.y));
    }
    EXPECT_EQ(outline, "mlllz 1,2 5,2 5,8 1,8");
  }
}

TEST(CGPathAddArc, UnusualAngles_AddAFewPiecesOrNothing) {
  for (const double end : {1e300, -1e300, 1e17, double{INFINITY}, std::nan("")}) {
    Path path;
    CGPathAddArc(path.native, nullptr, 0, 0, 1, 0, end, end < 0);
    EXPECT_LE(path.Elements().size(), 14u);
    EXPECT_EQ(path.Elements().empty(), !std::isfinite(end));
  }
}

TEST(CGPathAddArcToPoint, CornersOfEveryAngle_TouchBothLinesAndTheCircle) {
  for (int degrees = 1; degrees < 360; ++degrees) {
    if (degrees == 180) continue;
    const double turn = degrees * kPi / 180;  // from the line back to the line ahead
    const CGPoint end = {10 * std::cos(turn), 10 * std::sin(turn)};
    // The map must not change the circle's place in its own space.
    const CGAffineTransform map = {2, 1, -1, 3, 7, 8},
                            inverse = {3 / 7.0, -1 / 7.0, 1 / 7.0, 2 / 7.0, -29 / 7.0, -9 / 7.0};
    for (const CGAffineTransform* m : {static_cast<const CGAffineTransform*>(nullptr), &map}) {
      Path path, plain;
      CGPathMoveToPoint(path.native, m, 10, 0);
      CGPathAddArcToPoint(path.native, m, 0, 0, end.x, end.y, 2);
      CGPathAddPath(plain.native, m ? &inverse : nullptr, path.native);
      const std::vector<Element> elements = plain.Elements();
      const double half = std::remainder(turn, 2 * kPi) / 2, reach = 2 / std::sin(std::fabs(half));
      const CGPoint center = {reach * std::cos(half), reach * std::sin(half)};
      const Fit fit = FitToCircle(elements, center, 2);
      EXPECT_LT(fit.deviation, 2.8e-4 * 2 + 1e-12 * reach) << degrees;
      EXPECT_NEAR(std::fabs(fit.sweep), kPi - 2 * std::fabs(half), 1e-6) << degrees;
      ASSERT_GE(elements.size(), 3u);
      EXPECT_EQ(elements[1].type, kCGPathElementAddLineToPoint);
      EXPECT_NEAR(elements[1].points[0].x, reach * std::cos(half), 1e-9 * reach);  // the foot of the centre
      EXPECT_NEAR(elements[1].points[0].y, 0, 1e-9 * reach);
    }
  }
}

TEST(CGPathAddArcToPoint, NoCircleFits_IsALineToTheCorner) {
  const CGAffineTransform flat = {1, 2, 2, 4, 0, 0};
  const struct {
    CGPoint corner, end;
    double radius;
    const CGAffineTransform* m;
  } cases[] = {{{1, 1}, {5, 5}, 1, nullptr}, {{4, 0}, {4, 9}, 0, nullptr},       {{4, 0}, {4, 9}, -1, nullptr},
               {{4, 0}, {4, 0}, 1, nullptr}, {{5, 0}, {2, 0}, 1, nullptr},       {{0, 0}, {4, 9}, 1, nullptr},
               {{4, 0}, {4, 9}, 1, &flat},   {{4, 0}, {4, 9}, INFINITY, nullptr}};
  for (const auto& c : cases) {
    Path path;
    CGPathMoveToPoint(path.native, nullptr, 0, 0);
    CGPathAddArcToPoint(path.native, c.m, c.corner.x, c.corner.y, c.end.x, c.end.y, c.radius);
    EXPECT_EQ(path.Verbs(), "ml");
    const CGPoint at = c.m ? CGPointApplyAffineTransform(c.corner, *c.m) : c.corner;
    EXPECT_EQ(path.Elements().back().points[0].x, at.x);
    EXPECT_EQ(path.Elements().back().points[0].y, at.y);
  }
}

TEST(CGPathAddPath, GrowingIntoItself_ManyTimes_RepeatsEveryElement) {
  Path path;
  CGPathAddEllipseInRect(path.native, nullptr, {{0, 0}, {8, 4}});
  for (int i = 0; i < 8; ++i) {
    const CGAffineTransform by = {1, 0, 0, 1, 8.0 * (1 << i), 0};
    CGPathAddPath(path.native, &by, path.native);
  }
  const std::vector<Element> elements = path.Elements();
  ASSERT_EQ(elements.size(), 6u * 256);
  for (std::size_t i = 6; i < elements.size(); ++i) {
    for (std::size_t k = 0; k < elements[i].points.size(); ++k) {
      EXPECT_NEAR(elements[i].points[k].x, elements[i - 6].points[k].x + 8, 1e-9);
    }
  }
}

}  // namespace
