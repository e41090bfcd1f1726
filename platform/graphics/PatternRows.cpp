#include "platform/graphics/PatternRows.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace platform {
namespace {

// A whole number from 0 to side - 1.
int Modulo(double value, int side) {
  const double rest = std::fmod(value, side);
  return static_cast<int>(rest < 0 ? rest + side : rest) % side;
}

int Modulo(std::int64_t value, int side) {
  const auto rest = static_cast<int>(value % side);
  return rest < 0 ? rest + side : rest;
}

}  // namespace

PatternRows::PatternRows(CGPattern* pattern, CGSize phase, double alpha, const raster::Surface& surface)
    : width_(pattern->width), height_(pattern->height), isReversed_(surface.order == raster::PixelOrder::kAlphaFirst) {
  if (!std::isfinite(phase.width) || !std::isfinite(phase.height) || !DrawCellOnce(pattern)) return;
  cell_ = cairo_image_surface_get_data(pattern->cell.get());
  stride_ = static_cast<std::size_t>(cairo_image_surface_get_stride(pattern->cell.get()));
  alpha_ = static_cast<unsigned int>(std::clamp(alpha, 0.0, 1.0) * 255 + 0.5);
  isOpaque_ = pattern->isOpaque && alpha_ == 255;
  startX_ = Modulo(std::floor(0.5 - phase.width), width_);
  startY_ = Modulo(std::floor(0.5 + phase.height) - surface.height, height_);
}

void PatternRows::Fetch(int x, int y, int count, std::uint32_t* pixels) const {
  const unsigned char* row = cell_ + stride_ * static_cast<std::size_t>(Modulo(std::int64_t{y} + startY_, height_));
  const int column = Modulo(std::int64_t{x} + startX_, width_);
  auto* bytes = reinterpret_cast<unsigned char*>(pixels);
  const auto copy = [&](int to, int from, int size) {
    std::memcpy(bytes + std::size_t(to) * 4, row + std::size_t(from) * 4, static_cast<std::size_t>(size) * 4);
  };
  const int first = std::min(count, width_ - column);
  copy(0, column, first);
  int done = std::min(count - first, column) + first;
  copy(first, 0, done - first);
  // One round of the cell is there; what follows repeats it.
  while (done < count) {
    const int size = std::min(done, count - done);
    std::memcpy(pixels + done, pixels, static_cast<std::size_t>(size) * 4);
    done += size;
  }
  if (isReversed_) raster::ReverseBytes(pixels, static_cast<std::size_t>(count));
  if (alpha_ != 255) raster::ScaleBytes(bytes, alpha_, static_cast<std::size_t>(count) * 4);
}

}  // namespace platform
