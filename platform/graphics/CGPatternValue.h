// What a pattern is made of. Private to the native layer.
#pragma once

#include <memory>

#include "CoreGraphics/CGPattern.h"
#include "platform/foundation/NativeObject.h"
#include "platform/graphics/CairoHandles.h"

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
  bool isOpaque = false;        ///< every pixel of the cell is
};

namespace platform {

/// Draws the cell unless it is there. False when it can't be drawn.
bool PrepareCell(CGPattern* pattern);

/// The pattern, made fainter by `alpha`, as cairo's source for device space, the cell's origin at `phase` of base
/// space. Null when the cell can't be drawn.
CairoPattern MakePatternSource(CGPattern* pattern, CGSize phase, double alpha, const CGAffineTransform& baseToDevice);

}  // namespace platform
