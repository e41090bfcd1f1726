#include "CoreGraphics/CGPath.h"

#include <limits>
#include <memory>
#include <utility>

#include "AKPlatform/AKPathCopy.h"
#include "platform/paths/CGPathValue.h"

namespace {

CGPoint Map(const CGAffineTransform* m, CGPoint p) { return m ? CGPointApplyAffineTransform(p, *m) : p; }

// Room for a verb and its points; without memory for both the path stays as it was.
CGPoint* Add(CGPath& path, CGPath::Verb verb) {
  const std::size_t count = CGPath::PointCount(verb);
  path.verbs.Ensure(1);
  CGPoint* points = path.points.Grow(count);
  *path.verbs.Grow(1) = verb;
  path.Changed();
  return points;
}

void MoveTo(CGPath& path, CGPoint p) {
  *Add(path, kCGPathElementMoveToPoint) = p;
  path.start = path.current = p;
}

void LineTo(CGPath& path, CGPoint p) {
  *Add(path, kCGPathElementAddLineToPoint) = p;
  path.current = p;
}

void CurveTo(CGPath& path, CGPoint c1, CGPoint c2, CGPoint p) {
  CGPoint* added = Add(path, kCGPathElementAddCurveToPoint);
  added[0] = c1;
  added[1] = c2;
  added[2] = p;
  path.current = p;
}

CGMutablePathRef Copy(CGPathRef path, const CGAffineTransform* m) {
  auto copy = std::make_unique<CGPath>();
  CGPathAddPath(copy.get(), m, path);
  return copy.release();
}

bool HasCurrentPoint(const CGPath* path) { return path != nullptr && !path->verbs.IsEmpty(); }

}  // namespace

std::uint64_t CGPath::Identity() const {
  static std::atomic<std::uint64_t> last{0};
  std::uint64_t known = identity_.load(std::memory_order_relaxed);
  if (known != 0) return known;
  const std::uint64_t next = last.fetch_add(1, std::memory_order_relaxed) + 1;
  return identity_.compare_exchange_strong(known, next, std::memory_order_relaxed) ? next : known;
}

CGMutablePathRef CGPathCreateMutable(void) { return new CGPath; }

CGMutablePathRef CGPathCreateMutableCopy(CGPathRef path) { return Copy(path, nullptr); }

CGPathRef CGPathCreateCopyByTransformingPath(CGPathRef path, const CGAffineTransform* m) { return Copy(path, m); }

CGPathRef CGPathCreateCopyAndTransform(CGPathRef path, const CGAffineTransform* m) { return Copy(path, m); }

CGPathRef CGPathRetain(CGPathRef path) {
  if (path) path->Retain();
  return path;
}

void CGPathRelease(CGPathRef path) {
  if (path) path->Release();
}

bool CGPathIsEmpty(CGPathRef path) { return !HasCurrentPoint(path); }

CGRect CGPathGetBoundingBox(CGPathRef path) {
  constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();
  CGFloat x0 = kInfinity, y0 = kInfinity, x1 = -kInfinity, y1 = -kInfinity;
  if (path) {
    for (const CGPoint& p : path->points) {  // a NaN loses every comparison
      if (p.x < x0) x0 = p.x;
      if (p.x > x1) x1 = p.x;
      if (p.y < y0) y0 = p.y;
      if (p.y > y1) y1 = p.y;
    }
  }
  if (!(x0 <= x1 && y0 <= y1)) return {{kInfinity, kInfinity}, {0, 0}};
  return {{x0, y0}, {x1 - x0, y1 - y0}};
}

void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function) {
  if (path == nullptr || function == nullptr) return;
  const CGPoint* next = path->points.Data();
  for (const CGPath::Verb verb : path->verbs) {
    CGPoint points[3];  // a copy: a callback may write to what it gets
    const std::size_t count = CGPath::PointCount(verb);
    for (std::size_t i = 0; i < count; ++i) points[i] = next[i];
    const CGPathElement element = {static_cast<CGPathElementType>(verb), count ? points : nullptr};
    function(info, &element);
    next += count;
  }
}

void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y) {
  if (path) MoveTo(*path, Map(m, {x, y}));
}

void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y) {
  if (HasCurrentPoint(path)) LineTo(*path, Map(m, {x, y}));
}

void CGPathAddQuadCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cpx, CGFloat cpy, CGFloat x,
                               CGFloat y) {
  if (!HasCurrentPoint(path)) return;
  CGPoint* added = Add(*path, kCGPathElementAddQuadCurveToPoint);
  added[0] = Map(m, {cpx, cpy});
  added[1] = Map(m, {x, y});
  path->current = added[1];
}

void CGPathAddCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cp1x, CGFloat cp1y, CGFloat cp2x,
                           CGFloat cp2y, CGFloat x, CGFloat y) {
  if (HasCurrentPoint(path)) CurveTo(*path, Map(m, {cp1x, cp1y}), Map(m, {cp2x, cp2y}), Map(m, {x, y}));
}

void CGPathCloseSubpath(CGMutablePathRef path) {
  if (!HasCurrentPoint(path) || path->verbs.end()[-1] == kCGPathElementCloseSubpath) return;
  *path->verbs.Grow(1) = kCGPathElementCloseSubpath;
  path->Changed();
  path->current = path->start;
}

void CGPathAddRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect) {
  if (path == nullptr) return;
  CGFloat x0 = rect.origin.x, y0 = rect.origin.y;
  CGFloat x1 = x0 + rect.size.width, y1 = y0 + rect.size.height;
  if (x1 < x0) std::swap(x0, x1);
  if (y1 < y0) std::swap(y0, y1);
  MoveTo(*path, Map(m, {x0, y0}));
  LineTo(*path, Map(m, {x1, y0}));
  LineTo(*path, Map(m, {x1, y1}));
  LineTo(*path, Map(m, {x0, y1}));
  CGPathCloseSubpath(path);
}

void CGPathAddLines(CGMutablePathRef path, const CGAffineTransform* m, const CGPoint* points, size_t count) {
  if (path == nullptr || points == nullptr || count == 0) return;
  MoveTo(*path, Map(m, points[0]));
  for (size_t i = 1; i < count; ++i) LineTo(*path, Map(m, points[i]));
}

void CGPathAddPath(CGMutablePathRef path, const CGAffineTransform* m, CGPathRef other) {
  if (path == nullptr || !HasCurrentPoint(other)) return;
  const std::size_t verbCount = other->verbs.Count(), pointCount = other->points.Count();
  const CGPoint start = other->start, current = other->current;
  // Growing may move the items, also those of `other` when it is `path`: read them only afterwards.
  path->verbs.Ensure(verbCount);
  path->points.Ensure(pointCount);
  CGPath::Verb* verbs = path->verbs.Grow(verbCount);
  CGPoint* points = path->points.Grow(pointCount);
  std::memcpy(verbs, other->verbs.Data(), verbCount);
  const CGPoint* source = other->points.Data();
  if (m) {
    const CGAffineTransform map = *m;  // no point is a part of this one
    for (std::size_t i = 0; i < pointCount; ++i) points[i] = CGPointApplyAffineTransform(source[i], map);
  } else {
    std::memcpy(points, source, pointCount * sizeof(CGPoint));
  }
  path->start = Map(m, start);
  path->current = Map(m, current);
  path->Changed();
}
