#include "platform/graphics/ShadingRows.h"

#include <algorithm>
#include <cmath>

#include "platform/raster/Kernels.h"

namespace platform {
namespace {

double Unit(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

std::uint32_t Premultiplied(const CGFloat* color, double contextAlpha) {
  const double alpha = Unit(color[3]) * contextAlpha * 255;
  const auto channel = [alpha](double value) { return static_cast<std::uint32_t>(Unit(value) * alpha + 0.5); };
  return static_cast<std::uint32_t>(alpha + 0.5) << 24 | channel(color[0]) << 16 | channel(color[1]) << 8 |
         channel(color[2]);
}

// How many pixels a shading can change over in a box.
int Reach(const PixelBox& box) { return static_cast<int>(std::hypot(box.x1 - box.x0, box.y1 - box.y0)); }

}  // namespace

CGAffineTransform InverseOf(const CGAffineTransform& m) {
  const double k = 1 / (m.a * m.d - m.b * m.c);
  return {m.d * k, -m.b * k, -m.c * k, m.a * k, (m.c * m.ty - m.d * m.tx) * k, (m.b * m.tx - m.a * m.ty) * k};
}

ShadingRows::ShadingRows(const CGShading& shading, const CGAffineTransform& userToDevice, const PixelBox& box,
                         double alpha)
    : deviceToUser_(InverseOf(userToDevice)),
      radial_(shading.radial),
      last_(std::clamp(Reach(box), 1, kMaxSteps / kStepsPerPixel) * kStepsPerPixel) {
  FillTable(shading, alpha);
  PrepareAxis(shading);
}

void ShadingRows::FillTable(const CGShading& shading, double alpha) {
  const CGFunction& function = *shading.function.Get();
  const auto last = static_cast<std::size_t>(last_);
  for (std::size_t i = 0; i <= last; ++i) {
    const CGFloat input = static_cast<double>(i) / last_;
    CGFloat color[4] = {0, 0, 0, 0};
    function.callbacks.evaluate(function.info, &input, color);
    table_[i + 1] = Premultiplied(color, alpha);
  }
  table_[0] = shading.extendStart ? table_[1] : 0;
  table_[last + 2] = shading.extendEnd ? table_[last + 1] : 0;
  isOpaque_ = std::all_of(table_.begin(), table_.begin() + last_ + 3, [](std::uint32_t pixel) { return pixel >> 24 == 255; });
}

void ShadingRows::PrepareAxis(const CGShading& shading) {
  if (radial_) {
    center_ = shading.start;
    radialFactor_ = last_ / (shading.endRadius - shading.startRadius);
    radialOffset_ = -shading.startRadius * radialFactor_;
    return;
  }
  const double dx = shading.end.x - shading.start.x;
  const double dy = shading.end.y - shading.start.y;
  const double factor = last_ / (dx * dx + dy * dy);
  const CGAffineTransform& m = deviceToUser_;
  stepX_ = (m.a * dx + m.b * dy) * factor;
  stepY_ = (m.c * dx + m.d * dy) * factor;
  origin_ = ((m.tx - shading.start.x) * dx + (m.ty - shading.start.y) * dy) * factor;
}

// The table has an entry before the start, so positions are counted from 1.
void ShadingRows::Fill(int x, int y, int count, std::uint32_t* pixels) const {
  if (!radial_) {
    const double first = origin_ + stepY_ * (y + 0.5) + stepX_ * (x + 0.5);
    raster::LookUpLinear(table_.data(), last_ + 2, first + 1, stepX_, count, pixels);
    return;
  }
  // Single precision holds the distance from the centre to a thousandth of a pixel over the largest bitmap.
  const CGPoint first = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, deviceToUser_);
  const raster::RadialRow row{first.x - center_.x, first.y - center_.y, deviceToUser_.a,
                              deviceToUser_.b,     radialFactor_,       radialOffset_ + 1};
  raster::LookUpRadial(table_.data(), last_ + 2, row, count, pixels);
}

}  // namespace platform
