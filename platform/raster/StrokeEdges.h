// The edges of a path that is stroked.
//
// The nib is a circle of the pen's own space; a linear map brings it into pixels, where it may be any ellipse.
// Directions are measured in the pen's space, so that caps, joins and the mitre limit are those of the circle, and
// every offset is mapped into pixels.
//
// No outline is put together. Each piece of the path sends the two long sides of its rectangle, each corner what lies
// between the ends of those sides: on the outer side the join, on the inner side nothing where the sides cross, or, of
// pieces too short for that, two edges by way of the corner itself. Summed up, that is all rectangles and all wedges of
// the joins, each going round the same way: under the non-zero rule their union, so that a stroke which crosses itself
// is painted once and never has a hole.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/raster/Edges.h"
#include "platform/raster/Flatten.h"
#include "platform/raster/Stroke.h"

namespace raster {

template <typename Cell>
class StrokeEdges {
 public:
  StrokeEdges(const Nib& nib, Edges<Cell>* edges) : nib_(nib), edges_(*edges) {}

  void MoveTo(Point p) {
    End();
    start_ = current_ = p;
    hasMoved_ = true;
  }
  void LineTo(Point p) {
    isDrawn_ = true;
    const Point direction = p - current_;
    if (AddPiece(p, JoinWith(direction))) SetDirections(direction, direction);
  }
  void QuadTo(Point control, Point p) { CurveTo(CubicOf(current_, control, p)); }
  void CubicTo(Point first, Point second, Point p) { CurveTo({{current_, first, second, p}}); }

  void Close() {
    LineTo(start_);
    if (pieceCount_ < 2) {
      End();
      return;
    }
    AddJoin(start_, &last_, &first_, JoinWith(firstDirection_));
    AddSides(last_);
    AddSides(first_);
    Forget();
  }

  /// Caps what is open. To be called after the last piece.
  void End() {
    if (pieceCount_ > 0) {
      SetEnds(&last_, current_);
      SetStarts(&first_, start_);
      if (pieceCount_ == 1) SetStarts(&last_, start_);
      AddSides(last_);
      if (pieceCount_ > 1) AddSides(first_);
      AddCap(current_, last_.normal, nib_.cap);
      AddCap(start_, -1 * first_.normal, nib_.cap);
    } else if (isDrawn_) {
      AddDot();
    }
    Forget();
  }

 private:
  // A piece of the path, and where its two sides begin and end, the left one in the direction of the path.
  struct Piece {
    Point normal;   // of length 1, to the left, in the pen's space
    Point offset;   // the nib's edge there, in pixels
    double length;  // in the pen's space
    double free;    // of it, what corners have not cut off
    Point from;
    Point leftStart, leftEnd, rightStart, rightEnd;
  };

  static void SetStarts(Piece* piece, Point p) {
    piece->leftStart = p + piece->offset;
    piece->rightStart = p - piece->offset;
  }
  static void SetEnds(Piece* piece, Point p) {
    piece->leftEnd = p + piece->offset;
    piece->rightEnd = p - piece->offset;
  }
  void AddSides(const Piece& piece) {
    edges_.Line(piece.leftStart, piece.leftEnd);
    edges_.Line(piece.rightEnd, piece.rightStart);
  }

  void Forget() {
    pieceCount_ = 0;
    hasDirection_ = isDrawn_ = false;
    current_ = start_;
  }

  // Where two directions are the same the path is smooth, however sharply the lines that stand for a curve may turn.
  Join JoinWith(Point direction) const {
    constexpr double kSmooth = 0.02;  // of a radian
    const double along = Dot(direction_, direction);
    return along > 0 && std::fabs(Cross(direction_, direction)) <= kSmooth * along ? Join::kRound : nib_.join;
  }
  void SetDirections(Point first, Point last) {
    if (!hasDirection_) firstDirection_ = first;
    hasDirection_ = true;
    direction_ = last;
  }

  void CurveTo(const Cubic& c) {
    isDrawn_ = true;
    const auto isHidden = [this](Extent e) {
      const double reach = nib_.Reach();  // a mitre is as long as the first piece's direction says
      e = {e.x0 - reach, e.y0 - reach, e.x1 + reach, e.y1 + reach};
      return edges_.IsOutOfSight(e) || edges_.IsLeft(e);
    };
    const Point first = Direction(c.p[0], c.p[1], c.p[2], c.p[3]);
    const Point last = -1 * Direction(c.p[3], c.p[2], c.p[1], c.p[0]);
    Join join = JoinWith(first);  // with what comes before; within the curve there are no corners
    bool isAdded = false;
    // All of a curve may be within reach of a nib of millions of pixels, which can do with fewer lines.
    const double tolerance = std::max(kFlatness, kLargeNibFlatness * nib_.Reach());
    Flatten(c, tolerance, isHidden, [this, &join, &isAdded](Point p) {
      if (!AddPiece(p, join)) return;
      join = Join::kRound;
      isAdded = true;
    });
    if (isAdded) SetDirections(first, last);
  }
  // In which a curve leaves its end a, whose next controls are b, c, and whose other end is d.
  static Point Direction(Point a, Point b, Point c, Point d) {
    for (const Point& p : {b, c}) {
      if (p.x != a.x || p.y != a.y) return p - a;
    }
    return d - a;
  }

