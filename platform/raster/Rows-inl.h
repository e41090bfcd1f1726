// Rows of gradients and of bytes, for vectors of any width. Included once for each of them.
#if defined(PLATFORM_RASTER_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PLATFORM_RASTER_ROWS_INL_H_
#undef PLATFORM_RASTER_ROWS_INL_H_
#else
#define PLATFORM_RASTER_ROWS_INL_H_
#endif

#include <algorithm>
#include <cmath>

#include "platform/raster/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

using Reals = hn::ScalableTag<float>;

/// Pixels with their bytes turned round.
template <class D, class V>
HWY_INLINE V Reversed(D d, V v) {
  const auto outer = hn::Or(hn::ShiftLeft<24>(v), hn::ShiftRight<24>(v));
  const auto second = hn::And(hn::ShiftRight<8>(v), hn::Set(d, 0x0000FF00U));
  const auto third = hn::And(hn::ShiftLeft<8>(v), hn::Set(d, 0x00FF0000U));
  return hn::Or(outer, hn::Or(second, third));
}

/// Numbers of which no product below leaves single precision, so that no position is other than a number.
template <typename... Numbers>
HWY_INLINE bool AreModerate(Numbers... numbers) {
  constexpr double kMost = 1e12;
  return (... && (std::fabs(numbers) < kMost));
}

/// The entries at positions of 0 to last, rounded.
template <bool kAreNumbers, class V>
HWY_INLINE auto Entries(const std::uint32_t* table, int last, V position) {
  const hn::RebindToSigned<Many> whole;
  const Reals d;
  position = hn::Min(hn::Max(position, hn::Zero(d)), hn::Set(d, static_cast<float>(last)));
  auto entry = hn::ConvertTo(whole, hn::Add(position, hn::Set(d, 0.5F)));
  // Once more as whole numbers: what is no number passes the comparison above.
  if constexpr (!kAreNumbers) entry = hn::Max(hn::Zero(whole), hn::Min(hn::Set(whole, last), entry));
  return hn::GatherIndex(Many(), table, entry);
}

/// Writes `count` pixels; at(i) gives the positions of those from i on, the same for a pixel whichever i it is reached
/// from.
template <bool kAreNumbers, class At>
HWY_INLINE void LookUpEach(const std::uint32_t* table, int last, int count, std::uint32_t* pixels, const At& at) {
  const Many d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int i = 0;
  for (; i + lanes <= count; i += lanes) hn::StoreU(Entries<kAreNumbers>(table, last, at(i)), d, pixels + i);
  if (i == count) return;
  if (count >= lanes) {  // some of the last ones once more
    hn::StoreU(Entries<kAreNumbers>(table, last, at(count - lanes)), d, pixels + count - lanes);
    return;
  }
  HWY_ALIGN std::uint32_t rest[hn::MaxLanes(d)];
  hn::Store(Entries<kAreNumbers>(table, last, at(0)), d, rest);
  std::copy_n(rest, count, pixels);
}

template <class At>
HWY_INLINE void LookUp(bool areNumbers, const std::uint32_t* table, int last, int count, std::uint32_t* pixels,
                       const At& at) {
  if (areNumbers) {
    LookUpEach<true>(table, last, count, pixels, at);
  } else {
    LookUpEach<false>(table, last, count, pixels, at);
  }
}

void LookUpLinear(const std::uint32_t* table, int last, double first, double step, int count, std::uint32_t* pixels) {
  const Reals d;
  // In stretches, so that single precision counts from near by.
  constexpr int kStretch = 256;
  const auto stepOfOne = hn::Set(d, static_cast<float>(step));
  for (int begin = 0; begin < count; begin += kStretch) {
    const auto base = hn::Set(d, static_cast<float>(first + step * begin));
    LookUp(AreModerate(first, step), table, last, std::min(kStretch, count - begin), pixels + begin,
           [&](int i) HWY_ATTR { return hn::Add(base, hn::Mul(stepOfOne, hn::Iota(d, static_cast<float>(i)))); });
  }
}

void LookUpRadial(const std::uint32_t* table, int last, const RadialRow& row, int count, std::uint32_t* pixels) {
  const Reals d;
  const auto x = hn::Set(d, static_cast<float>(row.x));
  const auto y = hn::Set(d, static_cast<float>(row.y));
  const auto stepX = hn::Set(d, static_cast<float>(row.stepX));
  const auto stepY = hn::Set(d, static_cast<float>(row.stepY));
  const auto factor = hn::Set(d, static_cast<float>(row.factor));
  const auto offset = hn::Set(d, static_cast<float>(row.offset));
  const bool areNumbers = AreModerate(row.x, row.y, row.stepX, row.stepY, row.factor, row.offset);
  LookUp(areNumbers, table, last, count, pixels, [&](int i) HWY_ATTR {
    const auto k = hn::Iota(d, static_cast<float>(i));
    const auto ux = hn::Add(x, hn::Mul(stepX, k));
    const auto uy = hn::Add(y, hn::Mul(stepY, k));
    return hn::Add(offset, hn::Mul(factor, hn::Sqrt(hn::Add(hn::Mul(ux, ux), hn::Mul(uy, uy)))));
  });
}

