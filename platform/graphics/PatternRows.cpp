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

void Copy(const std::uint32_t* from, int count, std::uint32_t* to) {
  std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(*to));
}

}  // namespace

PatternRows::PatternRows(CGPattern* pattern, CGSize phase, double alpha, const raster::Surface& surface)
    : width_(pattern->width), height_(pattern->height) {
  if (!std::isfinite(phase.width) || !std::isfinite(phase.height) || !DrawCellOnce(pattern)) return;
  const raster::PixelGrid cell = CellIn(pattern, surface.order);
  cell_ = cell.pixels;
  stride_ = cell.stride;
  alpha_ = static_cast<unsigned int>(std::clamp(alpha, 0.0, 1.0) * 255 + 0.5);
  isOpaque_ = pattern->isOpaque && alpha_ == 255;
  startX_ = Modulo(std::floor(0.5 - phase.width), width_);
  startY_ = Modulo(std::floor(0.5 + phase.height) - surface.height, height_);
}

void PatternRows::Fetch(int x, int y, int count, std::uint32_t* pixels) const {
  const std::uint32_t* row = cell_ + stride_ * static_cast<std::size_t>(Modulo(std::int64_t{y} + startY_, height_));
  const int column = Modulo(std::int64_t{x} + startX_, width_);
  const int first = std::min(count, width_ - column);
  Copy(row + column, first, pixels);
  int done = std::min(count - first, column) + first;
  Copy(row, done - first, pixels + first);
  // One round of the cell is there; what follows repeats it.
  while (done < count) {
    const int size = std::min(done, count - done);
    Copy(pixels, size, pixels + done);
    done += size;
  }
  if (alpha_ != 255) {
    raster::ScaleBytes(reinterpret_cast<unsigned char*>(pixels), alpha_, static_cast<std::size_t>(count) * 4);
  }
}

}  // namespace platform
