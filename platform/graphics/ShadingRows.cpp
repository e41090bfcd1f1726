#include "platform/graphics/ShadingRows.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

// From so many pixels on it is quicker to make the whole table than to ask for each pixel.
constexpr double kManyPixels = 1024;

// The table's entry for a position anywhere; a position that is no number counts as before the start.
template <typename Real>
int EntryOf(Real position, int last) {
  const Real top = static_cast<Real>(last) + Real(2);
  Real entry = position + Real(1.5);
  entry = entry > Real(0) ? entry : Real(0);
  entry = entry < top ? entry : top;
  return static_cast<int>(entry);
}

}  // namespace

ShadingRows::ShadingRows(const CGShading& shading, const CGAffineTransform& userToDevice, const PixelBox& box,
                         double alpha, raster::PixelOrder order)
    : shading_(shading), alpha_(alpha), order_(order), deviceToUser_(InverseOf(userToDevice)) {
  PrepareAxis(shading);
  isComplete_ = static_cast<double>(box.x1 - box.x0) * (box.y1 - box.y0) >= kManyPixels;
  if (!isComplete_) return;
  MakeAllEntries();
  isOpaque_ = std::all_of(table_.begin(), table_.end(),
                          [order](std::uint32_t pixel) { return raster::AlphaOf(pixel, order) == 255; });
}

// All colours first, then all pixels: each loop does one thing, and quickly.
void ShadingRows::MakeAllEntries() {
  const CGFunction& function = *shading_.function.Get();
  std::array<CGFloat, 4 * (kLast + 1)> colors{};
  for (std::size_t i = 0; i <= kLast; ++i) {
    const CGFloat input = static_cast<double>(i) / kLast;
    function.callbacks.evaluate(function.info, &input, &colors[4 * i]);
  }
  raster::PackColors(colors.data(), kLast + 1, alpha_, order_, &table_[1]);
  table_[0] = shading_.extendStart ? table_[1] : 0;
  table_[kEntries - 1] = shading_.extendEnd ? table_[kEntries - 2] : 0;
}

// The first and the last entry are what lies beyond the ends.
void ShadingRows::MakeEntry(int entry) const {
  const auto at = static_cast<std::size_t>(entry);
  isMade_[at] = true;
  table_[at] = 0;
  if ((entry == 0 && !shading_.extendStart) || (entry == kEntries - 1 && !shading_.extendEnd)) return;
  const CGFunction& function = *shading_.function.Get();
  const CGFloat input = static_cast<double>(std::clamp(entry - 1, 0, kLast)) / kLast;
  CGFloat color[4] = {0, 0, 0, 0};
  function.callbacks.evaluate(function.info, &input, color);
  raster::PackColors(color, 1, alpha_, order_, &table_[at]);
}

void ShadingRows::PrepareAxis(const CGShading& shading) {
  if (shading.radial) {
    center_ = shading.start;
    radialFactor_ = kLast / (shading.endRadius - shading.startRadius);
    radialOffset_ = -shading.startRadius * radialFactor_;
    return;
  }
  const double dx = shading.end.x - shading.start.x;
  const double dy = shading.end.y - shading.start.y;
  const double factor = kLast / (dx * dx + dy * dy);
  const CGAffineTransform& m = deviceToUser_;
  stepX_ = (m.a * dx + m.b * dy) * factor;
  stepY_ = (m.c * dx + m.d * dy) * factor;
  origin_ = ((m.tx - shading.start.x) * dx + (m.ty - shading.start.y) * dy) * factor;
}

// For a table that is made entry by entry.
template <typename EntryAt>
void ShadingRows::LookUp(int count, std::uint32_t* pixels, EntryAt entryAt) const {
  constexpr int kStretch = 256;
  int entries[kStretch];
  for (int start = 0; start < count; start += kStretch) {
    const int length = std::min(kStretch, count - start);
    for (int i = 0; i < length; ++i) entries[i] = entryAt(start + i);
    for (int i = 0; i < length; ++i) {
      const auto entry = static_cast<std::size_t>(entries[i]);
      if (!isMade_[entry]) MakeEntry(entries[i]);
      pixels[start + i] = table_[entry];
    }
  }
}

void ShadingRows::Fetch(int x, int y, int count, std::uint32_t* pixels) const {
  if (!shading_.radial) {
    const double first = origin_ + stepY_ * (y + 0.5) + stepX_ * (x + 0.5);
    if (isComplete_) {  // in the table the start is at 1
      raster::LookUpLinear(table_.data(), kEntries - 1, first + 1, stepX_, count, pixels);
      return;
    }
    const double step = stepX_;
    LookUp(count, pixels, [first, step](int i) { return EntryOf(first + step * i, kLast); });
    return;
  }
  // Single precision holds the distance from the centre to a thousandth of a pixel over the largest bitmap.
  const CGPoint first = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, deviceToUser_);
  if (isComplete_) {
    const raster::RadialRow row{first.x - center_.x, first.y - center_.y, deviceToUser_.a,
                                deviceToUser_.b,     radialFactor_,       radialOffset_ + 1};
    raster::LookUpRadial(table_.data(), kEntries - 1, row, count, pixels);
    return;
  }
  const auto px = static_cast<float>(first.x - center_.x);
  const auto py = static_cast<float>(first.y - center_.y);
  const auto stepX = static_cast<float>(deviceToUser_.a);
  const auto stepY = static_cast<float>(deviceToUser_.b);
  const auto factor = static_cast<float>(radialFactor_);
  const auto offset = static_cast<float>(radialOffset_);
  LookUp(count, pixels, [=](int i) {
    const float ux = px + stepX * static_cast<float>(i);
    const float uy = py + stepY * static_cast<float>(i);
    return EntryOf(std::sqrt(ux * ux + uy * uy) * factor + offset, kLast);
  });
}

}  // namespace platform
