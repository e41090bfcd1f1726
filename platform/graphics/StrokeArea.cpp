#include "platform/graphics/StrokeArea.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "platform/graphics/ShadingRows.h"

namespace platform {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kMiterLimit = 10;
// A cubic for so small a part of a circle strays from it by a thousand millionth of the radius.
constexpr double kArcPiece = kPi / 16;
// Of the nib's half width. All of a curve may be within reach of a nib of millions of pixels, which can do with fewer
// lines.
constexpr double kLargeNibFlatness = 1e-8;

// The parts of an area, in the nib's space, where it is a circle; all turn from x towards y.
class Area {
 public:
  Area(const CGAffineTransform& toDevice, double radius, CGPath* out)
      : toDevice_(toDevice), radius_(radius), out_(out) {}

  double Radius() const { return radius_; }

  static CGPoint At(CGPoint p, CGPoint unit, double radius) { return {p.x + unit.x * radius, p.y + unit.y * radius}; }

  // Whether two lines meet bluntly enough for a mitre; cairo asks that of device space, so that is what it looks like.
  bool HasMiter(CGPoint before, CGPoint after) const {
    const CGPoint a = Unit(before);
    const CGPoint b = Unit(after);
    return 2 <= kMiterLimit * kMiterLimit * (1 + a.x * b.x + a.y * b.y);
  }

  void AddPolygon(std::initializer_list<CGPoint> corners) {
    const CGPoint* const first = corners.begin();
    CGPathAddLines(out_, &toDevice_, first, corners.size());
    CGPathCloseSubpath(out_);
  }

  // The sector of a circle from a direction on.
  void AddSector(CGPoint center, CGPoint from, double sweep) {
    const int pieces = std::max(1, static_cast<int>(std::ceil(sweep / kArcPiece)));
    const double handle = radius_ * 4 / 3 * std::tan(sweep / pieces / 4);
    const double start = std::atan2(from.y, from.x);
    CGPathMoveToPoint(out_, &toDevice_, center.x, center.y);
    CGPoint unit = from;
    CGPoint point = At(center, unit, radius_);
    CGPathAddLineToPoint(out_, &toDevice_, point.x, point.y);
    for (int i = 1; i <= pieces; ++i) {
      const double angle = start + sweep * i / pieces;
      const CGPoint nextUnit{std::cos(angle), std::sin(angle)};
      const CGPoint next = At(center, nextUnit, radius_);
      CGPathAddCurveToPoint(out_, &toDevice_, point.x - handle * unit.y, point.y + handle * unit.x,
                            next.x + handle * nextUnit.y, next.y - handle * nextUnit.x, next.x, next.y);
      unit = nextUnit;
      point = next;
    }
    CGPathCloseSubpath(out_);
  }

 private:
  // The direction in device space.
  CGPoint Unit(CGPoint direction) const {
    const CGAffineTransform& m = toDevice_;
    const CGPoint p{m.a * direction.x + m.c * direction.y, m.b * direction.x + m.d * direction.y};
    const double length = std::hypot(p.x, p.y);
    return {p.x / length, p.y / length};
  }

