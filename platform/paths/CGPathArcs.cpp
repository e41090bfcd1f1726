// The round shapes of a path, made of cubic Bézier curves of at most a quarter turn each.
//
// An arc of angle s and radius r is approached by control points at the distance r·4/3·tan(s/4) from its ends along the
// tangents: the cubic that meets the circle at its middle (Goldapp, "Approximation of circular arcs by cubic
// polynomials", 1991). For a quarter turn it strays from the circle by less than 2.8e-4 of the radius.
#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "platform/paths/CGPathValue.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTurn = 2 * kPi;
constexpr double kQuarter = kPi / 2;
constexpr double kAngleSlack = 1e-9;  // a quarter turn that rounding made longer stays one piece

double HandleLength(double radius, double angle) { return radius * 4 / 3 * std::tan(angle / 4); }

// The sweep from start to end in the asked direction: turns are added when the end lies against it.
double SweepOf(double start, double end, bool clockwise) {
  double sweep = clockwise ? start - end : end - start;
  if (sweep < 0) {
    sweep = std::fmod(sweep, kTurn) + kTurn;
    // Whole turns, but for what rounding leaves of them, take the end back to the start.
    if (sweep < kAngleSlack || kTurn - sweep < kAngleSlack) sweep = 0;
  } else if (sweep >= 3 * kTurn) {
    sweep = kTurn + std::fmod(sweep - kTurn, 2 * kTurn);
  }
  return clockwise ? -sweep : sweep;
}

// The rest of an arc, from the current point, which lies at startAngle.
void AddArcPieces(CGMutablePathRef path, const CGAffineTransform* m, CGPoint center, double radius, double startAngle,
                  double sweep) {
  const int pieces = static_cast<int>(std::ceil(std::fabs(sweep) / kQuarter - kAngleSlack));
  const double handle = pieces > 0 ? HandleLength(radius, sweep / pieces) : 0;
  double cos0 = std::cos(startAngle), sin0 = std::sin(startAngle);
  for (int i = 1; i <= pieces; ++i) {
    const double angle = startAngle + sweep * i / pieces;
    const double cos1 = std::cos(angle), sin1 = std::sin(angle);
    const CGPoint p0 = {center.x + radius * cos0, center.y + radius * sin0};
    const CGPoint p1 = {center.x + radius * cos1, center.y + radius * sin1};
    CGPathAddCurveToPoint(path, m, p0.x - handle * sin0, p0.y + handle * cos0, p1.x + handle * sin1,
                          p1.y - handle * cos1, p1.x, p1.y);
    cos0 = cos1;
    sin0 = sin1;
  }
}

struct Vector {
  double x;
  double y;
};

// The unit vector from a to b; false when there is none.
bool Direction(CGPoint a, CGPoint b, Vector* out) {
  const Vector d = {b.x - a.x, b.y - a.y};
  const double length = std::hypot(d.x, d.y);
  if (!(length > 0) || !std::isfinite(length)) return false;
  *out = {d.x / length, d.y / length};
  return true;
}

bool Unmap(const CGAffineTransform* m, CGPoint p, CGPoint* out) {
  if (m == nullptr) {
    *out = p;
    return true;
  }
  const double determinant = m->a * m->d - m->b * m->c;
  if (determinant == 0 || !std::isfinite(determinant)) return false;
  const double x = p.x - m->tx, y = p.y - m->ty;
  *out = {(m->d * x - m->c * y) / determinant, (m->a * y - m->b * x) / determinant};
  return true;
}

// tan of half the angle whose tangent is t.
double HalfAngleTangent(double t) { return t / (1 + std::sqrt(1 + t * t)); }

