#include <algorithm>
#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "graphics/native/AGMacOS.h"
#include "graphics/paths/AGPath.h"

using AGMacOS::CGPointConvert;
using AGMacOS::CGRectConvert;

namespace {

AGRect Normalized(const AGRect& rect, bool normalize) {
  AGRect result = rect;
  if (normalize) result.Normalize();
  return result;
}

// The control point of the spline beside point i: ahead of it for a positive tension, behind it for a negative one.
AGPoint _LowComputeCardinalControlPoint(const AGPoint* points, unsigned int count, unsigned int i, double tension,
                                        bool closed) {
  const unsigned int last = count - 1;
  const unsigned int previous = i > 0 ? i - 1 : closed ? last : 0;
  const unsigned int next = i < last ? i + 1 : closed ? 0 : i;
  return points[i] + (points[next] - points[previous]) * (tension / 3);
}

}  // namespace

AGPoint AGPath::BeginAdding(const AGPoint& p) {
  UpdateOrigin(p);
  Changed();
  return -origin_;
}

void AGPath::MoveOrLineTo(const AGPoint& p, const AGPoint& offset) {
  const CGPoint native = CGPointConvert(p, offset);
  if (CGPathIsEmpty(native_)) {
    CGPathMoveToPoint(native_, nullptr, native.x, native.y);
  } else {
    CGPathAddLineToPoint(native_, nullptr, native.x, native.y);
  }
}

void AGPath::StartSubPath(const AGPoint& p) {
  const CGPoint to = CGPointConvert(p, BeginAdding(p));
  CGPathMoveToPoint(native_, nullptr, to.x, to.y);
}

void AGPath::AddLine(const AGPoint& p) {
  const CGPoint to = CGPointConvert(p, BeginAdding(p));
  CGPathAddLineToPoint(native_, nullptr, to.x, to.y);
}

void AGPath::AddSegment(const AGPoint& p1, const AGPoint& p2) {
  StartSubPath(p1);
  AddLine(p2);
}

void AGPath::AddQuadBezier(const AGPoint& c, const AGPoint& p) {
  const AGPoint offset = BeginAdding(c);
  const CGPoint control = CGPointConvert(c, offset), to = CGPointConvert(p, offset);
  CGPathAddQuadCurveToPoint(native_, nullptr, control.x, control.y, to.x, to.y);
}

void AGPath::AddCubicBezier(const AGPoint& c1, const AGPoint& c2, const AGPoint& p) {
  const AGPoint offset = BeginAdding(c1);
  const CGPoint control1 = CGPointConvert(c1, offset), control2 = CGPointConvert(c2, offset);
  const CGPoint to = CGPointConvert(p, offset);
  CGPathAddCurveToPoint(native_, nullptr, control1.x, control1.y, control2.x, control2.y, to.x, to.y);
}

void AGPath::AddArc(const AGPoint& p1, const AGPoint& p2, double radius) {
  const AGPoint offset = BeginAdding(p1);
  const CGPoint corner = CGPointConvert(p1, offset), towards = CGPointConvert(p2, offset);
  CGPathAddArcToPoint(native_, nullptr, corner.x, corner.y, towards.x, towards.y, radius);
}

void AGPath::AddArc(const AGPoint& center, const AGSize& radii, double startAngle, double sweepAngle) {
  const AGPoint start = {center.x + radii.width * std::cos(startAngle), center.y + radii.height * std::sin(startAngle)};
  const CGPoint middle = CGPointConvert(center, BeginAdding(start));
  const double endAngle = startAngle + sweepAngle;
  const bool clockwise = sweepAngle < 0;
  if (radii.width == radii.height) {
    CGPathAddArc(native_, nullptr, middle.x, middle.y, radii.width, startAngle, endAngle, clockwise);
    return;
  }
  CGAffineTransform stretch = {1, 0, 0, radii.height / radii.width, middle.x, middle.y};
  double radius = radii.width;
  if (radius == 0) {  // flat: only the other radius can be divided by
    stretch.a = 0;
    stretch.d = 1;
    radius = radii.height;
  }
  CGPathAddArc(native_, &stretch, 0, 0, radius, startAngle, endAngle, clockwise);
}

void AGPath::AddArc(const AGPoint& center, double radius, double startAngle, double sweepAngle) {
  AddArc(center, AGSize{radius, radius}, startAngle, sweepAngle);
}

void AGPath::AddArc(const AGRect& rect, double startAngle, double sweepAngle) {
  AddArc(rect.Center(), AGSize{(rect.x1 - rect.x0) / 2, (rect.y1 - rect.y0) / 2}, startAngle, sweepAngle);
}

void AGPath::AddLines(const AGPoint* points, unsigned int count, bool close) {
  if (points == nullptr || count < 2) return;
  const AGPoint offset = BeginAdding(points[0]);
  ATNumberArray<CGPoint, CGFloat, 0> converted(count);
  for (unsigned int i = 0; i < count; ++i) converted[i] = CGPointConvert(points[i], offset);
  MoveOrLineTo(points[0], offset);
  CGPathAddLines(native_, nullptr, converted.Data(), count);
  if (close) CGPathCloseSubpath(native_);
}

