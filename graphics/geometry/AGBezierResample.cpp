#include <algorithm>
#include <cmath>

#include "graphics/geometry/AGBezier.h"

namespace {

constexpr unsigned int kMaxRegularCount = 1024;
constexpr int kMaxDepth = 8;
constexpr double kCollinear = 1e-30;

double Cross(const AGPoint& a, const AGPoint& b) { return a.x * b.y - a.y * b.x; }
double Square(const AGPoint& v) { return v.x * v.x + v.y * v.y; }
AGPoint Middle(const AGPoint& a, const AGPoint& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

// The square of the allowed deviation.
double Tolerance2(double precision) {
  const double clamped = precision > 0.25 ? std::min(precision, 16.0) : 0.25;
  return 0.25 / (clamped * clamped);
}

template <typename Curve>
void AppendRegular(AGPointArray* points, unsigned int count, bool includeFirst, Curve curve) {
  count = std::min(count, kMaxRegularCount);
  if (count < 2) return;
  const unsigned int intervals = count - 1;
  points->Reserve(points->Count() + count);
  for (unsigned int i = includeFirst ? 0 : 1; i <= intervals; ++i) points->Append(curve(double(i) / intervals));
}

void AppendFlatQuad(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, double tolerance2,
                    int depth) {
  if (depth > kMaxDepth) return;
  const AGPoint m01 = Middle(p0, p1), m12 = Middle(p1, p2), middle = Middle(m01, m12);
  const AGPoint chord = p2 - p0;
  const double k = Cross(p1 - p2, chord);
  const bool flat =
      std::fabs(k) > kCollinear ? k * k <= tolerance2 * Square(chord) : Square(middle - Middle(p0, p2)) <= tolerance2;
  if (flat) {
    points->Append(middle);
    return;
  }
  AppendFlatQuad(points, p0, m01, middle, tolerance2, depth + 1);
  AppendFlatQuad(points, middle, m12, p2, tolerance2, depth + 1);
}

bool IsFlatCubic(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3, const AGPoint& middle,
                 double tolerance2) {
  const AGPoint chord = p3 - p0;
  const double d1 = std::fabs(Cross(p1 - p3, chord)), d2 = std::fabs(Cross(p2 - p3, chord));
  const double deviation = (d1 > kCollinear ? d1 : 0) + (d2 > kCollinear ? d2 : 0);
  if (deviation > 0) return deviation * deviation <= tolerance2 * Square(chord);
  return Square(middle - Middle(p0, p3)) <= tolerance2;
}

void AppendFlatCubic(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3,
                     double tolerance2, int depth) {
  if (depth > kMaxDepth) return;
  const AGPoint m01 = Middle(p0, p1), m12 = Middle(p1, p2), m23 = Middle(p2, p3);
  const AGPoint m012 = Middle(m01, m12), m123 = Middle(m12, m23), middle = Middle(m012, m123);
  // An S-shaped curve may have its middle on its chord: the whole curve is never judged flat.
  if (depth > 0 && IsFlatCubic(p0, p1, p2, p3, middle, tolerance2)) {
    points->Append(middle);
    return;
  }
  AppendFlatCubic(points, p0, m01, m012, middle, tolerance2, depth + 1);
  AppendFlatCubic(points, middle, m123, m23, p3, tolerance2, depth + 1);
}

// How a quality level resamples: with a regular count, or with a precision where the count is 0.
struct Quality {
  unsigned int count;
  double precision;
};

Quality QualityOf(unsigned int quality) {
  constexpr Quality kLevels[] = {{0, 2}, {5, 0}, {9, 0}, {17, 0}, {0, 1}, {0, 2}, {0, 4}};
  return kLevels[quality <= 6 ? quality : 0];
}

}  // namespace

void AGBezierQuadAppendResampledRegular(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                        unsigned int count, bool includeFirst) {
  AppendRegular(points, count, includeFirst, [&](double t) { return AGBezierQuadGetPoint(p0, p1, p2, t); });
}

void AGBezierCubicAppendResampledRegular(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                         const AGPoint& p3, unsigned int count, bool includeFirst) {
  AppendRegular(points, count, includeFirst, [&](double t) { return AGBezierCubicGetPoint(p0, p1, p2, p3, t); });
}

void AGBezierQuadAppendResampledAdaptive(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                         double precision, bool includeFirst) {
  if (includeFirst) points->Append(p0);
  AppendFlatQuad(points, p0, p1, p2, Tolerance2(precision), 0);
  points->Append(p2);
}

void AGBezierCubicAppendResampledAdaptive(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                          const AGPoint& p3, double precision, bool includeFirst) {
  if (includeFirst) points->Append(p0);
  AppendFlatCubic(points, p0, p1, p2, p3, Tolerance2(precision), 0);
  points->Append(p3);
}

void AGBezierQuadAppendResampled(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                 unsigned int quality, bool includeFirst) {
  const Quality level = QualityOf(quality);
  if (level.count != 0) {
    AGBezierQuadAppendResampledRegular(points, p0, p1, p2, level.count, includeFirst);
  } else {
    AGBezierQuadAppendResampledAdaptive(points, p0, p1, p2, level.precision, includeFirst);
  }
}

void AGBezierCubicAppendResampled(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                  const AGPoint& p3, unsigned int quality, bool includeFirst) {
  const Quality level = QualityOf(quality);
  if (level.count != 0) {
    AGBezierCubicAppendResampledRegular(points, p0, p1, p2, p3, level.count, includeFirst);
  } else {
    AGBezierCubicAppendResampledAdaptive(points, p0, p1, p2, p3, level.precision, includeFirst);
  }
}

AGPointArray AGBezierQuadGetResampledRegular(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                             unsigned int count, bool includeFirst) {
  AGPointArray points;
  AGBezierQuadAppendResampledRegular(&points, p0, p1, p2, count, includeFirst);
  return points;
}

AGPointArray AGBezierCubicGetResampledRegular(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                              const AGPoint& p3, unsigned int count, bool includeFirst) {
  AGPointArray points;
  AGBezierCubicAppendResampledRegular(&points, p0, p1, p2, p3, count, includeFirst);
  return points;
}

AGPointArray AGBezierQuadGetResampledAdaptive(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, double precision,
                                              bool includeFirst) {
  AGPointArray points;
  AGBezierQuadAppendResampledAdaptive(&points, p0, p1, p2, precision, includeFirst);
  return points;
}

AGPointArray AGBezierCubicGetResampledAdaptive(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                               const AGPoint& p3, double precision, bool includeFirst) {
  AGPointArray points;
  AGBezierCubicAppendResampledAdaptive(&points, p0, p1, p2, p3, precision, includeFirst);
  return points;
}

AGPointArray AGBezierQuadGetResampled(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, unsigned int quality,
                                      bool includeFirst) {
  AGPointArray points;
  AGBezierQuadAppendResampled(&points, p0, p1, p2, quality, includeFirst);
  return points;
}

AGPointArray AGBezierCubicGetResampled(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3,
                                       unsigned int quality, bool includeFirst) {
  AGPointArray points;
  AGBezierCubicAppendResampled(&points, p0, p1, p2, p3, quality, includeFirst);
  return points;
}