  // A piece to p, and its join with the one before, whose sides are known then. False for a piece without a length.
  bool AddPiece(Point p, Join join) {
    const Point along = nib_.ToPen(p - current_);
    const double length = std::sqrt(Dot(along, along));
    if (!(length > kLeastLength * nib_.radius) || !std::isfinite(length)) return false;
    const double k = 1 / length;
    Piece piece{{-k * along.y, k * along.x}, {}, length, length, current_, {}, {}, {}, {}};
    piece.offset = nib_.ToPixels(piece.normal);
    if (pieceCount_ == 0) {
      start_ = current_;
      first_ = piece;
    } else {
      Piece& before = pieceCount_ == 1 ? first_ : last_;
      if (IsTurningBack(before, piece)) {
        TurnBack(current_, p, &before, &piece, join);
      } else {
        AddJoin(current_, &before, &piece, join);
      }
      if (pieceCount_ > 1) AddSides(last_);  // the first one's starts are known when the contour ends
    }
    last_ = piece;
    ++pieceCount_;
    current_ = p;
    return true;
  }

  // Whether the shorter of two pieces lies on the other, but for what nobody sees.
  bool IsTurningBack(const Piece& a, const Piece& b) const {
    if (!(Dot(a.normal, b.normal) < kHalfTurn)) return false;
    const double aside = std::fabs(Cross(a.normal, b.normal)) * std::min(a.length, b.length);
    return aside * nib_.reach <= kFlatness * nib_.radius;
  }

  // At p a goes back as b, to `end`. Both would count where they cover a part of a pixel, so the shorter of them is
  // left out but for its far end, from which the path goes on; and half a turn, round or flat, ends the longer.
  void TurnBack(Point p, Point end, Piece* a, Piece* b, Join join) {
    const Cap cap = join == Join::kRound ? Cap::kRound : Cap::kButt;
    const double least = kLeastFree * nib_.radius;
    if (b->length <= a->length) {
      const Point start = end - std::min(1.0, least / b->length) * (end - p);
      SetEnds(a, p);
      AddCap(p, a->normal, cap);
      SetStarts(b, start);
      AddCap(start, -1 * b->normal, Cap::kButt);
      b->free = std::min(b->free, least);
    } else {
      const Point stop = a->from + std::min(1.0, least / a->length) * (p - a->from);
      SetEnds(a, stop);
      AddCap(stop, a->normal, Cap::kButt);
      SetStarts(b, p);
      AddCap(p, -1 * b->normal, cap);
      a->free = std::min(a->free, least);
    }
  }

  // Where the sides of a and of b meet at p, and what lies between them.
  void AddJoin(Point p, Piece* a, Piece* b, Join join) {
    const double sine = Cross(a->normal, b->normal);
    const double cosine = Dot(a->normal, b->normal);
    SetEnds(a, p);
    SetStarts(b, p);
    const bool isLeftOuter = sine < 0;
    if (isLeftOuter) {
      AddOuter(p, a->normal, a->offset, b->normal, b->offset, cosine, join);
    } else {
      AddOuter(p, -1 * b->normal, -1 * b->offset, -1 * a->normal, -1 * a->offset, cosine, join);
    }
    // The inner sides meet where they cross, if both are long enough to get there, and for each to cover the corner of
    // the other that is cut off. Of half a turn nobody knows where they cross.
    const double cut = nib_.radius * std::fabs(sine) / (1 + cosine);
    const bool isCovered = nib_.radius * std::fabs(sine) <= std::min(a->length, b->length);
    if (cosine >= kHalfTurn && isCovered && cut <= std::min(a->free, b->free)) {
      a->free -= cut;
      b->free -= cut;
      const Point corner = (1 / (1 + cosine)) * (a->offset + b->offset);
      if (isLeftOuter) {
        a->rightEnd = b->rightStart = p - corner;
      } else {
        a->leftEnd = b->leftStart = p + corner;
      }
    } else if (isLeftOuter) {
      edges_.Line(b->rightStart, p);
      edges_.Line(p, a->rightEnd);
    } else {
      edges_.Line(a->leftEnd, p);
      edges_.Line(p, b->leftStart);
    }
  }

