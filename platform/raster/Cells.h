// The buffer in which coverage is added up.
//
// One number stands for each pixel of a tile. An edge that goes through a pixel adds to it how much of the pixel lies
// to the right of the edge, and to the next pixel what is missing there, each with the edge's direction as its sign.
// The running sum along a row is then the winding number times the covered area: an exact area, not a sampled one. The
// way goes back to "Efficient anti-aliasing by area accumulation" as in R. Levien's font-rs (2016) and the cells of D.
// Turner's FreeType rasteriser; here the sums are whole numbers, so that they cancel without a rest.
//
// A bit for each group of four pixels tells whether an edge touched it. Whoever reads the numbers clears them, so that
// the buffer is always zero between shapes and nothing but what was touched costs time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/raster/Box.h"

namespace raster {

/// Coordinates within a tile are whole numbers of 1/256 pixel.
inline constexpr int kSubBits = 8;
inline constexpr int kSub = 1 << kSubBits;
/// A pixel that is covered once: its height times twice its width.
inline constexpr int kFullBits = 2 * kSubBits + 1;
inline constexpr int kFull = 1 << kFullBits;
/// Pixels that share a bit.
inline constexpr int kGroup = 4;
/// So many edges can't overflow a number of 32 bits, whatever their directions.
inline constexpr std::size_t kMaxNarrowEdges = (std::size_t{1} << (31 - kFullBits)) - 1;

/// What a shape is added up in. Cells are zero and bits are clear between shapes.
class Workspace {
 public:
  static constexpr std::size_t kBytes = std::size_t{1} << 21;  ///< of all cells of a tile
  static constexpr int kMaxTileWidth = 1 << 16;
  static constexpr int kMaxTileHeight = 1 << 13;

  /// Null when there is no memory.
  static std::unique_ptr<Workspace> New();

  void* cells() { return cells_.get(); }
  std::uint64_t* bits() { return bits_.get(); }
  std::int64_t* left() { return left_.get(); }

 private:
  struct Free {
    void operator()(void* memory) const;
  };
  std::unique_ptr<void, Free> cells_;
  std::unique_ptr<std::uint64_t[], Free> bits_;
  std::unique_ptr<std::int64_t[], Free> left_;
};

/// A workspace for one shape. Those of shapes that are done serve the next ones, of any thread: there are as many as
/// shapes were ever painted at a time, and no more than four wait. What an exception leaves behind is given up.
class WorkspaceLease {
 public:
  WorkspaceLease();
  ~WorkspaceLease();
  WorkspaceLease(const WorkspaceLease&) = delete;
  WorkspaceLease& operator=(const WorkspaceLease&) = delete;

  Workspace* get() const { return workspace_.get(); }  ///< null when there is no memory

 private:
  std::unique_ptr<Workspace> workspace_;
  int exceptions_;
};

/// The cells of a tile of the target.
template <typename Cell>
struct Tile {
  Box box;              ///< in pixels of the target
  Cell* cells;          ///< rows of `stride`, at least two more than the width
  std::size_t stride;   ///< a multiple of kGroup
  std::uint64_t* bits;  ///< rows of `bitStride` words, a bit a group
  std::size_t bitStride;
  std::int64_t* left;  ///< for each row, by how much what lies left of the tile changes from the row above
  std::size_t edgeCount = 0;

  Tile(Workspace& workspace, const Box& tileBox)
      : box(tileBox),
        cells(static_cast<Cell*>(workspace.cells())),
        stride(StrideOf(tileBox.Width())),
        bits(workspace.bits()),
        bitStride(BitStrideOf(stride)),
        left(workspace.left()) {}

  static std::size_t StrideOf(int width) {
    return (static_cast<std::size_t>(width) + 2 + kGroup - 1) / kGroup * kGroup;
  }
  static std::size_t BitStrideOf(std::size_t stride) { return (stride / kGroup + 63) / 64; }

  /// How many rows of a width fit into a workspace; at least one.
  static int MaxRows(int width) {
    const std::size_t rows = Workspace::kBytes / (StrideOf(width) * sizeof(Cell));
    return static_cast<int>(rows < std::size_t{Workspace::kMaxTileHeight} ? rows : Workspace::kMaxTileHeight);
  }
};

}  // namespace raster
