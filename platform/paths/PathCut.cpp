#include "platform/paths/PathCut.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace platform {
namespace {

// Beyond the largest target by far; a difference of two such numbers still tells a tenth of a pixel.
constexpr double kFarthest = 1e14;
constexpr double kFlatness = 0.05;
// A curve is halved so often that even the farthest is flat.
constexpr int kMaxDepth = 48;

CGPoint Near(CGPoint p) { return {std::clamp(p.x, -kFarthest, kFarthest), std::clamp(p.y, -kFarthest, kFarthest)}; }

CGPoint Between(CGPoint p, CGPoint q, double t) { return {p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t}; }

// A line or a curve with its first point; a line has the points 0 and 3 alone.
struct Piece {
  bool isLine;
  std::array<CGPoint, 4> p;

  bool IsInside(const CutBox& box) const {
    return std::all_of(p.begin(), p.end(), [&box](CGPoint point) { return box.Contains(point); });
  }
  // Beyond one side of the box, all of it.
  bool IsBeside(const CutBox& box) const {
    const auto all = [this](auto test) { return std::all_of(p.begin(), p.end(), test); };
    return all([&](CGPoint q) { return q.x < box.x0; }) || all([&](CGPoint q) { return q.x > box.x1; }) ||
           all([&](CGPoint q) { return q.y < box.y0; }) || all([&](CGPoint q) { return q.y > box.y1; });
  }
  // A cubic strays from its chord by less than its controls do from the thirds of it.
  bool IsFlat(double tolerance = kFlatness) const {
    const CGPoint a = Between(p[0], p[3], 1.0 / 3);
    const CGPoint b = Between(p[0], p[3], 2.0 / 3);
    return std::max({std::fabs(p[1].x - a.x), std::fabs(p[1].y - a.y), std::fabs(p[2].x - b.x),
                     std::fabs(p[2].y - b.y)}) < tolerance;
  }
  // The halves before and behind the middle of a curve (de Casteljau).
  void Halve(Piece* first, Piece* second) const {
    const CGPoint ab = Between(p[0], p[1], 0.5), bc = Between(p[1], p[2], 0.5), cd = Between(p[2], p[3], 0.5);
    const CGPoint abc = Between(ab, bc, 0.5), bcd = Between(bc, cd, 0.5);
    const CGPoint middle = Between(abc, bcd, 0.5);
    *first = {false, {p[0], ab, abc, middle}};
    *second = {false, {middle, bcd, cd, p[3]}};
  }
};

struct Subpath {
  CGPoint start;
  bool isClosed;
  std::vector<Piece> pieces;  // with the closing line of a closed one
  std::size_t firstVerb, endVerb, firstPoint, endPoint;
};

Piece Line(CGPoint from, CGPoint to) { return {true, {from, from, to, to}}; }

Piece PieceOf(CGPath::Verb verb, CGPoint from, const CGPoint* points) {
  if (verb == kCGPathElementAddLineToPoint) return Line(from, Near(points[0]));
  if (verb == kCGPathElementAddCurveToPoint) return {false, {from, Near(points[0]), Near(points[1]), Near(points[2])}};
  // The cubic with the same shape as a quadratic has its controls two thirds of the way to the quadratic's.
  const CGPoint control = Near(points[0]);
  const CGPoint end = Near(points[1]);
  return {false, {from, Between(from, control, 2.0 / 3), Between(end, control, 2.0 / 3), end}};
}

// Calls `take` for each subpath in turn.
template <typename Take>
void ForEachSubpath(const CGPath& path, Take take) {
  const CGPoint* const points = path.points.Data();
  const std::size_t verbCount = path.verbs.Count();
  std::size_t verb = 0;
  std::size_t point = 0;
  CGPoint start{0, 0};
  while (verb < verbCount) {
    Subpath sub{start, false, {}, verb, verb, point, point};
    if (path.verbs.Data()[verb] == kCGPathElementMoveToPoint) {
      sub.start = start = Near(points[point++]);
      ++verb;
    }
    CGPoint current = start;
    for (; verb < verbCount && !sub.isClosed && path.verbs.Data()[verb] != kCGPathElementMoveToPoint; ++verb) {
      const CGPath::Verb kind = path.verbs.Data()[verb];
      sub.isClosed = kind == kCGPathElementCloseSubpath;
      sub.pieces.push_back(sub.isClosed ? Line(current, start) : PieceOf(kind, current, points + point));
      point += CGPath::PointCount(kind);
      current = sub.pieces.back().p[3];
    }
    sub.endVerb = verb;
    sub.endPoint = point;
    take(sub);
  }
}

void AppendVerb(CGPath* out, CGPath::Verb verb, const CGPoint* points) {
  *out->verbs.Grow(1) = verb;
  const std::size_t count = CGPath::PointCount(verb);
  CGPoint* added = out->points.Grow(count);
  std::copy_n(points, count, added);
}

bool IsInside(const Subpath& sub, const CutBox& box) {
  return box.Contains(sub.start) &&
         std::all_of(sub.pieces.begin(), sub.pieces.end(), [&box](const Piece& piece) { return piece.IsInside(box); });
}

void AppendWhole(const CGPath& path, const Subpath& sub, CGPath* out) {
  const CGPoint* points = path.points.Data() + sub.firstPoint;
  // What follows a close without a move of its own begins where that began.
  const bool hasMove = path.verbs.Data()[sub.firstVerb] == kCGPathElementMoveToPoint;
  if (!hasMove) AppendVerb(out, kCGPathElementMoveToPoint, &sub.start);
  for (std::size_t i = sub.firstVerb; i < sub.endVerb; ++i) {
    const CGPath::Verb verb = path.verbs.Data()[i];
    AppendVerb(out, verb, points);
    points += CGPath::PointCount(verb);
  }
}

// Adds the halves of a curve to a cutter; false, with nothing added, for one that may be a line.
template <typename Cutter>
bool AddHalves(Cutter* cutter, const Piece& piece, int depth) {
  if (depth == kMaxDepth || piece.IsFlat()) return false;
  Piece first, second;
  piece.Halve(&first, &second);
  cutter->Add(first, depth + 1);
  cutter->Add(second, depth + 1);
  return true;
}

// Moves every point outside to the nearest of the box. That changes the winding number of no point inside, and a line
// that does not cross a side's line stays one.
class FillCutter {
 public:
  FillCutter(const CutBox& box, CGPath* out) : box_(box), out_(out) {}

