#include "platform/raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/raster/FillEdges.h"
#include "platform/raster/StrokeEdges.h"

namespace raster {
namespace {

int Whole(double value, int low, int high) {
  if (!(value > low)) return low;
  return value < high ? static_cast<int>(value) : high;
}

// A shape with what was found out about it once.
struct Prepared {
  const Shape& shape;
  Extent extent;
  Nib nib;
  FillRule rule;  // that of the edges: those of a stroke are put together under the non-zero rule

  explicit Prepared(const Shape& s) : shape(s), rule(s.stroke != nullptr ? FillRule::kNonZero : s.rule) {}

  // False: nothing to paint.
  bool SetUp() {
    if (shape.path.verbCount == 0 || !ExtentOf(shape.path, &extent)) return false;
    if (shape.stroke == nullptr) return true;
    if (!nib.SetUp(*shape.stroke)) return false;
    const double reach = nib.Reach();
    extent = {extent.x0 - reach, extent.y0 - reach, extent.x1 + reach, extent.y1 + reach};
    return true;
  }

  Box BoxWithin(const Box& bounds) const {
    return {Whole(std::floor(extent.x0), bounds.x0, bounds.x1), Whole(std::floor(extent.y0), bounds.y0, bounds.y1),
            Whole(std::ceil(extent.x1), bounds.x0, bounds.x1), Whole(std::ceil(extent.y1), bounds.y0, bounds.y1)};
  }

  template <typename Cell>
  void AddTo(Tile<Cell>* tile) const {
    Edges<Cell> edges(tile, shape.antialias);
    edges.SetExtent(extent, shape.stroke == nullptr || nib.isExact);
    if (shape.stroke != nullptr) {
      StrokeEdges<Cell> stroke(nib, &edges);
      Visit(shape.path, stroke);
      stroke.End();
    } else {
      FillEdges<Cell> fill(&edges);
      Visit(shape.path, fill);
      fill.Close();
    }
  }
};

// Goes through a box that has more edges than the narrow cells can count; row(x, y, count, coverage) gets its rows in
// pieces.
template <typename Row>
void SweepInWideTiles(Workspace& workspace, const Prepared& shape, const Box& box, const Row& row) {
  constexpr int kPiece = 1024;
  unsigned char coverage[kPiece];
  const int width = box.Width();
  const int rows = Tile<std::int64_t>::MaxRows(width);
  for (int y = box.y0; y < box.y1; y += rows) {
    Tile<std::int64_t> tile(workspace, {box.x0, y, box.x1, std::min(y + rows, box.y1)});
    shape.AddTo(&tile);
    std::int64_t left = 0;
    for (int i = 0; i < tile.box.Height(); ++i) {
      std::int64_t* cells = tile.cells + static_cast<std::size_t>(i) * tile.stride;
      std::int64_t sum = left += tile.left[i];
      for (int x = 0; x < width; x += kPiece) {
        const int count = std::min(kPiece, width - x);
        sum = SweepWide(cells + x, count, shape.rule, sum, coverage);
        row(box.x0 + x, y + i, count, coverage);
      }
      std::fill(cells + width, cells + tile.stride, 0);
    }
    std::fill_n(tile.bits, static_cast<std::size_t>(tile.box.Height()) * tile.bitStride, 0);
    std::fill_n(tile.left, tile.box.Height() + 1, 0);
  }
}

// Forgets the edges of a tile.
void Wipe(const Tile<std::int32_t>& tile) {
  const auto rows = static_cast<std::size_t>(tile.box.Height());
  std::fill_n(tile.cells, rows * tile.stride, 0);
  std::fill_n(tile.bits, rows * tile.bitStride, 0);
  std::fill_n(tile.left, rows + 1, 0);
}

// Calls use(tile) for one tile after another until all of a box is done. Tiles with too many edges are handed to
// useRow(x, y, count, coverage) in pieces of rows.
template <typename Use, typename UseRow>
bool InTiles(const Prepared& shape, const Box& box, const Use& use, const UseRow& useRow) {
  const WorkspaceLease lease;
  Workspace* workspace = lease.get();
  if (workspace == nullptr) return false;
  for (int x = box.x0; x < box.x1; x += Workspace::kMaxTileWidth) {
    const int end = std::min(box.x1 - x, Workspace::kMaxTileWidth) + x;
    const int rows = Tile<std::int32_t>::MaxRows(end - x);
    for (int y = box.y0; y < box.y1; y += rows) {
      Tile<std::int32_t> tile(*workspace, {x, y, end, std::min(y + rows, box.y1)});
      shape.AddTo(&tile);
      if (tile.edgeCount <= kMaxNarrowEdges) {
        use(tile);
      } else {
        Wipe(tile);
        SweepInWideTiles(*workspace, shape, tile.box, useRow);
      }
    }
  }
  return true;
}

// The rows of a box that can be seen, one after another: row(box, y).
template <typename Row>
void InRows(const Surface& surface, const Box& wanted, const Clip& clip, const Row& row) {
  const Box box = Intersection(Intersection(wanted, clip.box), surface.Bounds());
  for (int y = box.y0; y < box.y1 && !box.IsEmpty(); ++y) row(box, y);
}

}  // namespace

Box BoxOf(const Shape& shape, const Box& bounds) {
  Prepared prepared(shape);
  return prepared.SetUp() ? prepared.BoxWithin(bounds) : Box{};
}

bool Paint(const Surface& surface, const Shape& shape, const Clip& clip, const Ink& ink) {
  Prepared prepared(shape);
  const Box bounds = Intersection(clip.box, surface.Bounds());
  if (bounds.IsEmpty() || !prepared.SetUp()) return true;
  const Box box = prepared.BoxWithin(bounds);
  if (box.IsEmpty()) return true;
  return InTiles(
      prepared, box, [&](const Tile<std::int32_t>& tile) { SweepTile(tile, prepared.rule, clip.mask, surface, ink); },
      [&](int x, int y, int count, const unsigned char* coverage) {
        PaintThrough(surface, x, y, count, coverage, clip.mask, ink);
      });
}

bool Cover(const Shape& shape, const Box& box, unsigned char* bytes, std::size_t stride) {
  const auto at = [&](int x, int y) {
    return bytes + static_cast<std::size_t>(y - box.y0) * stride + static_cast<std::size_t>(x - box.x0);
  };
  for (int y = box.y0; y < box.y1; ++y) std::memset(at(box.x0, y), 0, static_cast<std::size_t>(box.Width()));
  Prepared prepared(shape);
  if (!prepared.SetUp()) return true;
  const Box touched = prepared.BoxWithin(box);
  if (touched.IsEmpty()) return true;
  return InTiles(
      prepared, touched,
      [&](const Tile<std::int32_t>& tile) { SweepToBytes(tile, prepared.rule, at(tile.box.x0, tile.box.y0), stride); },
      [&](int x, int y, int count, const unsigned char* coverage) {
        std::memcpy(at(x, y), coverage, static_cast<std::size_t>(count));
      });
}

void PaintMask(const Surface& surface, const MaskView& mask, const Clip& clip, const Ink& ink) {
  InRows(surface, mask.box, clip, [&](const Box& box, int y) {
    PaintThrough(surface, box.x0, y, box.Width(), mask.At(box.x0, y), clip.mask, ink);
  });
}

void PaintBox(const Surface& surface, const Box& wanted, const Clip& clip, const Ink& ink) {
  InRows(surface, wanted, clip,
         [&](const Box& box, int y) { PaintSpan(surface, box.x0, y, box.Width(), clip.mask, ink); });
}

}  // namespace raster
