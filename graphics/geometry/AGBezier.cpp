#include "graphics/geometry/AGBezier.h"

#include <algorithm>
#include <cmath>

namespace {

// A root inside (0, 1), or a NaN that no comparison takes.
struct Roots {
  double t[2];
  int count = 0;

  void Add(double root) {
    if (root > 0 && root < 1) t[count++] = root;
  }
};

// The roots of a·t² + b·t + c. The larger one is found first and the other through their product c/a: the textbook
// difference of nearly equal numbers would lose the digits of the smaller one.
Roots QuadraticRoots(double a, double b, double c) {
  Roots roots;
  if (a == 0) {
    if (b != 0) roots.Add(-c / b);
    return roots;
  }
  const double scale = std::max({std::fabs(a), std::fabs(b), std::fabs(c)});  // keeps the squares in range
  a /= scale;
  b /= scale;
  c /= scale;
  const double discriminant = b * b - 4 * a * c;
  if (!(discriminant >= 0)) return roots;
  const double sum = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  roots.Add(sum / a);
  roots.Add(c / sum);
  return roots;
}

void Widen(const AGPoint& p, AGPoint* min, AGPoint* max) {
  min->x = std::min(min->x, p.x);
  min->y = std::min(min->y, p.y);
  max->x = std::max(max->x, p.x);
  max->y = std::max(max->y, p.y);
}

bool IsBetween(double value, double low, double high) { return value >= low && value <= high; }

}  // namespace

AGPoint AGBezierQuadGetPoint(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, double t) {
  const double s = 1 - t;
  const double w0 = s * s, w1 = 2 * t * s, w2 = t * t;
  return {w0 * p0.x + w1 * p1.x + w2 * p2.x, w0 * p0.y + w1 * p1.y + w2 * p2.y};
}

AGPoint AGBezierCubicGetPoint(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3, double t) {
  const double s = 1 - t;
  const double w0 = s * s * s, w1 = 3 * t * s * s, w2 = 3 * t * t * s, w3 = t * t * t;
  return {w0 * p0.x + w1 * p1.x + w2 * p2.x + w3 * p3.x, w0 * p0.y + w1 * p1.y + w2 * p2.y + w3 * p3.y};
}

void AGBezierQuadGetMinimax(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, AGPoint* min, AGPoint* max) {
  AGPoint low = p0, high = p0;
  Widen(p2, &low, &high);
  const auto widenAtRoot = [&](double v0, double v1, double v2) {
    const double denominator = v0 - 2 * v1 + v2;
    if (denominator == 0) return;
    const double t = (v0 - v1) / denominator;
    if (t > 0 && t < 1) Widen(AGBezierQuadGetPoint(p0, p1, p2, t), &low, &high);
  };
  widenAtRoot(p0.x, p1.x, p2.x);
  widenAtRoot(p0.y, p1.y, p2.y);
  if (min) *min = low;
  if (max) *max = high;
}

void AGBezierCubicGetMinimax(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3, AGPoint* min,
                             AGPoint* max) {
  AGPoint low = p0, high = p0;
  Widen(p3, &low, &high);
  const auto widenAtRoots = [&](double v0, double v1, double v2, double v3) {
    const Roots roots = QuadraticRoots(3 * v1 - v0 - 3 * v2 + v3, 2 * (v0 - 2 * v1 + v2), v1 - v0);
    for (int i = 0; i < roots.count; ++i) Widen(AGBezierCubicGetPoint(p0, p1, p2, p3, roots.t[i]), &low, &high);
  };
  // A curve leaves the range of its ends on an axis only where a control point does.
  const double x0 = low.x, x1 = high.x, y0 = low.y, y1 = high.y;
  if (!IsBetween(p1.x, x0, x1) || !IsBetween(p2.x, x0, x1)) widenAtRoots(p0.x, p1.x, p2.x, p3.x);
  if (!IsBetween(p1.y, y0, y1) || !IsBetween(p2.y, y0, y1)) widenAtRoots(p0.y, p1.y, p2.y, p3.y);
  if (min) *min = low;
  if (max) *max = high;
}
