// Inside or outside: the crossings of a ray from the point towards larger x, counted with the direction of the outline.
//
// An edge is crossed when one of its ends lies at or below the ray and the other above it, so that neighbouring edges
// share no crossing and miss none. A curve is settled by the box of its points: out of the ray's reach it has no
// crossing, wholly to the right it has those of its chord. A curve whose box holds the point is halved; the halves
// share their end to the last bit, which keeps the count exact however the halves round.
#include <algorithm>
#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "graphics/native/AGGraphicsLowPath.h"
#include "graphics/paths/AGPath.h"

namespace {

// 40 halvings shrink a curve to less than its coordinates' last bits; what is left is taken as its chord.
constexpr int kMaxDepth = 40;

CGPoint Middle(const CGPoint& a, const CGPoint& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

class CrossingCounter {
 public:
  explicit CrossingCounter(const AGPoint& p) : p_(p) {}

  static void Visit(void* info, const CGPathElement* element) {
    static_cast<CrossingCounter*>(info)->Add(element->type, element->points);
  }

  // How often the outline winds around the point. Its last bit is that of the number of crossings.
  int Winding() {
    Line(current_, start_);
    current_ = start_;
    return winding_;
  }

 private:
  void Add(CGPathElementType type, const CGPoint* p) {
    switch (type) {
      case kCGPathElementMoveToPoint:
        Line(current_, start_);
        start_ = current_ = p[0];
        break;
      case kCGPathElementAddLineToPoint:
        Line(current_, p[0]);
        current_ = p[0];
        break;
      case kCGPathElementAddQuadCurveToPoint: {
        const CGPoint from = current_;
        const CGPoint c1 = {(from.x + 2 * p[0].x) / 3, (from.y + 2 * p[0].y) / 3};
        const CGPoint c2 = {(p[1].x + 2 * p[0].x) / 3, (p[1].y + 2 * p[0].y) / 3};
        TopCurve(from, c1, c2, p[1]);
        current_ = p[1];
        break;
      }
      case kCGPathElementAddCurveToPoint:
        TopCurve(current_, p[0], p[1], p[2]);
        current_ = p[2];
        break;
      default:
        Line(current_, start_);
        current_ = start_;
        break;
    }
  }

  // 1 when an edge rises through the ray's height, -1 when it falls through it, else 0.
  int Rise(const CGPoint& from, const CGPoint& to) const {
    return static_cast<int>(from.y <= p_.y) - static_cast<int>(to.y <= p_.y);
  }

  void Line(const CGPoint& from, const CGPoint& to) {
    const int rise = Rise(from, to);
    if (rise == 0) return;
    const double cross = (to.x - from.x) * (p_.y - from.y) - (p_.x - from.x) * (to.y - from.y);
    if (rise > 0 ? cross > 0 : cross < 0) winding_ += rise;
  }

  // A curve whose halves would overflow, or are no numbers, would be halved in vain: its chord stands for it.
  void TopCurve(const CGPoint& p0, const CGPoint& p1, const CGPoint& p2, const CGPoint& p3) {
    constexpr double kReach = 1e307;
    const double reach = std::fabs(p0.x) + std::fabs(p0.y) + std::fabs(p1.x) + std::fabs(p1.y) + std::fabs(p2.x) +
                         std::fabs(p2.y) + std::fabs(p3.x) + std::fabs(p3.y);
    if (reach < kReach) {
      Curve(p0, p1, p2, p3, 0);
    } else {
      Line(p0, p3);
    }
  }

  void Curve(const CGPoint& p0, const CGPoint& p1, const CGPoint& p2, const CGPoint& p3, int depth) {
    if (std::max(std::max(p0.y, p1.y), std::max(p2.y, p3.y)) <= p_.y) return;
    if (std::min(std::min(p0.y, p1.y), std::min(p2.y, p3.y)) > p_.y) return;
    if (std::max(std::max(p0.x, p1.x), std::max(p2.x, p3.x)) <= p_.x) return;
    if (std::min(std::min(p0.x, p1.x), std::min(p2.x, p3.x)) > p_.x) {
      winding_ += Rise(p0, p3);
      return;
    }
    if (depth == kMaxDepth) {
      Line(p0, p3);
      return;
    }
    const CGPoint m01 = Middle(p0, p1), m12 = Middle(p1, p2), m23 = Middle(p2, p3);
    const CGPoint m012 = Middle(m01, m12), m123 = Middle(m12, m23), middle = Middle(m012, m123);
    Curve(p0, m01, m012, middle, depth + 1);
    Curve(middle, m123, m23, p3, depth + 1);
  }

  AGPoint p_;
  CGPoint start_{0, 0};
  CGPoint current_{0, 0};
  int winding_ = 0;
};

}  // namespace

bool AGGraphicsLow::AGPathIsPointInPath(const AGPath& path, const AGPoint& point, AGBrushFillMode mode) {
  const AGPoint p = point - path.Origin();
  // No comparison would ever stop the halving of a curve around a point that is no number.
  if (path.IsEmpty() || std::isnan(p.x) || std::isnan(p.y)) return false;
  CrossingCounter counter(p);
  CGPathApply(path.NativePath(), &counter, &CrossingCounter::Visit);
  const int winding = counter.Winding();
  return mode == kAGBrushFillWinding ? winding != 0 : (winding & 1) != 0;
}
