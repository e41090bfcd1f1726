// Curves as lines.
//
// A curve is cut into equal steps of its parameter, as many as keep each line within a tolerance: for a cubic
// sqrt(3/4 L / tolerance), for a quadratic curve sqrt(1/4 L / tolerance), L being the largest second difference of its
// control points (the bound of Wang, 1984, as in R. Goldman's "Pyramid Algorithms"). A long curve is halved instead,
// and a half that leaves no trace is one line.
#pragma once

#include <cmath>

#include "platform/raster/Path.h"

namespace raster {

/// How far a line may be from its curve, in pixels.
inline constexpr double kFlatness = 0.08;
/// More steps at once than this, and a curve is halved.
inline constexpr int kMaxSteps = 64;
inline constexpr int kMaxHalvings = 48;

struct Cubic {
  Point p[4];
};

inline Extent ExtentOf(const Cubic& c) {
  Extent e;
  for (const Point& p : c.p) {
    e.x0 = p.x < e.x0 ? p.x : e.x0;
    e.x1 = p.x > e.x1 ? p.x : e.x1;
    e.y0 = p.y < e.y0 ? p.y : e.y0;
    e.y1 = p.y > e.y1 ? p.y : e.y1;
  }
  return e;
}

/// The cubic of the same shape has its controls two thirds of the way to the quadratic's.
inline Cubic CubicOf(Point start, Point control, Point end) {
  return {{start, start + (2.0 / 3) * (control - start), end + (2.0 / 3) * (control - end), end}};
}

inline int StepsOf(const Cubic& c, double tolerance) {
  const Point d = c.p[0] - 2 * c.p[1] + c.p[2];
  const Point e = c.p[1] - 2 * c.p[2] + c.p[3];
  const double largest = std::sqrt(std::fmax(Dot(d, d), Dot(e, e)));
  const double steps = std::sqrt(0.75 * largest / tolerance);
  return steps < kMaxSteps ? static_cast<int>(steps) + 1 : kMaxSteps + 1;
}

/// Calls `line` with the end of each line; the first begins at the curve's start. `isHidden` tells of an extent whether
/// what lies in it may become one line.
template <typename IsHidden, typename Line>
void Flatten(const Cubic& c, double tolerance, const IsHidden& isHidden, Line&& line, int halvings = 0) {
  const int steps = StepsOf(c, tolerance);
  if (steps > kMaxSteps && halvings < kMaxHalvings) {
    if (!isHidden(ExtentOf(c))) {
      const Point ab = 0.5 * (c.p[0] + c.p[1]);
      const Point bc = 0.5 * (c.p[1] + c.p[2]);
      const Point cd = 0.5 * (c.p[2] + c.p[3]);
      const Point abc = 0.5 * (ab + bc);
      const Point bcd = 0.5 * (bc + cd);
      const Point middle = 0.5 * (abc + bcd);
      Flatten({{c.p[0], ab, abc, middle}}, tolerance, isHidden, line, halvings + 1);
      Flatten({{middle, bcd, cd, c.p[3]}}, tolerance, isHidden, line, halvings + 1);
      return;
    }
  } else {
    const Point b = 3 * (c.p[1] - c.p[0]);
    const Point d = 3 * (c.p[2] - c.p[1]) - b;
    const Point a = c.p[3] - c.p[0] - b - d;
    const double step = 1.0 / steps;
    for (int i = 1; i < steps; ++i) {
      const double t = i * step;
      line(Point{((a.x * t + d.x) * t + b.x) * t + c.p[0].x, ((a.y * t + d.y) * t + b.y) * t + c.p[0].y});
    }
  }
  line(c.p[3]);
}

}  // namespace raster
