// The pixels of a shading, row by row. Private to the native layer.
#pragma once

#include <array>
#include <cstdint>

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGShadingValue.h"

namespace platform {

/// A shading drawn over a box of device space. Its colours are looked up in a table of premultiplied pixels that is
/// made once: that is several times faster than cairo's own gradients of many stops.
class ShadingRows {
 public:
  /// `userToDevice` must have an inverse; `alpha` multiplies the opacity.
  ShadingRows(const CGShading& shading, const CGAffineTransform& userToDevice, const PixelBox& box, double alpha);

  /// True when every pixel is opaque.
  bool IsOpaque() const { return isOpaque_; }

  /// Writes `count` pixels from (x, y) of device space on, in cairo's order, taken at the pixels' centres.
  void Fill(int x, int y, int count, std::uint32_t* pixels) const;

 private:
  static constexpr int kMaxSteps = 1024;
  static constexpr int kStepsPerPixel = 2;

  void FillTable(const CGShading& shading, double alpha);
  void PrepareAxis(const CGShading& shading);

  CGAffineTransform deviceToUser_;
  bool radial_;
  // Axial: the position in the table is linear in device space.
  double origin_ = 0;
  double stepX_ = 0;
  double stepY_ = 0;
  // Radial: the position is linear in the distance from the centre.
  CGPoint center_{0, 0};
  double radialFactor_ = 0;
  double radialOffset_ = 0;

  bool isOpaque_ = false;
  int last_;  ///< the position of the shading's end; its start is at 0
  /// One entry more at either side for what lies beyond the ends.
  std::array<std::uint32_t, kMaxSteps + 3> table_;
};

/// The inverse of a map that has one.
CGAffineTransform InverseOf(const CGAffineTransform& m);

/// Sets a gradient of cairo's own as the source, for pages: with as few stops as tell its colours to half a step of
/// 255.
bool SetVectorSource(CGContext* context, const CGShading& shading);

}  // namespace platform
