// How pixels are mixed, for vectors of any width. Included once for each of them.
//
// A pixel is four bytes. They are handled as two vectors of 16-bit lanes, the even bytes and the odd ones, so that the
// order of the colours never matters but for where the alpha stands. A product of bytes is divided by 255 exactly:
// (v + 128 + (v + 128 >> 8)) >> 8 (J. Blinn, "Three wrongs make a right", 1995).
#if defined(PLATFORM_RASTER_PIXELS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PLATFORM_RASTER_PIXELS_INL_H_
#undef PLATFORM_RASTER_PIXELS_INL_H_
#else
#define PLATFORM_RASTER_PIXELS_INL_H_
#endif

#include <hwy/highway.h>

#include <cstdint>
#include <cstring>

#include "platform/raster/Kernels.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Four pixels, the smallest vector in use, and as many as the processor takes.
using Four = hn::CappedTag<std::uint32_t, 4>;
using Many = hn::ScalableTag<std::uint32_t>;

template <class D>
using Bytes = hn::Vec<D>;

/// 16-bit lanes of the same width.
template <class D>
using Wide = hn::Repartition<std::uint16_t, D>;

template <class V>
HWY_INLINE V DivideBy255(V v) {
  const hn::DFromV<V> d;
  v = hn::Add(v, hn::Set(d, 128));
  return hn::ShiftRight<8>(hn::Add(v, hn::ShiftRight<8>(v)));
}

/// The even or the odd bytes of pixels in 16-bit lanes.
template <class D, class V>
HWY_INLINE auto EvenBytes(D d, V pixels) {
  return hn::BitCast(Wide<D>(), hn::And(pixels, hn::Set(d, 0x00FF00FFU)));
}
template <class D, class V>
HWY_INLINE auto OddBytes(D d, V pixels) {
  (void)d;
  return hn::ShiftRight<8>(hn::BitCast(Wide<D>(), pixels));
}
template <class D, class W>
HWY_INLINE auto Joined(D d, W even, W odd) {
  return hn::BitCast(d, hn::Or(even, hn::ShiftLeft<8>(odd)));
}

/// A number of 0 to 255 in each 32-bit lane, in both of its 16-bit lanes.
template <class D, class V>
HWY_INLINE auto Doubled(D d, V values) {
  (void)d;
  return hn::BitCast(Wide<D>(), hn::Or(values, hn::ShiftLeft<16>(values)));
}

/// Reads or writes pixels of memory that is aligned to bytes.
template <class D>
HWY_INLINE auto LoadPixels(D d, const unsigned char* from) {
  const hn::Repartition<std::uint8_t, D> bytes;
  return hn::BitCast(d, hn::LoadU(bytes, from));
}
template <class D, class V>
HWY_INLINE void StorePixels(D d, V pixels, unsigned char* to) {
  (void)d;
  const hn::Repartition<std::uint8_t, D> bytes;
  hn::StoreU(hn::BitCast(bytes, pixels), bytes, to);
}

/// Coverage of a byte a pixel in 32-bit lanes.
template <class D>
HWY_INLINE auto LoadCoverage(D d, const unsigned char* from) {
  const hn::Rebind<std::uint8_t, D> bytes;
  return hn::PromoteTo(d, hn::LoadU(bytes, from));
}

/// One colour.
struct ColorMixer {
  ColorMixer(const Ink& ink, PixelOrder order)
      : color(ink.color), alpha(AlphaOf(ink.color, order)), isOpaque(alpha == 255) {}

  template <class D, class V>
  HWY_INLINE auto Mix(D d, V below, V coverage) const {
    const Wide<D> w;
    const auto cover = Doubled(d, coverage);
    const auto source = hn::Set(d, color);
    const auto even = DivideBy255(hn::Mul(EvenBytes(d, source), cover));
    const auto odd = DivideBy255(hn::Mul(OddBytes(d, source), cover));
    const auto full = hn::Set(w, 255);
    const auto left =
        hn::Sub(full, isOpaque ? cover : DivideBy255(hn::Mul(hn::Set(w, static_cast<std::uint16_t>(alpha)), cover)));
    return Joined(d, hn::Add(even, DivideBy255(hn::Mul(EvenBytes(d, below), left))),
                  hn::Add(odd, DivideBy255(hn::Mul(OddBytes(d, below), left))));
  }

  std::uint32_t color;
  std::uint32_t alpha;
  bool isOpaque;
};

/// Transparency.
struct ClearMixer {
  template <class D, class V>
  HWY_INLINE auto Mix(D d, V below, V coverage) const {
    const auto left = hn::Sub(hn::Set(Wide<D>(), 255), Doubled(d, coverage));
    return Joined(d, DivideBy255(hn::Mul(EvenBytes(d, below), left)), DivideBy255(hn::Mul(OddBytes(d, below), left)));
  }
};

/// Pixels that come in rows. Those of a plug-in may hold colours above their alpha: sums stop at 255.
struct RowMixer {
  explicit RowMixer(PixelOrder order) : alphaShift(order == PixelOrder::kAlphaFirst ? 0 : 24) {}

  template <class D, class V>
  HWY_INLINE auto Mix(D d, V below, V source, V coverage) const {
    const Wide<D> w;
    const auto cover = Doubled(d, coverage);
    const auto even = DivideBy255(hn::Mul(EvenBytes(d, source), cover));
    const auto odd = DivideBy255(hn::Mul(OddBytes(d, source), cover));
    const auto alpha = hn::And(hn::ShiftRightSame(Joined(d, even, odd), alphaShift), hn::Set(d, 255U));
    const auto full = hn::Set(w, 255);
    const auto left = hn::Sub(full, Doubled(d, alpha));
    return Joined(d, hn::Min(full, hn::Add(even, DivideBy255(hn::Mul(EvenBytes(d, below), left)))),
                  hn::Min(full, hn::Add(odd, DivideBy255(hn::Mul(OddBytes(d, below), left)))));
  }

  int alphaShift;
};

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