/// A component, 0 to 1, of a colour of which `most` is the opacity, 0 to 255.
template <class V>
HWY_INLINE auto Component(V component, V most) {
  const hn::DFromV<V> d;
  const auto inside = hn::Min(hn::IfThenElseZero(hn::Gt(component, hn::Zero(d)), component), hn::Set(d, 1.0));
  const auto level = hn::Add(hn::Mul(inside, most), hn::Set(d, 0.5));
  return hn::BitCast(hn::Rebind<std::uint32_t, decltype(d)>(),
                     hn::DemoteTo(hn::Rebind<std::int32_t, decltype(d)>(), level));
}

void PackColors(const double* colors, std::size_t count, double alpha, PixelOrder order, std::uint32_t* pixels) {
  const hn::ScalableTag<double> d;
  const hn::Rebind<std::uint32_t, decltype(d)> packed;
  const std::size_t lanes = hn::Lanes(d);
  HWY_ALIGN double rest[4 * hn::MaxLanes(d)] = {};
  HWY_ALIGN std::uint32_t made[hn::MaxLanes(d)];
  for (std::size_t i = 0; i < count; i += lanes) {
    const std::size_t length = std::min(lanes, count - i);
    const double* from = colors + 4 * i;
    if (length < lanes) {
      std::copy_n(from, 4 * length, rest);
      from = rest;
    }
    hn::Vec<decltype(d)> red, green, blue, opacity;
    hn::LoadInterleaved4(d, from, red, green, blue, opacity);
    const auto one = hn::Set(d, 1.0);
    const auto inside = hn::Min(hn::IfThenElseZero(hn::Gt(opacity, hn::Zero(d)), opacity), one);
    const auto most = hn::Mul(hn::Mul(inside, hn::Set(d, alpha)), hn::Set(d, 255.0));
    auto pixel = hn::Or(hn::Or(hn::ShiftLeft<24>(Component(one, most)), hn::ShiftLeft<16>(Component(red, most))),
                        hn::Or(hn::ShiftLeft<8>(Component(green, most)), Component(blue, most)));
    if (order == PixelOrder::kAlphaFirst) pixel = Reversed(packed, pixel);
    hn::StoreU(pixel, packed, length < lanes ? made : pixels + i);
    if (length < lanes) std::copy_n(made, length, pixels + i);
  }
}

// Along one axis: the pixels before and behind a place, and how far it is between them, in 1/256.
struct Neighbours {
  hn::Vec<hn::RebindToSigned<Many>> before;
  hn::Vec<hn::RebindToSigned<Many>> after;
  hn::Vec<Many> share;
};

template <class V>
HWY_INLINE Neighbours NeighboursOf(V offset, int base, int size) {
  const hn::RebindToSigned<Many> whole;
  const Reals d;
  const auto floor = hn::Floor(offset);
  const auto share =
      hn::ConvertTo(whole, hn::Add(hn::Mul(hn::Sub(offset, floor), hn::Set(d, 256.0F)), hn::Set(d, 0.5F)));
  const auto before = hn::Add(hn::ConvertTo(whole, floor), hn::Set(whole, base));
  const auto last = hn::Set(whole, size - 1);
  const auto zero = hn::Zero(whole);
  return {hn::Max(zero, hn::Min(before, last)), hn::Max(zero, hn::Min(hn::Add(before, hn::Set(whole, 1)), last)),
          hn::BitCast(Many(), hn::Max(zero, hn::Min(share, hn::Set(whole, 256))))};
}

/// Bytes of two pixels, mixed by a share of the second.
template <class W>
HWY_INLINE W Between(W a, W b, W share) {
  const hn::DFromV<W> d;
  const auto left = hn::Sub(hn::Set(d, 256), share);
  return hn::ShiftRight<8>(hn::Add(hn::Add(hn::Mul(a, left), hn::Mul(b, share)), hn::Set(d, 128)));
}

HWY_INLINE auto MixFour(const PixelGrid& grid, const Neighbours& x, const Neighbours& y) {
  const Many d;
  const hn::RebindToSigned<Many> whole;
  const auto stride = hn::Set(whole, static_cast<std::int32_t>(grid.stride));
  const auto above = hn::Mul(y.before, stride);
  const auto below = hn::Mul(y.after, stride);
  const auto a = hn::GatherIndex(d, grid.pixels, hn::Add(above, x.before));
  const auto b = hn::GatherIndex(d, grid.pixels, hn::Add(above, x.after));
  const auto c = hn::GatherIndex(d, grid.pixels, hn::Add(below, x.before));
  const auto e = hn::GatherIndex(d, grid.pixels, hn::Add(below, x.after));
  const auto shareX = Doubled(d, x.share);
  const auto shareY = Doubled(d, y.share);
  const auto even = Between(Between(EvenBytes(d, a), EvenBytes(d, b), shareX),
                            Between(EvenBytes(d, c), EvenBytes(d, e), shareX), shareY);
  const auto odd =
      Between(Between(OddBytes(d, a), OddBytes(d, b), shareX), Between(OddBytes(d, c), OddBytes(d, e), shareX), shareY);
  return Joined(d, even, odd);
}