  void Begin(CGPoint start) {
    last_ = Cut(start);
    AppendVerb(out_, kCGPathElementMoveToPoint, &last_);
  }

  void Add(const Piece& piece, int depth = 0) {
    if (piece.isLine || piece.IsBeside(box_)) return AddLine(piece.p[0], piece.p[3]);
    if (piece.IsInside(box_)) {
      AppendVerb(out_, kCGPathElementAddCurveToPoint, &piece.p[1]);
      last_ = piece.p[3];
    } else if (!AddHalves(this, piece, depth)) {
      AddLine(piece.p[0], piece.p[3]);
    }
  }

  void End() { AppendVerb(out_, kCGPathElementCloseSubpath, nullptr); }

 private:
  CGPoint Cut(CGPoint p) const { return {std::clamp(p.x, box_.x0, box_.x1), std::clamp(p.y, box_.y0, box_.y1)}; }

  void AddLine(CGPoint p, CGPoint q) {
    // Where no side is crossed, its place is the line's end.
    const auto cross = [](double from, double to, double side) {
      return (from < side) != (to < side) ? (side - from) / (to - from) : 1;
    };
    std::array<double, 4> crossings = {cross(p.x, q.x, box_.x0), cross(p.x, q.x, box_.x1), cross(p.y, q.y, box_.y0),
                                       cross(p.y, q.y, box_.y1)};
    std::sort(crossings.begin(), crossings.end());
    for (const double t : crossings) {
      if (t < 1) Append(Cut(Between(p, q, t)));
    }
    Append(Cut(q));
  }

  void Append(CGPoint p) {
    if (p.x == last_.x && p.y == last_.y) return;
    AppendVerb(out_, kCGPathElementAddLineToPoint, &p);
    last_ = p;
  }

  const CutBox box_;
  CGPath* out_;
  CGPoint last_{0, 0};
};

// Keeps of an outline what lies in the box. Between its parts are gaps.
class StrokeCutter {
 public:
  StrokeCutter(const CutBox& box, CGPath* out) : box_(box), out_(out) {}

  void Add(const Piece& piece, int depth = 0) {
    if (piece.IsBeside(box_)) return Gap();
    if (piece.isLine) return AddLine(piece.p[0], piece.p[3]);
    if (piece.IsInside(box_)) {
      Append(piece.p[0], kCGPathElementAddCurveToPoint, &piece.p[1]);
    } else if (!AddHalves(this, piece, depth)) {
      AddLine(piece.p[0], piece.p[3]);
    }
  }

  // What comes before the first gap is left out.
  void WaitForGap() { isWaiting_ = true; }
  // What comes behind the next gap is left out.
  void StopAtGap() { stopsAtGap_ = true; }
  bool HadGap() const { return hadGap_; }

