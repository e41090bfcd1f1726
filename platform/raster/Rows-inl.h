// Rows of gradients and of bytes, for vectors of any width. Included once for each of them.
#if defined(PLATFORM_RASTER_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PLATFORM_RASTER_ROWS_INL_H_
#undef PLATFORM_RASTER_ROWS_INL_H_
#else
#define PLATFORM_RASTER_ROWS_INL_H_
#endif

#include <algorithm>

#include "platform/raster/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

using Reals = hn::ScalableTag<float>;

/// The entries at positions of 0 to last, rounded.
template <class V>
HWY_INLINE auto Entries(const std::uint32_t* table, int last, V position) {
  const hn::RebindToSigned<Many> whole;
  const Reals d;
  position = hn::Min(hn::Max(position, hn::Zero(d)), hn::Set(d, static_cast<float>(last)));
  // Once more as whole numbers: what is no number passes the comparison above.
  const auto entry = hn::Max(hn::Zero(whole), hn::Min(hn::Set(whole, last), hn::ConvertTo(whole, hn::Add(position, hn::Set(d, 0.5F)))));
  return hn::GatherIndex(Many(), table, entry);
}

/// Writes `count` pixels; at(i) gives the positions of those from i on.
template <class At>
HWY_INLINE void LookUp(const std::uint32_t* table, int last, int count, std::uint32_t* pixels, const At& at) {
  const Many d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int i = 0;
  for (; i + lanes <= count; i += lanes) hn::StoreU(Entries(table, last, at(i)), d, pixels + i);
  if (i == count) return;
  HWY_ALIGN std::uint32_t rest[hn::MaxLanes(d)];
  hn::Store(Entries(table, last, at(i)), d, rest);
  std::copy_n(rest, count - i, pixels + i);
}

void LookUpLinear(const std::uint32_t* table, int last, double first, double step, int count, std::uint32_t* pixels) {
  const Reals d;
  // In stretches, so that single precision counts from near by.
  constexpr int kStretch = 256;
  const auto steps = hn::Mul(hn::Iota(d, 0.0F), hn::Set(d, static_cast<float>(step)));
  for (int begin = 0; begin < count; begin += kStretch) {
    const auto base = hn::Add(hn::Set(d, static_cast<float>(first + step * begin)), steps);
    LookUp(table, last, std::min(kStretch, count - begin), pixels + begin, [&](int i) HWY_ATTR {
      return hn::Add(base, hn::Set(d, static_cast<float>(step) * static_cast<float>(i)));
    });
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
  LookUp(table, last, count, pixels, [&](int i) HWY_ATTR {
    const auto k = hn::Iota(d, static_cast<float>(i));
    const auto ux = hn::Add(x, hn::Mul(stepX, k));
    const auto uy = hn::Add(y, hn::Mul(stepY, k));
    return hn::Add(offset, hn::Mul(factor, hn::Sqrt(hn::Add(hn::Mul(ux, ux), hn::Mul(uy, uy)))));
  });
}

void MultiplyBytes(unsigned char* bytes, const unsigned char* by, std::size_t count) {
  const hn::ScalableTag<std::uint16_t> d;
  const hn::Rebind<std::uint8_t, decltype(d)> narrow;
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    const auto product = hn::Mul(hn::PromoteTo(d, hn::LoadU(narrow, bytes + i)), hn::PromoteTo(d, hn::LoadU(narrow, by + i)));
    const hn::RebindToSigned<decltype(d)> isigned;
    hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(isigned, DivideBy255(product))), narrow, bytes + i);
  }
  for (; i < count; ++i) {
    const unsigned int v = bytes[i] * by[i] + 128U;
    bytes[i] = static_cast<unsigned char>((v + (v >> 8)) >> 8);
  }
}

void AddBytes(unsigned char* bytes, const unsigned char* more, std::size_t count) {
  const hn::ScalableTag<std::uint8_t> d;
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    hn::StoreU(hn::SaturatedAdd(hn::LoadU(d, bytes + i), hn::LoadU(d, more + i)), d, bytes + i);
  }
  for (; i < count; ++i) bytes[i] = static_cast<unsigned char>(std::min(bytes[i] + more[i], 255));
}

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
