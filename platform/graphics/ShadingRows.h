// The pixels of a shading, row by row. Private to the native layer.
#pragma once

#include <array>
#include <cstdint>

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGShadingValue.h"
#include "platform/raster/Kernels.h"

namespace platform {

/// A shading drawn over a box of device space. Its colours are looked up in a table of 512 premultiplied pixels,
/// however large or small the box: that is several times faster than cairo's own gradients of many stops. An entry is
/// made when a pixel first asks for it, since a small box asks for few of them. The shading must outlive the rows.
class ShadingRows final : public raster::RowSource {
 public:
  /// `userToDevice` must have an inverse; `alpha` multiplies the opacity.
  ShadingRows(const CGShading& shading, const CGAffineTransform& userToDevice, const PixelBox& box, double alpha,
              raster::PixelOrder order);

  /// True when every pixel is known to be opaque.
  bool IsOpaque() const { return isOpaque_; }

  /// Writes `count` pixels from (x, y) of device space on, taken at the pixels' centres. Not for two threads at a time.
  void Fetch(int x, int y, int count, std::uint32_t* pixels) const override;

 private:
  /// The position of the shading's end; its start is at 0.
  static constexpr int kLast = 512;
  /// One entry more at either side for what lies beyond the ends.
  static constexpr int kEntries = kLast + 3;

  void PrepareAxis(const CGShading& shading);
  void MakeAllEntries();
  void MakeEntry(int entry) const;
  template <typename EntryAt>
  void LookUp(int count, std::uint32_t* pixels, EntryAt entryAt) const;

  const CGShading& shading_;
  double alpha_;
  raster::PixelOrder order_;
  CGAffineTransform deviceToUser_;
  // Axial: the position in the table is linear in device space.
  double origin_ = 0;
  double stepX_ = 0;
  double stepY_ = 0;
  // Radial: the position is linear in the distance from the centre.
  CGPoint center_{0, 0};
  double radialFactor_ = 0;
  double radialOffset_ = 0;

  bool isComplete_ = false;
  bool isOpaque_ = false;
  mutable std::array<bool, kEntries> isMade_{};
  mutable std::array<std::uint32_t, kEntries> table_;
};

/// The inverse of a map that has one.
inline CGAffineTransform InverseOf(const CGAffineTransform& m) {
  const double k = 1 / (m.a * m.d - m.b * m.c);
  return {m.d * k, -m.b * k, -m.c * k, m.a * k, (m.c * m.ty - m.d * m.tx) * k, (m.b * m.tx - m.a * m.ty) * k};
}

}  // namespace platform
