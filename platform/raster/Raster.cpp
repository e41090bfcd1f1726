#include "platform/raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

#include "platform/raster/Blend.h"
#include "platform/raster/FillEdges.h"
#include "platform/raster/StrokeEdges.h"

namespace raster {
namespace {

using ByteArray = std::unique_ptr<unsigned char[]>;

ByteArray TakeBytes(std::size_t count) { return ByteArray(new (std::nothrow) unsigned char[count]); }

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
    edges.SetInside(extent);
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

// Goes through the rows of a tile that has more edges than the narrow cells can count; row(y, coverage) gets each.
template <typename Row>
bool SweepWide(Workspace& workspace, const Prepared& shape, const Box& box, const Row& row) {
  const ByteArray coverage = TakeBytes(static_cast<std::size_t>(box.Width()));
  if (coverage == nullptr) return false;
  const int rows = Tile<std::int64_t>::MaxRows(box.Width());
  for (int y = box.y0; y < box.y1; y += rows) {
    Tile<std::int64_t> tile(workspace, {box.x0, y, box.x1, std::min(y + rows, box.y1)});
    shape.AddTo(&tile);
    std::int64_t sum = 0;
    for (int i = 0; i < tile.box.Height(); ++i) {
      SweepWideRow(tile, shape.rule, i, &sum, coverage.get());
      row(y + i, coverage.get());
    }
    tile.left[tile.box.Height()] = 0;
  }
  return true;
}

// Forgets the edges of a tile.
void Wipe(const Tile<std::int32_t>& tile) {
  const auto rows = static_cast<std::size_t>(tile.box.Height());
  std::fill_n(tile.cells, rows * tile.stride, 0);
  std::fill_n(tile.bits, rows * tile.bitStride, 0);
  std::fill_n(tile.left, rows + 1, 0);
}

// Calls use(tile) for one tile after another until all of a box is done. Tiles with too many edges are handed to
// useRow(box, y, coverage) row by row.
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
        if (!use(tile)) return false;
        continue;
      }
      Wipe(tile);
      const Box part = tile.box;
      if (!SweepWide(*workspace, shape, part, [&](int row, unsigned char* coverage) { useRow(part, row, coverage); })) {
        return false;
      }
    }
  }
  return true;
}

void PaintRow(const Surface& surface, const Box& box, int y, unsigned char* coverage, const Clip& clip,
              const Ink& ink) {
  if (clip.mask != nullptr) {
    MultiplyBytes(coverage, clip.mask->At(box.x0, y), static_cast<std::size_t>(box.Width()));
  }
  (ink.IsBlended() ? BlendThrough : PaintThrough)(surface, box.x0, y, box.Width(), coverage, ink);
}

// Calls plain(box, y) for each row of a box that can be seen; under a mask and for blended inks cover(box, y, row)
// fills a row of coverage instead, which is painted through.
template <typename Plain, typename CoverRow>
bool PaintRows(const Surface& surface, const Box& wanted, const Clip& clip, const Ink& ink, const Plain& plain,
               const CoverRow& cover) {
  const Box box = Intersection(Intersection(wanted, clip.box), surface.Bounds());
  if (box.IsEmpty()) return true;
  const bool isPlain = clip.mask == nullptr && !ink.IsBlended();
  const ByteArray row = isPlain ? nullptr : TakeBytes(static_cast<std::size_t>(box.Width()));
  if (!isPlain && row == nullptr) return false;
  for (int y = box.y0; y < box.y1; ++y) {
    if (isPlain) {
      plain(box, y);
      continue;
    }
    cover(box, y, row.get());
    PaintRow(surface, box, y, row.get(), clip, ink);
  }
  return true;
}

// By way of bytes, for inks that have no fast way.
bool PaintByBytes(const Surface& surface, const Tile<std::int32_t>& tile, FillRule rule, const Clip& clip,
                  const Ink& ink) {
  const auto width = static_cast<std::size_t>(tile.box.Width());
  const std::size_t size = width * static_cast<std::size_t>(tile.box.Height());
  const ByteArray coverage = TakeBytes(size);
  if (coverage == nullptr) {
    Wipe(tile);
    return false;
  }
  std::memset(coverage.get(), 0, size);
  SweepToBytes(tile, rule, coverage.get(), width);
  for (int y = tile.box.y0; y < tile.box.y1; ++y) {
    PaintRow(surface, tile.box, y, coverage.get() + static_cast<std::size_t>(y - tile.box.y0) * width, clip, ink);
  }
  return true;
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
      prepared, box,
      [&](const Tile<std::int32_t>& tile) {
        if (ink.IsBlended()) return PaintByBytes(surface, tile, prepared.rule, clip, ink);
        SweepTile(tile, prepared.rule, clip.mask, surface, ink);
        return true;
      },
      [&](const Box& part, int y, unsigned char* coverage) { PaintRow(surface, part, y, coverage, clip, ink); });
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
      [&](const Tile<std::int32_t>& tile) {
        SweepToBytes(tile, prepared.rule, at(tile.box.x0, tile.box.y0), stride);
        return true;
      },
      [&](const Box& part, int y, const unsigned char* coverage) {
        std::memcpy(at(part.x0, y), coverage, static_cast<std::size_t>(part.Width()));
      });
}

bool PaintMask(const Surface& surface, const MaskView& mask, const Clip& clip, const Ink& ink) {
  return PaintRows(
      surface, mask.box, clip, ink,
      [&](const Box& box, int y) { PaintThrough(surface, box.x0, y, box.Width(), mask.At(box.x0, y), ink); },
      [&](const Box& box, int y, unsigned char* row) {
        std::memcpy(row, mask.At(box.x0, y), static_cast<std::size_t>(box.Width()));
      });
}

bool PaintBox(const Surface& surface, const Box& wanted, const Clip& clip, const Ink& ink) {
  return PaintRows(
      surface, wanted, clip, ink, [&](const Box& box, int y) { PaintSpan(surface, box.x0, y, box.Width(), ink); },
      [](const Box& box, int, unsigned char* row) { std::memset(row, 255, static_cast<std::size_t>(box.Width())); });
}

}  // namespace raster
