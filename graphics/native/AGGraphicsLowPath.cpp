#include "graphics/native/AGGraphicsLowPath.h"

#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "graphics/geometry/AGBezier.h"
#include "graphics/geometry/AGGeometry.h"
#include "graphics/native/AGMacOS.h"
#include "graphics/paths/AGPath.h"

using AGMacOS::AGPointConvert;

namespace {

// The range that the walk over a path's elements has seen.
struct Minimax {
  CGPoint start{0, 0};
  CGPoint current{0, 0};
  CGPoint min{kAKHugeFloat32, kAKHugeFloat32};
  CGPoint max{-kAKHugeFloat32, -kAKHugeFloat32};

  void Include(const CGPoint& low, const CGPoint& high) {
    if (low.x < min.x) min.x = low.x;
    if (low.y < min.y) min.y = low.y;
    if (high.x > max.x) max.x = high.x;
    if (high.y > max.y) max.y = high.y;
  }

  // A curve lies within the hull of its points: one whose points are all in the range cannot widen it.
  bool Holds(const CGPoint& p) const { return p.x >= min.x && p.x <= max.x && p.y >= min.y && p.y <= max.y; }
};

void _LowCGPathMinimaxCallback(void* info, const CGPathElement* element) {
  Minimax& state = *static_cast<Minimax*>(info);
  const CGPoint* p = element->points;
  CGPoint low, high;
  switch (element->type) {
    case kCGPathElementMoveToPoint:
      state.Include(p[0], p[0]);
      state.start = state.current = p[0];
      break;
    case kCGPathElementAddLineToPoint:
      state.Include(p[0], p[0]);
      state.current = p[0];
      break;
    case kCGPathElementAddQuadCurveToPoint:
      if (!state.Holds(p[0]) || !state.Holds(p[1])) {
        ATBezierQuadGetMinimax(state.current, p[0], p[1], &low, &high);
        state.Include(low, high);
      }
      state.current = p[1];
      break;
    case kCGPathElementAddCurveToPoint:
      if (!state.Holds(p[0]) || !state.Holds(p[1]) || !state.Holds(p[2])) {
        ATBezierCubicGetMinimax(state.current, p[0], p[1], p[2], &low, &high);
        state.Include(low, high);
      }
      state.current = p[2];
      break;
    default:
      state.current = state.start;
      break;
  }
}

// Looks for a segment of the mapped outline that is near enough to a point.
class _LowCGPathFinder {
 public:
  _LowCGPathFinder(const AGPoint& point, double tolerance, const AGAffineTransform& t)
      : point_(point), threshold_(tolerance > 0 ? tolerance * tolerance : 0), transform_(t) {}

  bool Found() const { return best_ <= threshold_; }

  static void Visit(void* info, const CGPathElement* element) {
    static_cast<_LowCGPathFinder*>(info)->Add(element->type, element->points);
  }

 private:
  static constexpr int kChords = 8;

  void Add(CGPathElementType type, const CGPoint* p) {
    switch (type) {
      case kCGPathElementMoveToPoint:
        start_ = current_ = AGPointConvert(p[0]);
        break;
      case kCGPathElementAddLineToPoint:
        LineTo(AGPointConvert(p[0]));
        break;
      case kCGPathElementAddQuadCurveToPoint: {
        const AGPoint from = current_, c = AGPointConvert(p[0]), to = AGPointConvert(p[1]);
        for (int i = 1; i <= kChords; ++i) LineTo(AGBezierQuadGetPoint(from, c, to, double(i) / kChords));
        break;
      }
      case kCGPathElementAddCurveToPoint: {
        const AGPoint from = current_, c1 = AGPointConvert(p[0]), c2 = AGPointConvert(p[1]), to = AGPointConvert(p[2]);
        for (int i = 1; i <= kChords; ++i) LineTo(AGBezierCubicGetPoint(from, c1, c2, to, double(i) / kChords));
        break;
      }
      default:
        LineTo(start_);
        break;
    }
  }

  void LineTo(const AGPoint& to) {
    if (best_ > threshold_) {
      const double distance2 =
          AGGeometry::GetDistanceToSegment2(point_, transform_.Apply(current_), transform_.Apply(to));
      if (distance2 < best_) best_ = distance2;
    }
    current_ = to;
  }

  AGPoint point_;
  double threshold_;
  AGAffineTransform transform_;
  double best_ = kAKHugeFloat64;
  AGPoint start_;
  AGPoint current_;
};

}  // namespace

AGRect AGGraphicsLow::AGPathGetBoundingBox(const AGPath& path, bool exact) {
  if (path.IsEmpty()) return kAGNullRect;
  const AGPoint& origin = path.Origin();
  if (!exact) {
    const CGRect box = CGPathGetBoundingBox(path.NativePath());
    const bool null = std::isinf(box.origin.x) && box.size.width == 0;
    return null ? kAGNullRect : AGMacOS::AGRectConvert(box, origin);
  }
  Minimax range;
  CGPathApply(path.NativePath(), &range, &_LowCGPathMinimaxCallback);
  if (!(range.min.x <= range.max.x && range.min.y <= range.max.y)) return kAGNullRect;
  return {range.min.x + origin.x, range.min.y + origin.y, range.max.x + origin.x, range.max.y + origin.y};
}

bool AGGraphicsLow::AGPathIsPointOnPath(const AGPath& path, const AGPoint& point, double tolerance,
                                        const AGAffineTransform& t) {
  if (path.IsEmpty()) return false;
  _LowCGPathFinder finder(point - path.Origin(), tolerance, t);
  CGPathApply(path.NativePath(), &finder, &_LowCGPathFinder::Visit);
  return finder.Found();
}
