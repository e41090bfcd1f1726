// The pixels of a pattern on a bitmap, row by row. Private to the native layer.
#pragma once

#include <array>

#include "platform/graphics/CGPatternValue.h"
#include "platform/raster/Kernels.h"

namespace platform {

/// A pattern's cell, repeated without end. One pixel of the cell is one of the bitmap.
class PatternRows final : public raster::RowSource {
 public:
  /// The cell's lower left corner stands at `phase` of the bitmap, whose rows go up in that space; parts of a pixel are
  /// rounded. `alpha`, 0 to 1, makes it fainter.
  PatternRows(CGPattern* pattern, CGSize phase, double alpha, const raster::Surface& surface);

  /// False when there is no cell, or a phase is no finite number.
  bool IsUsable() const { return cell_ != nullptr; }
  bool IsOpaque() const { return isOpaque_; }

  void Fetch(int x, int y, int count, std::uint32_t* pixels) const override;

 private:
  // The rows of a small cell are repeated beforehand: so many pixels can be copied at once from any column.
  static constexpr std::size_t kLargestSmallSide = 16;
  static constexpr std::size_t kRun = 64;

  bool IsSmall() const;
  void RepeatRows();
  void CopySmall(std::size_t row, std::size_t column, std::size_t count, std::uint32_t* pixels) const;
  void CopyLarge(std::size_t row, int column, int count, std::uint32_t* pixels) const;

  const std::uint32_t* cell_ = nullptr;
  std::size_t stride_ = 0;  // in pixels
  std::array<std::uint32_t, kLargestSmallSide*(kLargestSmallSide + kRun)> repeated_;
  std::size_t run_ = 0;  // whole cells that one copy makes; 0: the cell is large
  int width_ = 1;
  int height_ = 1;
  int startX_ = 0;  // added to a pixel of the bitmap, modulo the width: the cell's column
  int startY_ = 0;
  unsigned int alpha_ = 255;
  bool isOpaque_ = false;
};

}  // namespace platform