  CGAffineTransform toDevice_;
  double radius_;
  CGPath* out_;
};

CGPoint RightOf(CGPoint direction) { return {direction.y, -direction.x}; }
CGPoint LeftOf(CGPoint direction) { return {-direction.y, direction.x}; }

CGPoint DirectionOf(CGPoint p, CGPoint q) {
  const double length = std::hypot(q.x - p.x, q.y - p.y);
  return {(q.x - p.x) / length, (q.y - p.y) / length};
}

void AddSegment(Area* area, CGPoint p, CGPoint q) {
  const double r = area->Radius();
  const CGPoint right = RightOf(DirectionOf(p, q));
  area->AddPolygon({Area::At(p, right, r), Area::At(q, right, r), Area::At(q, right, -r), Area::At(p, right, -r)});
}

// `outward` leads away from the line that ends at `p`.
void AddCap(Area* area, CGPoint p, CGPoint outward, CGLineCap cap) {
  const double r = area->Radius();
  const CGPoint right = RightOf(outward);
  if (cap == kCGLineCapRound) area->AddSector(p, right, kPi);
  if (cap != kCGLineCapSquare) return;
  const CGPoint end = Area::At(p, outward, r);
  area->AddPolygon({Area::At(p, right, r), Area::At(end, right, r), Area::At(end, right, -r), Area::At(p, right, -r)});
}

void AddJoin(Area* area, CGPoint p, CGPoint before, CGPoint after, CGLineJoin join) {
  const double turn = std::atan2(before.x * after.y - before.y * after.x, before.x * after.x + before.y * after.y);
  if (turn == 0) return;
  // On the outer side, from the one line's corner to the other's.
  const CGPoint from = turn > 0 ? RightOf(before) : LeftOf(after);
  const CGPoint to = turn > 0 ? RightOf(after) : LeftOf(before);
  const double r = area->Radius();
  if (join == kCGLineJoinRound) return area->AddSector(p, from, std::fabs(turn));
  const double half = std::cos(turn / 2);
  if (join == kCGLineJoinBevel || half == 0 || !area->HasMiter(before, after)) {
    return area->AddPolygon({p, Area::At(p, from, r), Area::At(p, to, r)});
  }
  const double reach = r / (2 * half * half);  // the two directions add up to one of length 2·half
  const CGPoint tip{p.x + (from.x + to.x) * reach, p.y + (from.y + to.y) * reach};
  area->AddPolygon({p, Area::At(p, from, r), tip, Area::At(p, to, r)});
}

// Of a line without length only round caps are seen; others have no direction.
void AddDot(Area* area, CGPoint p, CGLineCap cap) {
  if (cap == kCGLineCapRound) area->AddSector(p, {1, 0}, 2 * kPi);
}

void AddLine(Area* area, const Polyline& line, const GraphicsState& state) {
  const std::vector<CGPoint>& p = line.points;
  const std::size_t count = p.size();
  if (count == 1) return AddDot(area, p[0], state.lineCap);
  const std::size_t segments = line.isClosed ? count : count - 1;
  const auto direction = [&](std::size_t i) { return DirectionOf(p[i], p[(i + 1) % count]); };
  for (std::size_t i = 0; i < segments; ++i) AddSegment(area, p[i], p[(i + 1) % count]);
  for (std::size_t i = line.isClosed ? 0 : 1; i < segments; ++i) {
    AddJoin(area, p[i], direction((i + count - 1) % count), direction(i),
            line.isSmooth[i] ? kCGLineJoinRound : state.lineJoin);
  }
  if (line.isClosed) return;
  AddCap(area, p[0], DirectionOf(p[1], p[0]), state.lineCap);
  AddCap(area, p[count - 1], DirectionOf(p[count - 2], p[count - 1]), state.lineCap);
}

// The line in the nib's space, without points that follow on themselves.
Polyline MapLine(const Polyline& line, const CGAffineTransform& m) {
  Polyline mapped{{}, {}, line.isClosed};
  for (std::size_t i = 0; i < line.points.size(); ++i) {
    const CGPoint p = CGPointApplyAffineTransform(line.points[i], m);
    if (!mapped.points.empty() && mapped.points.back().x == p.x && mapped.points.back().y == p.y) continue;
    mapped.points.push_back(p);
    mapped.isSmooth.push_back(line.isSmooth[i]);
  }
  const auto& p = mapped.points;
  if (line.isClosed && p.size() > 1 && p.front().x == p.back().x && p.front().y == p.back().y) {
    mapped.points.pop_back();
    mapped.isSmooth.pop_back();
  }
  return mapped;
}

}  // namespace

void AddStrokeArea(const CGPath& path, const CGAffineTransform& penToDevice, const GraphicsState& state,
                   const CutBox& seen, CGPath* out) {
  Area area(penToDevice, state.lineWidth / 2, out);
  const CGAffineTransform& m = penToDevice;
  const CGAffineTransform toPen = InverseOf(m);
  const double reach = state.lineWidth / 2 * std::sqrt(m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d);
  for (const Polyline& line : Flatten(path, seen, reach * kLargeNibFlatness)) {
    AddLine(&area, MapLine(line, toPen), state);
  }
}

}  // namespace platform