void AGPath::AddQuadBeziers(const AGPoint* points, unsigned int count, bool close) {
  if (points == nullptr || count < 3) return;
  MoveOrLineTo(points[0], BeginAdding(points[0]));
  for (unsigned int i = 1; count - i >= 2; i += 2) AddQuadBezier(points[i], points[i + 1]);
  if (close) CGPathCloseSubpath(native_);
}

void AGPath::AddCubicBeziers(const AGPoint* points, unsigned int count, bool close) {
  if (points == nullptr || count < 4) return;
  MoveOrLineTo(points[0], BeginAdding(points[0]));
  for (unsigned int i = 1; count - i >= 3; i += 3) AddCubicBezier(points[i], points[i + 1], points[i + 2]);
  if (close) CGPathCloseSubpath(native_);
}

void AGPath::AddSplineCurves(const AGPoint* points, unsigned int count, double tension, bool close) {
  if (!(tension > 0.05)) {
    AddLines(points, count, close);
    return;
  }
  if (points == nullptr || count < 2) return;
  MoveOrLineTo(points[0], BeginAdding(points[0]));
  const unsigned int pieces = close ? count : count - 1;
  for (unsigned int i = 0; i < pieces; ++i) {
    const unsigned int to = i + 1 == count ? 0 : i + 1;
    AddCubicBezier(_LowComputeCardinalControlPoint(points, count, i, tension, close),
                   _LowComputeCardinalControlPoint(points, count, to, -tension, close), points[to]);
  }
  if (close) CGPathCloseSubpath(native_);
}

void AGPath::AddRect(const AGRect& rect, bool normalize) {
  const AGRect r = Normalized(rect, normalize);
  CGPathAddRect(native_, nullptr, CGRectConvert(r, BeginAdding({r.x0, r.y0})));
}

void AGPath::AddRects(const AGRect* rects, unsigned int count, bool normalize) {
  if (rects == nullptr) return;
  for (unsigned int i = 0; i < count; ++i) AddRect(rects[i], normalize);
}

void AGPath::AddRoundedRect(const AGRect& rect, double curvature, bool normalize) {
  const AGRect r = Normalized(rect, normalize);
  const AGPoint offset = BeginAdding({r.x0, r.y0});
  if (!(curvature > 0.02)) {
    CGPathAddRect(native_, nullptr, CGRectConvert(r, offset));
    return;
  }
  AppendNativeRoundedRect(r, offset, curvature);
}

// Built where the corners' radius is 1, then mapped to its place.
void AGPath::AppendNativeRoundedRect(const AGRect& rect, const AGPoint& offset, double curvature) {
  const CGRect native = CGRectConvert(rect, offset);
  const double k = std::min(curvature, 1.0) * 0.5;
  const double radius = std::min(native.size.width, native.size.height) * k;
  const double w = native.size.width / radius, h = native.size.height / radius;
  CGMutablePathRef unit = CGPathCreateMutable();
  CGPathMoveToPoint(unit, nullptr, w, h / 2);
  CGPathAddArcToPoint(unit, nullptr, w, h, w / 2, h, 1);
  CGPathAddArcToPoint(unit, nullptr, 0, h, 0, h / 2, 1);
  CGPathAddArcToPoint(unit, nullptr, 0, 0, w / 2, 0, 1);
  CGPathAddArcToPoint(unit, nullptr, w, 0, w, h / 2, 1);
  CGPathCloseSubpath(unit);
  const CGAffineTransform place = {radius, 0, 0, radius, native.origin.x, native.origin.y};
  CGPathAddPath(native_, &place, unit);
  CGPathRelease(unit);
}

void AGPath::AddEllipseInRect(const AGRect& rect, bool normalize) {
  const AGRect r = Normalized(rect, normalize);
  CGPathAddEllipseInRect(native_, nullptr, CGRectConvert(r, BeginAdding({r.x0, r.y0})));
}

void AGPath::AddPath(const AGPath& other) { AppendNative(other, kAGAffineTransformIdentity, other.origin_); }

void AGPath::AddPath(const AGPath& other, const AGAffineTransform& t) {
  AppendNative(other, t, t.Apply(other.origin_));
}

void AGPath::AppendNative(const AGPath& other, const AGAffineTransform& linear, const AGPoint& otherOrigin) {
  if (other.IsEmpty()) return;
  const AGPoint offset = otherOrigin + BeginAdding(otherOrigin);
  const CGAffineTransform map = {linear.a, linear.b, linear.c, linear.d, offset.x, offset.y};
  CGPathAddPath(native_, CGAffineTransformIsIdentity(map) ? nullptr : &map, other.native_);
}

void AGPath::AddLines(const AGPointArray& points, bool close) { AddLines(points.Data(), points.Count(), close); }

void AGPath::AddQuadBeziers(const AGPointArray& points, bool close) {
  AddQuadBeziers(points.Data(), points.Count(), close);
}

void AGPath::AddCubicBeziers(const AGPointArray& points, bool close) {
  AddCubicBeziers(points.Data(), points.Count(), close);
}

void AGPath::AddSplineCurves(const AGPointArray& points, double tension, bool close) {
  AddSplineCurves(points.Data(), points.Count(), tension, close);
}

void AGPath::AddRects(const AGRectArray& rects, bool normalize) { AddRects(rects.Data(), rects.Count(), normalize); }
