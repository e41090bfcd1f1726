// Straight edges into the cells of a tile.
//
// Edges come in doubles and are cut to the tile in doubles, by their own equation, so that an edge that begins a
// billion pixels away is as right as one that begins in sight. Only what is left is put into fixed point.
#pragma once

#include <utility>

#include "platform/raster/Cells.h"
#include "platform/raster/Path.h"

namespace raster {

template <typename Cell>
class Edges {
 public:
  /// With `antialias` a pixel is covered by its share of the area, otherwise wholly when its centre lies inside.
  Edges(Tile<Cell>* tile, bool antialias)
      : tile_(*tile),
        width_(tile->box.Width() * kSub),
        height_(tile->box.Height() * kSub),
        originX_(tile->box.x0),
        originY_(tile->box.y0),
        antialias_(antialias) {}

  /// Tells the extent of all edges: when it lies within the tile, nothing has to be cut. Edges that are exact keep to
  /// it, to a small part of 1/256 pixel.
  void SetExtent(const Extent& extent, bool isExact) {
    isInside_ = extent.x0 >= tile_.box.x0 && extent.y0 >= tile_.box.y0 && extent.x1 <= tile_.box.x1 &&
                extent.y1 <= tile_.box.y1;
    isExact_ = isExact;
  }

  /// True when what lies within such an extent leaves no trace, since it lies above, below or right of the tile.
  bool IsOutOfSight(const Extent& e) const {
    return e.y1 <= tile_.box.y0 || e.y0 >= tile_.box.y1 || e.x0 >= tile_.box.x1;
  }
  /// True when it lies left of the tile: only its heights count there.
  bool IsLeft(const Extent& e) const { return e.x1 <= tile_.box.x0; }
  bool IsInside() const { return isInside_; }

  /// An edge from a to b. The edges of a shape have to be closed contours, in any order.
  void Line(Point a, Point b) {
    a = {a.x - originX_, a.y - originY_};
    b = {b.x - originX_, b.y - originY_};
    if (isInside_ && isExact_) {
      Add(Fix(a.x), Fix(a.y), Fix(b.x), Fix(b.y));
    } else if (isInside_) {
      Add(FixIn(a.x, width_), FixIn(a.y, height_), FixIn(b.x, width_), FixIn(b.y, height_));
    } else {
      Cut(a, b);
    }
  }

 private:
  // Of a coordinate from 0 on, or a little less.
  static int Fix(double value) { return static_cast<int>(value * kSub + 0.5); }
  // Of one that should lie within the tile. A nib that is all but flat has no exact corners: no rounding, however
  // large, may lead out of the cells.
  static int FixIn(double value, int limit) {
    const double fixed = value * kSub + 0.5;
    return fixed > 0 ? fixed < limit ? static_cast<int>(fixed) : limit : 0;
  }

  // The part of an edge between top and bottom, left and right.
  void Cut(Point a, Point b) {
    int direction = 1;
    if (a.y > b.y) {
      std::swap(a, b);
      direction = -1;
    }
    const double bottom = tile_.box.Height();
    if (!(a.y < b.y) || b.y <= 0 || a.y >= bottom) return;
    const double slope = (b.x - a.x) / (b.y - a.y);
    Point from = a;
    Point to = b;
    if (a.y < 0) from = {a.x - a.y * slope, 0};
    if (b.y > bottom) to = {a.x + (bottom - a.y) * slope, bottom};
    CutSides(from, to, direction);
  }

  void CutSides(Point from, Point to, int direction) {
    const double right = tile_.box.Width();
    if (from.x >= 0 && to.x >= 0 && from.x <= right && to.x <= right) {
      AddDirected(Fix(from.x), Fix(from.y), Fix(to.x), Fix(to.y), direction);
      return;
    }
    if (from.x >= right && to.x >= right) return;
    if (from.x <= 0 && to.x <= 0) {
      AddLeft(Fix(from.y), Fix(to.y), direction);
      return;
    }
    // From left to right the edge is left of the tile, within it, and right of it.
    const double slope = (to.y - from.y) / (to.x - from.x);
    const auto at = [&](double x) {
      const double y = from.y + (x - from.x) * slope;
      return Fix(y > to.y ? to.y : y > from.y ? y : from.y);  // an edge as good as level may give no number
    };
    const bool turned = from.x > to.x;
    const Point& first = turned ? to : from;
    const Point& last = turned ? from : to;
    int y0 = Fix(first.y);
    int x0 = 0;
    if (first.x < 0) {
      const int cut = at(0);
      turned ? AddLeft(cut, y0, direction) : AddLeft(y0, cut, direction);
      y0 = cut;
    } else {
      x0 = Fix(first.x);
    }
    const bool leaves = last.x > right;
    const int x1 = leaves ? width_ : Fix(last.x);
    const int y1 = leaves ? at(right) : Fix(last.y);
    turned ? AddDirected(x1, y1, x0, y0, direction) : AddDirected(x0, y0, x1, y1, direction);
  }

  void Add(int x0, int y0, int x1, int y1) {
    if (y0 < y1) {
      AddDirected(x0, y0, x1, y1, 1);
    } else {
      AddDirected(x1, y1, x0, y0, -1);
    }
  }

  // Left of the tile an edge is a step of every row's sum, which costs the same for any number of rows.
  void AddLeft(int y0, int y1, int direction) {
    if (y0 >= y1 || !Count()) return;
    if (!antialias_) {
      y0 = CenterRow(y0) * kSub;
      y1 = CenterRow(y1) * kSub;
    }
    AddLeftEnd(y0, direction);
    AddLeftEnd(y1, -direction);
  }
  // From y on the row's sum has its full height; the row of y has what is left of it.
  void AddLeftEnd(int y, int direction) {
    const int row = y >> kSubBits;
    const int part = (kSub - (y & (kSub - 1))) * 2 * kSub * direction;
    tile_.left[row] += part;
    if (part != kFull * direction) tile_.left[row + 1] += kFull * direction - part;
  }

