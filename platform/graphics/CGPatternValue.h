// What a pattern is made of. Private to the native layer.
#pragma once

#include <cstdint>
#include <memory>

#include "CoreGraphics/CGPattern.h"
#include "platform/foundation/NativeObject.h"
#include "platform/graphics/CairoHandles.h"
#include "platform/raster/Kernels.h"

struct CGPattern final : platform::NativeObject {
  CGPattern(void* patternInfo, int cellWidth, int cellHeight, const CGPatternCallbacks& patternCallbacks)
      : info(patternInfo), width(cellWidth), height(cellHeight), callbacks(patternCallbacks) {}
  ~CGPattern() override {
    if (callbacks.releaseInfo != nullptr) callbacks.releaseInfo(info);
  }

  void* info;
  int width;
  int height;
  CGPatternCallbacks callbacks;
  platform::CairoSurface cell;  ///< drawn on first use, rows from the top down
  /// The same for bitmaps with the alpha first, made on first use there, without gaps between the rows.
  std::unique_ptr<std::uint32_t[]> alphaFirstCell;
  bool isOpaque = false;      ///< every pixel of the cell is
  bool isBeingDrawn = false;  ///< a cell can't be filled with itself
};

namespace platform {

/// Draws the pattern's cell if that was not done yet; false when it is being drawn. Throws when memory lacks.
bool DrawCellOnce(CGPattern* pattern);

/// The pixels of a cell that was drawn, in an order. Throws when memory lacks.
raster::PixelGrid CellIn(CGPattern* pattern, raster::PixelOrder order);

/// A cell of the pattern's size, repeated, as cairo's source for device space: one cell's origin lies at `phase` of
/// base space, however far away. Null when base space has no inverse.
CairoPattern RepeatCell(cairo_surface_t* cell, const CGPattern& pattern, CGSize phase,
                        const CGAffineTransform& baseToDevice);

/// The pattern, made fainter by `alpha`, as cairo's source for device space, the cell's origin at `phase` of base
/// space. Null when the cell can't be drawn.
CairoPattern MakePatternSource(CGPattern* pattern, CGSize phase, double alpha, const CGAffineTransform& baseToDevice);

}  // namespace platform