 private:
  // The part of the line in the box (Liang and Barsky).
  void AddLine(CGPoint p, CGPoint q) {
    double t0 = 0;
    double t1 = 1;
    const auto narrow = [&](double from, double to, double low, double high) {
      if (from == to) {
        if (from < low || from > high) t1 = -1;
        return;
      }
      const double a = (low - from) / (to - from);
      const double b = (high - from) / (to - from);
      t0 = std::max(t0, std::min(a, b));
      t1 = std::min(t1, std::max(a, b));
    };
    narrow(p.x, q.x, box_.x0, box_.x1);
    narrow(p.y, q.y, box_.y0, box_.y1);
    if (!(t0 <= t1)) return Gap();
    if (t0 > 0) Gap();
    const CGPoint end = t1 < 1 ? Between(p, q, t1) : q;
    Append(Between(p, q, t0), kCGPathElementAddLineToPoint, &end);
    if (t1 < 1) Gap();
  }

  void Append(CGPoint from, CGPath::Verb verb, const CGPoint* points) {
    if (isWaiting_) return;
    if (isGap_) AppendVerb(out_, kCGPathElementMoveToPoint, &from);
    AppendVerb(out_, verb, points);
    isGap_ = false;
  }

  void Gap() {
    isWaiting_ = stopsAtGap_;
    isGap_ = hadGap_ = true;
  }

  const CutBox box_;
  CGPath* out_;
  bool isGap_ = true;
  bool hadGap_ = false;
  bool isWaiting_ = false;
  bool stopsAtGap_ = false;
};

bool HasGap(const Piece& piece, const CutBox& box) {
  CGPath parts;
  StrokeCutter cutter(box, &parts);
  cutter.Add(piece);
  return cutter.HadGap();
}

// A closed outline is begun behind a gap, so that the join at its start is kept.
void CutClosed(const Subpath& sub, const CutBox& box, CGPath* out) {
  const auto first =
      std::find_if(sub.pieces.begin(), sub.pieces.end(), [&box](const Piece& piece) { return HasGap(piece, box); });
  StrokeCutter cutter(box, out);
  const auto add = [&cutter](const Piece& piece) { cutter.Add(piece); };
  if (first == sub.pieces.end()) {
    std::for_each(sub.pieces.begin(), sub.pieces.end(), add);
    AppendVerb(out, kCGPathElementCloseSubpath, nullptr);
    return;
  }
  cutter.WaitForGap();
  std::for_each(first, sub.pieces.end(), add);
  std::for_each(sub.pieces.begin(), first, add);
  cutter.StopAtGap();
  add(*first);
}

void AddFlat(const Piece& piece, const CutBox& seen, double tolerance, int depth, Polyline* out) {
  if (piece.isLine || depth == kMaxDepth || piece.IsBeside(seen) || piece.IsFlat(tolerance)) {
    out->points.push_back(piece.p[3]);
    out->isSmooth.push_back(true);
    return;
  }
  Piece first, second;
  piece.Halve(&first, &second);
  AddFlat(first, seen, tolerance, depth + 1, out);
  AddFlat(second, seen, tolerance, depth + 1, out);
}

}  // namespace

CutBox CutBoxOf(const raster::Box& target, double reach) {
  constexpr double kMargin = 4096;
  const double margin = kMargin + (reach > 0 ? reach : 0);
  return {target.x0 - margin, target.y0 - margin, target.x1 + margin, target.y1 + margin};
}

bool IsInside(const CGPath& path, const CutBox& box) {
  return std::all_of(path.points.begin(), path.points.end(), [&box](CGPoint p) { return box.Contains(p); });
}

void CutForFill(const CGPath& path, const CutBox& box, CGPath* out) {
  ForEachSubpath(path, [&](const Subpath& sub) {
    if (IsInside(sub, box)) return AppendWhole(path, sub, out);
    FillCutter cutter(box, out);
    cutter.Begin(sub.start);
    for (const Piece& piece : sub.pieces) cutter.Add(piece);
    if (!sub.isClosed && !sub.pieces.empty()) cutter.Add(Line(sub.pieces.back().p[3], sub.start));
    cutter.End();
  });
}

void CutForStroke(const CGPath& path, const CutBox& box, CGPath* out) {
  ForEachSubpath(path, [&](const Subpath& sub) {
    if (IsInside(sub, box)) return AppendWhole(path, sub, out);
    if (sub.isClosed) return CutClosed(sub, box, out);
    StrokeCutter cutter(box, out);
    for (const Piece& piece : sub.pieces) cutter.Add(piece);
  });
}

std::vector<Polyline> Flatten(const CGPath& path, const CutBox& seen, double tolerance) {
  std::vector<Polyline> lines;
  ForEachSubpath(path, [&](const Subpath& sub) {
    if (sub.pieces.empty()) return;
    Polyline line{{sub.start}, {false}, sub.isClosed};
    for (const Piece& piece : sub.pieces) {
      AddFlat(piece, seen, std::max(tolerance, kFlatness), 0, &line);
      line.isSmooth.back() = false;
    }
    lines.push_back(std::move(line));
  });
  return lines;
}

}  // namespace platform
