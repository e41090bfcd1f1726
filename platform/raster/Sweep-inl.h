// From cells to coverage, for vectors of any width. Included once for each of them.
#if defined(PLATFORM_RASTER_SWEEP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PLATFORM_RASTER_SWEEP_INL_H_
#undef PLATFORM_RASTER_SWEEP_INL_H_
#else
#define PLATFORM_RASTER_SWEEP_INL_H_
#endif

#include <bit>

#include "platform/raster/Paint-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

using FourSigned = hn::CappedTag<std::int32_t, 4>;

/// Sums of cells as coverage: 0 to 255 in each lane.
template <class V>
HWY_INLINE auto Coverage(FillRule rule, V sums) {
  const FourSigned d;
  const auto full = hn::Set(d, kFull);
  if (rule == FillRule::kEvenOdd) {
    const auto folded = hn::And(sums, hn::Set(d, 2 * kFull - 1));
    sums = hn::Min(folded, hn::Sub(hn::Set(d, 2 * kFull), folded));
  } else {
    sums = hn::Min(hn::Abs(sums), full);
  }
  const auto scaled = hn::Add(hn::Sub(hn::ShiftLeft<8>(sums), sums), hn::Set(d, kFull / 2));
  return hn::BitCast(Four(), hn::ShiftRight<kFullBits>(scaled));
}

inline unsigned int CoverageOf(FillRule rule, std::int64_t sum) {
  std::int64_t part = 0;
  if (rule == FillRule::kEvenOdd) {
    part = sum & (2 * kFull - 1);
    part = std::min<std::int64_t>(part, 2 * kFull - part);
  } else {
    part = std::min<std::int64_t>(sum < 0 ? -sum : sum, kFull);
  }
  return static_cast<unsigned int>((part * 255 + kFull / 2) >> kFullBits);
}

/// One row. Every pixel of it is told to the painter once, except those that nothing covers.
template <class Painter>
HWY_INLINE void SweepRow(const Tile<std::int32_t>& tile, FillRule rule, int row, std::int32_t sum, Painter& painter) {
  const FourSigned d;
  std::uint64_t* words = tile.bits + static_cast<std::size_t>(row) * tile.bitStride;
  std::int32_t* cells = tile.cells + static_cast<std::size_t>(row) * tile.stride;
  const int width = tile.box.Width();
  int x = 0;
  const auto span = [&](int end) HWY_ATTR {
    const unsigned int coverage = sum == 0 ? 0 : CoverageOf(rule, sum);
    if (coverage != 0 && end > x) painter.Span(tile.box.x0 + x, end - x, coverage);
  };
  for (std::size_t word = 0; word < tile.bitStride; ++word) {
    std::uint64_t bits = words[word];
    if (bits == 0) continue;
    words[word] = 0;
    for (; bits != 0; bits &= bits - 1) {
      const int at = (static_cast<int>(word) * 64 + std::countr_zero(bits)) * kGroup;
      if (at > x && sum != 0) span(std::min(at, width));
      auto sums = hn::LoadU(d, cells + at);
      hn::StoreU(hn::Zero(d), d, cells + at);
      sums = hn::Add(sums, hn::ShiftLeftLanes<1>(d, sums));
      sums = hn::Add(sums, hn::ShiftLeftLanes<2>(d, sums));
      sums = hn::Add(sums, hn::Set(d, sum));
      if (at < width) painter.Group(tile.box.x0 + at, width - at, Coverage(rule, sums));
      sum = hn::ExtractLane(sums, kGroup - 1);
      x = at + kGroup;
    }
  }
  span(width);
}

/// All rows.
template <class Painter>
HWY_INLINE void SweepRows(const Tile<std::int32_t>& tile, FillRule rule, Painter& painter) {
  std::int64_t left = 0;
  const int rows = tile.box.Height();
  for (int row = 0; row < rows; ++row) {
    left += tile.left[row];
    tile.left[row] = 0;
    painter.BeginRow(tile.box.y0 + row);
    SweepRow(tile, rule, row, static_cast<std::int32_t>(left), painter);
  }
  tile.left[rows] = 0;
}

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