  // From p + offset to p + nextOffset, clockwise in the pen's space.
  void AddOuter(Point p, Point normal, Point offset, Point nextNormal, Point nextOffset, double cosine, Join join) {
    if (cosine < nib_.flatCosine) {
      if (join == Join::kRound) {
        AddArc(p, normal, nextNormal);
        return;
      }
      // A mitre is as long as 1 / cos of half the angle between the normals.
      if (join == Join::kMiter && 2 <= nib_.miterLimit * nib_.miterLimit * (1 + cosine)) {
        const Point tip = p + (1 / (1 + cosine)) * (offset + nextOffset);
        edges_.Line(p + offset, tip);
        edges_.Line(tip, p + nextOffset);
        return;
      }
    }
    edges_.Line(p + offset, p + nextOffset);
  }

  // Around p from one normal to another, clockwise in the pen's space, at most half a turn.
  void AddArc(Point p, Point from, Point to) {
    const double angle = std::atan2(std::fabs(Cross(from, to)), Dot(from, to));
    const double steps = std::ceil(angle / nib_.arcStep);
    if (steps > kMaxSteps) {
      AddLongArc(p, from, angle);
      return;
    }
    const double turn = angle / steps;
    const double sine = -std::sin(turn);
    const double cosine = std::cos(turn);
    Point normal = from;
    Point at = p + nib_.ToPixels(from);
    for (int i = 1; i < static_cast<int>(steps); ++i) {
      normal = {normal.x * cosine - normal.y * sine, normal.x * sine + normal.y * cosine};
      const Point next = p + nib_.ToPixels(normal);
      edges_.Line(at, next);
      at = next;
    }
    edges_.Line(at, p + nib_.ToPixels(to));
  }

  // The same for a nib so large that only a part of it may be in sight: as cubics, whose error falls with the sixth
  // power of their angle, halved where they are seen.
  void AddLongArc(Point p, Point from, double angle) {
    const double pieces = std::ceil(angle / (std::numbers::pi / 2) * std::pow(nib_.reach / kCubicRadius, 1.0 / 6)) + 1;
    const double turn = angle / pieces;
    const double handle = 4.0 / 3 * std::tan(turn / 4);
    const auto isHidden = [this](const Extent& e) { return edges_.IsOutOfSight(e) || edges_.IsLeft(e); };
    Point at = p + nib_.ToPixels(from);
    for (int i = 0; i < static_cast<int>(pieces); ++i) {
      const Point to{from.x * std::cos(turn) + from.y * std::sin(turn),
                     from.y * std::cos(turn) - from.x * std::sin(turn)};
      const Cubic c{{p + nib_.ToPixels(from), p + nib_.ToPixels(from + handle * Point{from.y, -from.x}),
                     p + nib_.ToPixels(to - handle * Point{to.y, -to.x}), p + nib_.ToPixels(to)}};
      Flatten(c, kFlatness, isHidden, [this, &at](Point next) {
        edges_.Line(at, next);
        at = next;
      });
      from = to;
    }
    edges_.Line(at, p + nib_.ToPixels(from));
  }
  static constexpr double kCubicRadius = 70;  // a quarter circle this large errs by 0.02 pixels

  // What closes a piece that ends at p, on its way from the left side to the right one.
  void AddCap(Point p, Point normal, Cap cap) {
    const Point offset = nib_.ToPixels(normal);
    switch (cap) {
      case Cap::kButt:
        edges_.Line(p + offset, p - offset);
        break;
      case Cap::kRound:
        AddArc(p, normal, -1 * normal);
        break;
      case Cap::kSquare: {
        const Point ahead = nib_.ToPixels({normal.y, -normal.x});
        edges_.Line(p + offset, p + offset + ahead);
        edges_.Line(p + offset + ahead, p - offset + ahead);
        edges_.Line(p - offset + ahead, p - offset);
        break;
      }
    }
  }

  // A contour without a length: the nib itself, or a square upright in the pen's space.
  void AddDot() {
    if (nib_.cap == Cap::kButt || !hasMoved_) return;
    AddCap(start_, {0, 1}, nib_.cap);
    AddCap(start_, {0, -1}, nib_.cap);
  }

  // Of the radius; shorter pieces have no direction worth the name.
  static constexpr double kLeastLength = 1e-9;
  static constexpr double kHalfTurn = -1 + 1e-7;  // the cosine of its angle, and what is as good as that
  static constexpr double kLeastFree = 1e-3;      // of the radius: what is left of a piece that another covers
  static constexpr double kLargeNibFlatness = 1e-9;

  const Nib& nib_;
  Edges<Cell>& edges_;
  Point start_{0, 0};
  Point current_{0, 0};
  Piece first_{};
  Piece last_{};
  Point direction_{0, 0};       // of the path's last verb, at its end
  Point firstDirection_{0, 0};  // of the contour's first, at its start
  std::size_t pieceCount_ = 0;  // of the contour
  bool hasDirection_ = false;
  bool isDrawn_ = false;  // by more than a move
  bool hasMoved_ = false;
};

}  // namespace raster
