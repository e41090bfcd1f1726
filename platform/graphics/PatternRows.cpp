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

// Most sides are powers of two, which take no division.
int Modulo(std::int64_t value, int side) {
  if ((side & (side - 1)) == 0) return static_cast<int>(value & (side - 1));
  const auto rest = static_cast<int>(value % side);
  return rest < 0 ? rest + side : rest;
}

void Copy(const std::uint32_t* from, std::size_t count, std::uint32_t* to) {
  std::memcpy(to, from, count * sizeof(*to));
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
  if (IsSmall()) RepeatRows();
}

bool PatternRows::IsSmall() const { return static_cast<std::size_t>(std::max(width_, height_)) <= kLargestSmallSide; }

void PatternRows::RepeatRows() {
  const auto width = static_cast<std::size_t>(width_);
  const std::size_t length = width + kRun;
  for (std::size_t row = 0; row < static_cast<std::size_t>(height_); ++row) {
    std::uint32_t* to = repeated_.data() + row * length;
    Copy(cell_ + row * stride_, width, to);
    for (std::size_t done = width; done < length; done += done) Copy(to, std::min(done, length - done), to + done);
  }
  run_ = kRun / width * width;
}

void PatternRows::CopySmall(std::size_t row, std::size_t column, std::size_t count, std::uint32_t* pixels) const {
  const std::uint32_t* from = repeated_.data() + row * (static_cast<std::size_t>(width_) + kRun) + column;
  for (; count > run_; count -= run_, pixels += run_) Copy(from, run_, pixels);
  Copy(from, count, pixels);
}

void PatternRows::CopyLarge(std::size_t row, int column, int count, std::uint32_t* pixels) const {
  const std::uint32_t* from = cell_ + stride_ * row;
  for (int done = 0; done < count;) {
    const int size = std::min(count - done, width_ - column);
    Copy(from + column, static_cast<std::size_t>(size), pixels + done);
    done += size;
    column = 0;
  }
}

void PatternRows::Fetch(int x, int y, int count, std::uint32_t* pixels) const {
  const auto row = static_cast<std::size_t>(Modulo(std::int64_t{y} + startY_, height_));
  const int column = Modulo(std::int64_t{x} + startX_, width_);
  if (run_ != 0) {
    CopySmall(row, static_cast<std::size_t>(column), static_cast<std::size_t>(count), pixels);
  } else {
    CopyLarge(row, column, count, pixels);
  }
  if (alpha_ != 255) {
    raster::ScaleBytes(reinterpret_cast<unsigned char*>(pixels), alpha_, static_cast<std::size_t>(count) * 4);
  }
}

}  // namespace platform
