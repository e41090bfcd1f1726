// The edges of a path that is filled.
#pragma once

#include "platform/raster/Edges.h"
#include "platform/raster/Flatten.h"

namespace raster {

/// Sends the contours of a path to the cells of a tile, open ones closed by a line.
template <typename Cell>
class FillEdges {
 public:
  explicit FillEdges(Edges<Cell>* edges) : edges_(*edges) {}

  void MoveTo(Point p) {
    Close();
    start_ = current_ = p;
  }
  void LineTo(Point p) {
    edges_.Line(current_, p);
    current_ = p;
  }
  void QuadTo(Point control, Point p) { CurveTo(CubicOf(current_, control, p)); }
  void CubicTo(Point first, Point second, Point p) { CurveTo({{current_, first, second, p}}); }
  void Close() {
    if (current_.x != start_.x || current_.y != start_.y) LineTo(start_);
  }

 private:
  void CurveTo(const Cubic& c) {
    const auto isHidden = [this](const Extent& e) { return edges_.IsOutOfSight(e) || edges_.IsLeft(e); };
    Flatten(c, kFlatness, isHidden, [this](Point p) { LineTo(p); });
  }

  Edges<Cell>& edges_;
  Point start_{0, 0};
  Point current_{0, 0};
};

}  // namespace raster
