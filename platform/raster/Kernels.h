// The inner loops: from cells to coverage, and from coverage to pixels. Each is compiled for several widths of vectors,
// the one that the processor has is chosen when the program runs, and all give the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/raster/Cells.h"
#include "platform/raster/Path.h"
#include "platform/raster/Surface.h"

namespace raster {

/// Something that is painted and isn't one colour.
class RowSource {
 public:
  virtual ~RowSource() = default;
  /// Writes `count` premultiplied pixels from (x, y) of the target on, in the target's order.
  virtual void Fetch(int x, int y, int count, std::uint32_t* pixels) const = 0;
};

/// What is painted. Pixels are premultiplied and in the target's order.
struct Ink {
  enum class Kind : std::uint8_t {
    kColor,
    kRows,
    kClear,      ///< pixels become transparent
    kSoftLight,  ///< rows, mixed by the blend mode of that name
    kHardLight,
  };
  Kind kind = Kind::kColor;
  bool isOpaque = false;  ///< no pixel of it is translucent
  std::uint32_t color = 0;
  const RowSource* rows = nullptr;
};

/// The pixels x0 <= x < x1 of a row.
struct Run {
  int x0 = 0;
  int x1 = 0;
};

/// Bytes of coverage for the pixels of a box, a row `stride` bytes after the one above.
struct MaskView {
  const unsigned char* bytes = nullptr;
  std::size_t stride = 0;
  Box box;
  const Run* full = nullptr;  ///< of each row, pixels that are covered wholly; may be null

  const unsigned char* At(int x, int y) const {
    return bytes + static_cast<std::size_t>(y - box.y0) * stride + static_cast<std::size_t>(x - box.x0);
  }
};

/// The longest stretch of whole coverage in a row of a mask.
Run LongestFull(const MaskView& mask, int y);

/// Paints what the cells of a tile cover, and clears them. `clip` may be null; it contains the tile's box, which lies
/// within the surface.
void SweepTile(const Tile<std::int32_t>& tile, FillRule rule, const MaskView* clip, const Surface& surface,
               const Ink& ink);

/// Writes what the cells of a tile cover, 0 to 255, rows of the tile's width `stride` bytes apart, and clears them.
void SweepToBytes(const Tile<std::int32_t>& tile, FillRule rule, unsigned char* bytes, std::size_t stride);

/// The same for `count` cells that count more edges; returns the sum behind them, `sum` being that before them.
std::int64_t SweepWide(std::int64_t* cells, int count, FillRule rule, std::int64_t sum, unsigned char* bytes);

/// Paints `count` pixels from (x, y) on through coverage of a byte each. `clip` may be null; it contains them.
void PaintThrough(const Surface& surface, int x, int y, int count, const unsigned char* coverage, const MaskView* clip,
                  const Ink& ink);

/// Paints `count` pixels from (x, y) on. `clip` may be null; it contains them.
void PaintSpan(const Surface& surface, int x, int y, int count, const MaskView* clip, const Ink& ink);

/// bytes[i] = bytes[i] * by[i] / 255, rounded.
void MultiplyBytes(unsigned char* bytes, const unsigned char* by, std::size_t count);

/// Makes pixels of `count` colours of four components each: red, green and blue, not multiplied by the opacity, and it.
/// What is beyond 0 to 1 counts as the end that it is beyond, what is no number as 0. `alpha`, 0 to 1, multiplies the
/// opacity.
void PackColors(const double* colors, std::size_t count, double alpha, PixelOrder order, std::uint32_t* pixels);

/// A row of a table's entries: pixel i takes the one at first + step * i, of 0 to last; what lies before or behind
/// takes the first or the last. A position that is no number takes any.
void LookUpLinear(const std::uint32_t* table, int last, double first, double step, int count, std::uint32_t* pixels);

/// The same where the position is offset + factor * the distance of (x + stepX i, y + stepY i) from 0.
struct RadialRow {
  double x, y, stepX, stepY, factor, offset;
};
void LookUpRadial(const std::uint32_t* table, int last, const RadialRow& row, int count, std::uint32_t* pixels);

/// Somebody else's pixels, rows of `stride` pixels from the top down.
struct PixelGrid {
  const std::uint32_t* pixels = nullptr;
  std::size_t stride = 0;
  int width = 0;
  int height = 0;
};

/// A row through a grid: pixel i is mixed of the four pixels around (x + stepX i, y + stepY i), where whole numbers are
/// the pixels' centres. Beyond the edges the grid goes on as its last pixels. The grid's pixels are blue first, those
/// of the row in an order of the caller's.
struct GridRow {
  double x, y, stepX, stepY;
  PixelOrder order = PixelOrder::kBlueFirst;
};
void LookUpBilinear(const PixelGrid& grid, const GridRow& row, int count, std::uint32_t* pixels);

/// Turns the bytes of each pixel round: from one order into the other. Both may be the same array.
void CopyReversed(const std::uint32_t* from, std::size_t count, std::uint32_t* to);

/// bytes[i] * by / 255, rounded; `by` is 0 to 255.
void ScaleBytes(unsigned char* bytes, unsigned int by, std::size_t count);

}  // namespace raster