// Adds the tangent arc at the corner; false when no circle fits.
bool AddTangentArc(CGMutablePathRef path, const CGAffineTransform* m, CGPoint corner, CGPoint end, double radius) {
  constexpr double kParallel = 1e-12;  // sine of the angle between two lines that count as one
  CGPoint from;
  Vector back, ahead;  // from the corner, along both lines
  if (!(radius > 0) || !Unmap(m, path->current, &from)) return false;
  if (!Direction(corner, from, &back) || !Direction(corner, end, &ahead)) return false;
  const double cross = back.x * ahead.y - back.y * ahead.x;
  const double dot = back.x * ahead.x + back.y * ahead.y;
  if (std::fabs(cross) <= kParallel) return false;

  // The arc turns by what the angle at the corner lacks to a half turn, and the contacts lie from the corner at the
  // radius times the tangent of half that turn.
  const double halfTurnTangent = (1 + dot) / std::fabs(cross);
  const double distance = radius * halfTurnTangent;
  const CGPoint first = {corner.x + back.x * distance, corner.y + back.y * distance};
  const CGPoint last = {corner.x + ahead.x * distance, corner.y + ahead.y * distance};
  if (!std::isfinite(first.x + first.y + last.x + last.y)) return false;
  CGPathAddLineToPoint(path, m, first.x, first.y);
  const double quarterTangent = HalfAngleTangent(halfTurnTangent);
  if (halfTurnTangent <= 1 + kAngleSlack) {  // at most a quarter turn
    const double handle = radius * 4 / 3 * quarterTangent;
    CGPathAddCurveToPoint(path, m, first.x - back.x * handle, first.y - back.y * handle, last.x - ahead.x * handle,
                          last.y - ahead.y * handle, last.x, last.y);
    return true;
  }
  // Two pieces that meet where the circle is nearest to the corner; the tangent there joins the contacts' directions.
  const double handle = radius * 4 / 3 * HalfAngleTangent(quarterTangent);
  const double side = cross > 0 ? radius : -radius;
  const CGPoint center = {first.x - back.y * side, first.y + back.x * side};
  Vector toCorner, along;
  if (!Direction(center, corner, &toCorner) || !Direction(first, last, &along)) return true;
  const CGPoint middle = {center.x + toCorner.x * radius, center.y + toCorner.y * radius};
  CGPathAddCurveToPoint(path, m, first.x - back.x * handle, first.y - back.y * handle, middle.x - along.x * handle,
                        middle.y - along.y * handle, middle.x, middle.y);
  CGPathAddCurveToPoint(path, m, middle.x + along.x * handle, middle.y + along.y * handle, last.x - ahead.x * handle,
                        last.y - ahead.y * handle, last.x, last.y);
  return true;
}

}  // namespace

void CGPathAddEllipseInRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect) {
  if (path == nullptr) return;
  const double rx = rect.size.width / 2, ry = rect.size.height / 2;
  const double cx = rect.origin.x + rx, cy = rect.origin.y + ry;
  const double kx = HandleLength(rx, kQuarter), ky = HandleLength(ry, kQuarter);
  CGPathMoveToPoint(path, m, cx + rx, cy);
  CGPathAddCurveToPoint(path, m, cx + rx, cy + ky, cx + kx, cy + ry, cx, cy + ry);
  CGPathAddCurveToPoint(path, m, cx - kx, cy + ry, cx - rx, cy + ky, cx - rx, cy);
  CGPathAddCurveToPoint(path, m, cx - rx, cy - ky, cx - kx, cy - ry, cx, cy - ry);
  CGPathAddCurveToPoint(path, m, cx + kx, cy - ry, cx + rx, cy - ky, cx + rx, cy);
  CGPathCloseSubpath(path);
}

void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                  CGFloat startAngle, CGFloat endAngle, bool clockwise) {
  const double sweep = SweepOf(startAngle, endAngle, clockwise);
  if (path == nullptr || !std::isfinite(startAngle) || !std::isfinite(sweep)) return;
  const CGPoint start = {x + radius * std::cos(startAngle), y + radius * std::sin(startAngle)};
  if (CGPathIsEmpty(path)) {
    CGPathMoveToPoint(path, m, start.x, start.y);
  } else {
    CGPathAddLineToPoint(path, m, start.x, start.y);
  }
  AddArcPieces(path, m, {x, y}, radius, startAngle, sweep);
}

void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1, CGFloat x2,
                         CGFloat y2, CGFloat radius) {
  if (CGPathIsEmpty(path)) return;
  if (!AddTangentArc(path, m, {x1, y1}, {x2, y2}, radius)) CGPathAddLineToPoint(path, m, x1, y1);
}
