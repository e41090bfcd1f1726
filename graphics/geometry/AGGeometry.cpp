#include "graphics/geometry/AGGeometry.h"

#include <algorithm>
#include <cmath>

namespace AGGeometry {
namespace {

double Cross(const AGPoint& a, const AGPoint& b) { return a.x * b.y - a.y * b.x; }
double Dot(const AGPoint& a, const AGPoint& b) { return a.x * b.x + a.y * b.y; }

}  // namespace

double GetDistanceToSegment2(const AGPoint& p, const AGPoint& a, const AGPoint& b) {
  const AGPoint d = b - a;
  const AGPoint fromA = p - a;
  if (Dot(fromA, d) < 0) return Dot(fromA, fromA);
  const AGPoint toB = b - p;
  if (Dot(toB, d) < 0) return Dot(toB, toB);
  const double cross = Cross(fromA, d);
  return cross * cross / Dot(d, d);
}

double GetDistanceToSegment(const AGPoint& p, const AGPoint& a, const AGPoint& b) {
  return std::sqrt(GetDistanceToSegment2(p, a, b));
}

bool GetIntersectionOfSegments(const AGPoint& a1, const AGPoint& a2, const AGPoint& b1, const AGPoint& b2,
                               AGPoint* out) {
  const AGPoint r = a2 - a1;
  const AGPoint s = b2 - b1;
  const double denominator = Cross(r, s);
  if (denominator != 0) {
    const AGPoint offset = b1 - a1;
    const double u = Cross(offset, s) / denominator;
    const double v = Cross(offset, r) / denominator;
    if (u >= 0 && u <= 1 && v >= 0 && v <= 1) {
      if (out) *out = a1 + r * u;
      return true;
    }
  }
  if (out) *out = kAGNullPoint;
  return false;
}

void ApplyTransformToPoints(AGPoint* points, unsigned int count, const AGAffineTransform& t) {
  if (points == nullptr) return;
  for (unsigned int i = 0; i < count; ++i) points[i] = t.Apply(points[i]);
}

void ApplyTransformToPoints(AGPointArray* points, const AGAffineTransform& t) {
  ApplyTransformToPoints(points->Data(), points->Count(), t);
}

void ApplyTransformToRects(AGRect* rects, unsigned int count, const AGAffineTransform& t) {
  if (rects == nullptr) return;
  for (unsigned int i = 0; i < count; ++i) {
    const AGPoint first = t.Apply({rects[i].x0, rects[i].y0});
    const AGPoint second = t.Apply({rects[i].x1, rects[i].y1});
    rects[i] = {first.x, first.y, second.x, second.y};
  }
}

void ApplyTransformToRects(AGRectArray* rects, const AGAffineTransform& t) {
  ApplyTransformToRects(rects->Data(), rects->Count(), t);
}

AGRect GetBoundingBox(const AGPoint* points, unsigned int count) {
  if (points == nullptr || count == 0) return kAGNullRect;
  AGRect box = {points[0].x, points[0].y, points[0].x, points[0].y};
  for (unsigned int i = 1; i < count; ++i) {
    box.x0 = std::min(box.x0, points[i].x);
    box.y0 = std::min(box.y0, points[i].y);
    box.x1 = std::max(box.x1, points[i].x);
    box.y1 = std::max(box.y1, points[i].y);
  }
  return box;
}

AGRect GetBoundingBox(const AGPointArray& points) { return GetBoundingBox(points.Data(), points.Count()); }

AGRect GetBoundingBox(const AGRect* rects, unsigned int count) {
  if (rects == nullptr || count == 0) return kAGNullRect;
  AGRect box = rects[0];
  for (unsigned int i = 1; i < count; ++i) {
    box.x0 = std::min(box.x0, rects[i].x0);
    box.y0 = std::min(box.y0, rects[i].y0);
    box.x1 = std::max(box.x1, rects[i].x1);
    box.y1 = std::max(box.y1, rects[i].y1);
  }
  return box;
}

AGRect GetBoundingBox(const AGRectArray& rects) { return GetBoundingBox(rects.Data(), rects.Count()); }

bool ResamplePoints(AGPoint* points, unsigned int* count, double tolerance, const AGAffineTransform* t) {
  constexpr double kSquareOfCircle = 0.707;  // half the side of the square that stands for the circle of the tolerance
  if (points == nullptr || count == nullptr || *count < 3) return false;
  const AGAffineTransform map = t ? *t : kAGAffineTransformIdentity;
  const double limit = kSquareOfCircle * tolerance;
  const AGPoint last = points[*count - 1];
  unsigned int kept = 1;
  bool keepsLast = false;
  for (unsigned int i = 1; i < *count; ++i) {
    const AGPoint offset = map.ApplyLinear(points[i] - points[kept - 1]);
    keepsLast = std::fabs(offset.x) > limit || std::fabs(offset.y) > limit;
    if (keepsLast) points[kept++] = points[i];
  }
  if (!keepsLast) points[kept++] = last;
  const bool removed = kept != *count;
  *count = kept;
  return removed;
}

bool ResamplePoints(AGPointArray* points, double tolerance, const AGAffineTransform* t) {
  unsigned int count = points->Count();
  if (!ResamplePoints(points->Data(), &count, tolerance, t)) return false;
  points->Resize(count);
  return true;
}

void GetRectTrapezoid(AGPoint* out4, const AGRect& rect) {
  if (out4 == nullptr) return;
  out4[0] = {rect.x0, rect.y0};
  out4[1] = {rect.x1, rect.y0};
  out4[2] = {rect.x1, rect.y1};
  out4[3] = {rect.x0, rect.y1};
}

void GetRectTrapezoid(AGPointArray* points, const AGRect& rect) {
  points->Resize(4);
  GetRectTrapezoid(points->Data(), rect);
}

void GetRectTrapezoids(AGPointArray* points, const AGRectArray& rects) {
  points->Resize(4 * rects.Count());
  for (unsigned int i = 0; i < rects.Count(); ++i) GetRectTrapezoid(points->Data() + 4 * i, rects[i]);
}

void GenerateRegularPolygon(AGPoint* points, unsigned int n, const AGPoint& center, double radius, double startAngle) {
  if (points == nullptr || n == 0) return;
  const double step = k2Pi / n;
  double angle = startAngle;
  for (unsigned int i = 0; i < n; ++i, angle += step) {
    points[i] = {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
  }
}

void GenerateRegularPolygon(AGPointArray* points, unsigned int n, const AGPoint& center, double radius,
                            double startAngle) {
  points->Resize(n);
  GenerateRegularPolygon(points->Data(), n, center, radius, startAngle);
}

AGAffineTransform GetPlacementAFT(const AGRect& src, const AGRect& dst, AGPlacement placement) {
  if (!(src.Width() > 0) || !(src.Height() > 0)) return kAGAffineTransformIdentity;
  AGAffineTransform map = AGAffineTransformTranslation(-src.x0, -src.y0);
  const auto then = [&map](const AGAffineTransform& next) { map = AGAffineTransformConcat(map, next); };

  double width = src.Width(), height = src.Height();
  const double shrink = std::min(dst.Width() / width, dst.Height() / height);
  if (shrink < 1) {
    then(AGAffineTransformScaling(shrink, shrink));
    width *= shrink;
    height *= shrink;
  }
  const double freeWidth = dst.Width() - width, freeHeight = dst.Height() - height;
  if (placement & kAGPlacementHStretch) {
    if (width != 0) then(AGAffineTransformScaling(dst.Width() / width, 1));
  } else if (placement & kAGPlacementRight) {
    then(AGAffineTransformTranslation(freeWidth, 0));
  } else if (placement & kAGPlacementHCenter) {
    then(AGAffineTransformTranslation(freeWidth * 0.5, 0));
  }
  if (placement & kAGPlacementVStretch) {
    if (height != 0) then(AGAffineTransformScaling(1, dst.Height() / height));
  } else if (placement & kAGPlacementBottom) {
    then(AGAffineTransformTranslation(0, freeHeight));
  } else if (placement & kAGPlacementVCenter) {
    then(AGAffineTransformTranslation(0, freeHeight * 0.5));
  }
  then(AGAffineTransformTranslation(dst.x0, dst.y0));
  return map;
}

}  // namespace AGGeometry