/// What is no number counts as `low`.
inline double Inside(double value, double low, double high) { return value > low ? value < high ? value : high : low; }

// Grids with more pixels than the lanes of a gather can count: each pixel is the nearest one.
inline void LookUpNearest(const PixelGrid& grid, const GridRow& row, int count, std::uint32_t* pixels) {
  for (int i = 0; i < count; ++i) {
    const auto x = static_cast<std::size_t>(Inside(row.x + row.stepX * i + 0.5, 0, grid.width - 1));
    const auto y = static_cast<std::size_t>(Inside(row.y + row.stepY * i + 0.5, 0, grid.height - 1));
    pixels[i] = InOrder(grid.pixels[y * grid.stride + x], row.order);
  }
}

void LookUpBilinear(const PixelGrid& grid, const GridRow& row, int count, std::uint32_t* pixels) {
  if (grid.stride * static_cast<std::size_t>(grid.height) > std::size_t{INT32_MAX}) {
    LookUpNearest(grid, row, count, pixels);
    return;
  }
  const Many d;
  const Reals real;
  const int lanes = static_cast<int>(hn::Lanes(d));
  // In stretches, each with a whole pixel as its base, so that single precision counts from near by.
  constexpr int kStretch = 64;
  constexpr double kFar = 1 << 28;
  for (int begin = 0; begin < count; begin += kStretch) {
    const double startX = Inside(row.x + row.stepX * begin, -kFar, kFar);
    const double startY = Inside(row.y + row.stepY * begin, -kFar, kFar);
    const double baseX = std::floor(startX);
    const double baseY = std::floor(startY);
    const auto at = [&](int i, double start, double step) HWY_ATTR {
      const auto offset =
          hn::Add(hn::Set(real, static_cast<float>(start)),
                  hn::Mul(hn::Set(real, static_cast<float>(step)), hn::Iota(real, static_cast<float>(i))));
      return hn::Max(hn::Set(real, -static_cast<float>(kFar)),
                     hn::Min(offset, hn::Set(real, static_cast<float>(kFar))));
    };
    const int end = std::min(kStretch, count - begin);
    for (int i = 0; i < end; i += lanes) {
      const Neighbours x = NeighboursOf(at(i, startX - baseX, row.stepX), static_cast<int>(baseX), grid.width);
      const Neighbours y = NeighboursOf(at(i, startY - baseY, row.stepY), static_cast<int>(baseY), grid.height);
      auto mixed = MixFour(grid, x, y);
      if (row.order == PixelOrder::kAlphaFirst) mixed = Reversed(d, mixed);
      if (i + lanes <= end) {
        hn::StoreU(mixed, d, pixels + begin + i);
        continue;
      }
      HWY_ALIGN std::uint32_t rest[hn::MaxLanes(d)];
      hn::Store(mixed, d, rest);
      std::copy_n(rest, end - i, pixels + begin + i);
    }
  }
}

void CopyReversed(const std::uint32_t* from, std::size_t count, std::uint32_t* to) {
  const Many d;
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) hn::StoreU(Reversed(d, hn::LoadU(d, from + i)), d, to + i);
  for (; i < count; ++i) to[i] = __builtin_bswap32(from[i]);
}

void ScaleBytes(unsigned char* bytes, unsigned int by, std::size_t count) {
  const Many d;
  const hn::Repartition<std::uint8_t, Many> narrow;
  const auto factor = hn::Set(Wide<Many>(), static_cast<std::uint16_t>(by));
  std::size_t i = 0;
  for (; i + hn::Lanes(narrow) <= count; i += hn::Lanes(narrow)) {
    const auto pixels = LoadPixels(d, bytes + i);
    const auto scaled = Joined(d, DivideBy255(hn::Mul(EvenBytes(d, pixels), factor)),
                               DivideBy255(hn::Mul(OddBytes(d, pixels), factor)));
    StorePixels(d, scaled, bytes + i);
  }
  for (; i < count; ++i) {
    const unsigned int v = bytes[i] * by + 128;
    bytes[i] = static_cast<unsigned char>((v + (v >> 8)) >> 8);
  }
}

void MultiplyBytes(unsigned char* bytes, const unsigned char* by, std::size_t count) {
  const hn::ScalableTag<std::uint16_t> d;
  const hn::Rebind<std::uint8_t, decltype(d)> narrow;
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    const auto product =
        hn::Mul(hn::PromoteTo(d, hn::LoadU(narrow, bytes + i)), hn::PromoteTo(d, hn::LoadU(narrow, by + i)));
    const hn::RebindToSigned<decltype(d)> isigned;
    hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(isigned, DivideBy255(product))), narrow, bytes + i);
  }
  for (; i < count; ++i) {
    const unsigned int v = bytes[i] * by[i] + 128U;
    bytes[i] = static_cast<unsigned char>((v + (v >> 8)) >> 8);
  }
}

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