  // False when the cells can't count another edge; the tile's count tells.
  bool Count() { return ++tile_.edgeCount <= kMaxNarrowEdges || sizeof(Cell) > sizeof(std::int32_t); }

  // The first row whose centre is not above y.
  static int CenterRow(int y) { return (y + kSub / 2 - 1) >> kSubBits; }

  // y0 <= y1; all within the tile.
  void AddDirected(int x0, int y0, int x1, int y1, int direction) {
    if (y0 >= y1 || !Count()) return;
    if (!antialias_) {
      AddCenters(x0, y0, x1, y1, direction);
    } else if (x0 == x1) {
      AddUpright(x0, y0, y1, direction);
    } else {
      AddSlanted(x0, y0, x1, y1, direction);
    }
  }

  void AddCenters(int x0, int y0, int x1, int y1, int direction) {
    const double slope = static_cast<double>(x1 - x0) / (y1 - y0);
    const int end = CenterRow(y1);
    for (int row = CenterRow(y0); row < end; ++row) {
      constexpr int kHalf = kSub / 2;
      const double x = x0 + slope * (row * kSub + kHalf - y0);
      const int cell = (static_cast<int>(x + 0.5) + kSub / 2 - 1) >> kSubBits;
      RowOf(row)[cell] += Cell{direction} * kFull;
      Touch(row, cell, cell);
    }
  }

  void AddUpright(int x, int y0, int y1, int direction) {
    const int cell = x >> kSubBits;
    const int after = 2 * (x & (kSub - 1)) * direction;
    const int here = 2 * kSub * direction - after;
    for (int row = y0 >> kSubBits; y0 < y1; ++row) {
      const int end = y1 < (row + 1) * kSub ? y1 : (row + 1) * kSub;
      AddPair(row, cell, (end - y0) * here, (end - y0) * after);
      Touch(row, cell, cell + 1);
      y0 = end;
    }
  }

  void AddSlanted(int x0, int y0, int x1, int y1, int direction) {
    int row = y0 >> kSubBits;
    const int lastRow = (y1 - 1) >> kSubBits;
    if (row == lastRow) {
      AddInRow(row, x0, x1, y1 - y0, direction);
      return;
    }
    const double slope = static_cast<double>(x1 - x0) / (y1 - y0);
    double crossing = x0 + slope * ((row + 1) * kSub - y0) + 0.5;
    int x = static_cast<int>(crossing);
    AddInRow(row, x0, x, (row + 1) * kSub - y0, direction);
    const double step = slope * kSub;
    for (++row; row < lastRow; ++row) {
      crossing += step;
      const int next = static_cast<int>(crossing);
      AddInRow(row, x, next, kSub, direction);
      x = next;
    }
    AddInRow(row, x, x1, y1 - row * kSub, direction);
  }

  // A piece of `height` that goes from xa to xb, either way.
  void AddInRow(int row, int xa, int xb, int height, int direction) {
    const int first = (xa < xb ? xa : xb) >> kSubBits;
    const int last = (xa < xb ? xb : xa) >> kSubBits;
    if (first == last) {
      const int after = (xa & (kSub - 1)) + (xb & (kSub - 1));
      AddPair(row, first, height * direction * (2 * kSub - after), height * direction * after);
    } else {
      AddAcross(row, xa < xb ? xa : xb, xa < xb ? xb : xa, height, direction);
    }
    Touch(row, first, last + 1);
  }

  // The same through several pixels, each of which takes its share of the height.
  void AddAcross(int row, int xa, int xb, int height, int direction) {
    Cell* cells = RowOf(row);
    const float perStep = static_cast<float>(height) / static_cast<float>(xb - xa);
    const int first = xa >> kSubBits;
    const int last = xb >> kSubBits;
    int begin = xa & (kSub - 1);
    int done = 0;
    for (int cell = first; cell < last; ++cell) {
      const int reached = static_cast<int>(perStep * static_cast<float>((cell + 1) * kSub - xa) + 0.5F);
      const int share = (reached - done) * direction;
      const int after = begin + kSub;
      cells[cell] += share * (2 * kSub - after);
      cells[cell + 1] += share * after;
      done = reached;
      begin = 0;
    }
    const int share = (height - done) * direction;
    const int after = xb & (kSub - 1);
    cells[last] += share * (2 * kSub - after);
    cells[last + 1] += share * after;
  }

  void AddPair(int row, int cell, int here, int after) {
    Cell* cells = RowOf(row) + cell;
    cells[0] += here;
    cells[1] += after;
  }

  Cell* RowOf(int row) const { return tile_.cells + static_cast<std::size_t>(row) * tile_.stride; }

  void Touch(int row, int first, int last) {
    std::uint64_t* bits = tile_.bits + static_cast<std::size_t>(row) * tile_.bitStride;
    const auto end = static_cast<std::size_t>(last) / kGroup;
    for (std::size_t group = static_cast<std::size_t>(first) / kGroup; group <= end; ++group) {
      bits[group / 64] |= std::uint64_t{1} << group % 64;
    }
  }

  Tile<Cell>& tile_;
  int width_;
  int height_;
  double originX_;
  double originY_;
  bool antialias_;
  bool isInside_ = false;
  bool isExact_ = false;
};

}  // namespace raster
