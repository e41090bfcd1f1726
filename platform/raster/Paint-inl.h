// Coverage on its way to pixels, for vectors of any width. Included once for each of them.
//
// A painter is told of a row, from left to right, what is covered: Span, pixels of one coverage; Group, four pixels
// with a coverage each, of which `count` count; Mask, pixels with a byte of coverage each.
#if defined(PLATFORM_RASTER_PAINT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PLATFORM_RASTER_PAINT_INL_H_
#undef PLATFORM_RASTER_PAINT_INL_H_
#else
#define PLATFORM_RASTER_PAINT_INL_H_
#endif

#include <hwy/cache_control.h>

#include <algorithm>

#include "platform/raster/Blend.h"
#include "platform/raster/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

constexpr std::size_t kPixel = sizeof(std::uint32_t);

/// Mixes `count` pixels at `to`; mix(d, below, i) gives those from pixel i on. Fewer than a vector go through a copy.
template <class MixAt>
HWY_INLINE void MixPixels(unsigned char* to, int count, const MixAt& mix) {
  const Many d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int i = 0;
  for (; i + lanes <= count; i += lanes, to += kPixel * hn::Lanes(d)) StorePixels(d, mix(d, LoadPixels(d, to), i), to);
  if (i == count) return;
  HWY_ALIGN unsigned char rest[kPixel * hn::MaxLanes(d)] = {};
  const std::size_t size = kPixel * static_cast<std::size_t>(count - i);
  std::memcpy(rest, to, size);
  StorePixels(d, mix(d, LoadPixels(d, rest), i), rest);
  std::memcpy(to, rest, size);
}

/// The same through coverage of a byte each. Reads at most `count` bytes of it.
template <class MixAt>
HWY_INLINE void MixThrough(unsigned char* to, int count, const unsigned char* coverage, const MixAt& mix) {
  const Many d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int i = 0;
  for (; i + lanes <= count; i += lanes, to += kPixel * hn::Lanes(d)) {
    StorePixels(d, mix(d, LoadPixels(d, to), LoadCoverage(d, coverage + i), i), to);
  }
  if (i == count) return;
  HWY_ALIGN unsigned char rest[kPixel * hn::MaxLanes(d)] = {};
  HWY_ALIGN unsigned char bytes[hn::MaxLanes(d)] = {};
  const std::size_t size = kPixel * static_cast<std::size_t>(count - i);
  std::memcpy(rest, to, size);
  std::memcpy(bytes, coverage + i, static_cast<std::size_t>(count - i));
  StorePixels(d, mix(d, LoadPixels(d, rest), LoadCoverage(d, bytes), i), rest);
  std::memcpy(to, rest, size);
}

/// Below an edge there is likely more of it: its pixels are asked for some rows ahead, since a large bitmap is not in
/// the cache. Memory that is not there is asked for without harm.
HWY_INLINE void PrefetchBelow(const Surface& surface, const unsigned char* at) {
  constexpr std::size_t kRowsAhead = 6;
  hwy::Prefetch(at + kRowsAhead * surface.stride);
}

template <class MixAt>
HWY_INLINE void MixGroup(unsigned char* to, int count, const MixAt& mix) {
  const Four d;
  if (count >= kGroup) {
    StorePixels(d, mix(d, LoadPixels(d, to)), to);
    return;
  }
  unsigned char rest[kPixel * kGroup] = {};
  std::memcpy(rest, to, kPixel * static_cast<std::size_t>(count));
  StorePixels(d, mix(d, LoadPixels(d, rest)), rest);
  std::memcpy(to, rest, kPixel * static_cast<std::size_t>(count));
}

/// Pixels of one colour. Stores that lie across two lines of the cache cost twice: but for the first and the last
/// vector, which may overlap the others, they are aligned, as far as the pixels are.
template <class D>
HWY_INLINE void FillVectors(D d, unsigned char* to, unsigned char* end, std::uint32_t color) {
  const auto pixels = hn::Set(d, color);
  const std::size_t size = kPixel * hn::Lanes(d);
  StorePixels(d, pixels, to);
  unsigned char* const last = end - size;
  to += reinterpret_cast<std::uintptr_t>(to) % kPixel == 0 ? size - reinterpret_cast<std::uintptr_t>(to) % size : size;
  for (; to < last; to += size) StorePixels(d, pixels, to);
  StorePixels(d, pixels, last);
}

HWY_INLINE void Fill(unsigned char* to, int count, std::uint32_t color) {
  unsigned char* const end = to + kPixel * static_cast<std::size_t>(count);
  if (count >= static_cast<int>(hn::Lanes(Many()))) return FillVectors(Many(), to, end, color);
  if (count >= static_cast<int>(hn::Lanes(Four()))) return FillVectors(Four(), to, end, color);
  for (; to < end; to += kPixel) std::memcpy(to, &color, kPixel);
}

/// Paints a colour, or transparency.
template <class Mixer>
class FlatPainter {
 public:
  FlatPainter(const Surface& surface, const Mixer& mixer, bool isFilled, std::uint32_t color)
      : surface_(surface), mixer_(mixer), isFilled_(isFilled), color_(color) {}

  void BeginRow(int y) { row_ = surface_.At(0, y); }

  HWY_INLINE void Span(int x, int count, unsigned int coverage) {
    if (coverage == 255 && isFilled_) {
      Fill(At(x), count, color_);
      return;
    }
    MixPixels(At(x), count, [this, coverage](auto d, auto below, int) HWY_ATTR {
      return mixer_.Mix(d, below, hn::Set(d, coverage));
    });
  }
  template <class V>
  HWY_INLINE void Group(int x, int count, V coverage) {
    PrefetchBelow(surface_, At(x));
    MixGroup(At(x), count, [this, coverage](auto d, auto below) HWY_ATTR { return mixer_.Mix(d, below, coverage); });
  }
  HWY_INLINE void Mask(int x, int count, const unsigned char* coverage) {
    MixThrough(At(x), count, coverage,
               [this](auto d, auto below, auto cover, int) HWY_ATTR { return mixer_.Mix(d, below, cover); });
  }

 private:
  unsigned char* At(int x) const { return row_ + kPixel * static_cast<std::size_t>(x); }

  const Surface& surface_;
  Mixer mixer_;
  bool isFilled_;  // where it is covered wholly, a pixel becomes the colour
  std::uint32_t color_;
  unsigned char* row_ = nullptr;
};

/// Paints pixels of a source, which are fetched a little ahead.
class RowPainter {
 public:
  RowPainter(const Surface& surface, const Ink& ink, int end)
      : surface_(surface),
        source_(*ink.rows),
        mixer_(surface.order),
        isFilled_(ink.isOpaque && reinterpret_cast<std::uintptr_t>(surface.data) % kPixel == 0),
        end_(end) {}

  void BeginRow(int y) {
    row_ = surface_.At(0, y);
    y_ = y;
    fetchedBegin_ = fetchedEnd_ = 0;
  }

  HWY_INLINE void Span(int x, int count, unsigned int coverage) {
    if (coverage == 255 && isFilled_) {
      source_.Fetch(x, y_, count, reinterpret_cast<std::uint32_t*>(At(x)));
      return;
    }
    InPieces(x, count, [this, coverage](int begin, int size, const std::uint32_t* pixels) HWY_ATTR {
      MixPixels(At(begin), size, [this, coverage, pixels](auto d, auto below, int i) HWY_ATTR {
        return mixer_.Mix(d, below, hn::LoadU(d, pixels + i), hn::Set(d, coverage));
      });
    });
  }
  template <class V>
  HWY_INLINE void Group(int x, int count, V coverage) {
    PrefetchBelow(surface_, At(x));
    const std::uint32_t* pixels = Fetched(x, std::min(count, kGroup));
    MixGroup(At(x), count, [this, coverage, pixels](auto d, auto below) HWY_ATTR {
      return mixer_.Mix(d, below, hn::LoadU(d, pixels), coverage);
    });
  }
  HWY_INLINE void Mask(int x, int count, const unsigned char* coverage) {
    InPieces(x, count, [this, x, coverage](int begin, int size, const std::uint32_t* pixels) HWY_ATTR {
      MixThrough(At(begin), size, coverage + (begin - x),
                 [this, pixels](auto d, auto below, auto cover, int i)
                     HWY_ATTR { return mixer_.Mix(d, below, hn::LoadU(d, pixels + i), cover); });
    });
  }

 private:
  static constexpr int kAhead = 16;
  static constexpr int kPiece = 512;

  unsigned char* At(int x) const { return row_ + kPixel * static_cast<std::size_t>(x); }

  template <class Paint>
  HWY_INLINE void InPieces(int x, int count, const Paint& paint) {
    for (int done = 0; done < count; done += kPiece) {
      const int size = std::min(kPiece, count - done);
      paint(x + done, size, Fetched(x + done, size));
    }
  }

  // Behind the pixels of a short piece there is room for a vector's worth of any numbers.
  HWY_INLINE const std::uint32_t* Fetched(int x, int count) {
    if (x < fetchedBegin_ || x + count > fetchedEnd_) {
      fetchedBegin_ = x;
      fetchedEnd_ = x + std::max(count, std::min(kAhead, end_ - x));
      source_.Fetch(x, y_, fetchedEnd_ - x, pixels_);
    }
    return pixels_ + (x - fetchedBegin_);
  }

  const Surface& surface_;
  const RowSource& source_;
  RowMixer mixer_;
  bool isFilled_;
  int end_;  // of the tile
  unsigned char* row_ = nullptr;
  int y_ = 0;
  int fetchedBegin_ = 0;
  int fetchedEnd_ = 0;
  std::uint32_t
      pixels_[kPiece + 2 * HWY_MAX_BYTES / kPixel];  // what is read of them and was not fetched does not count
};

/// A group's coverage as bytes.
template <class V>
HWY_INLINE void StoreGroup(V coverage, int count, unsigned char* bytes) {
  HWY_ALIGN std::uint32_t lanes[kGroup];
  hn::Store(coverage, Four(), lanes);
  for (int i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(lanes[i]);
}

/// Mixes pixels of a source by a blend mode, one by one.
class BlendPainter {
 public:
  BlendPainter(const Surface& surface, const Ink& ink) : surface_(surface), ink_(ink) {}

  void BeginRow(int y) { y_ = y; }
  void Span(int x, int count, unsigned int coverage) {
    unsigned char bytes[kPiece];
    std::memset(bytes, static_cast<int>(coverage), static_cast<std::size_t>(std::min(count, kPiece)));
    for (int done = 0; done < count; done += kPiece) Mask(x + done, std::min(kPiece, count - done), bytes);
  }
  template <class V>
  HWY_INLINE void Group(int x, int count, V coverage) {
    unsigned char bytes[kGroup];
    count = std::min(count, kGroup);
    StoreGroup(coverage, count, bytes);
    Mask(x, count, bytes);
  }
  void Mask(int x, int count, const unsigned char* coverage) { BlendThrough(surface_, x, y_, count, coverage, ink_); }

 private:
  static constexpr int kPiece = 256;

  const Surface& surface_;
  const Ink& ink_;
  int y_ = 0;
};

/// Takes away what a clip leaves out, and hands on the rest.
template <class Painter>
class ClippedPainter {
 public:
  ClippedPainter(const MaskView& clip, Painter* painter) : clip_(clip), painter_(*painter) {}

  void BeginRow(int y) {
    row_ = clip_.At(clip_.box.x0, y);
    full_ = clip_.full != nullptr ? clip_.full[y - clip_.box.y0] : Run{};
    painter_.BeginRow(y);
  }

  // What lies before, in and behind the stretch that is not hidden at all.
  HWY_INLINE void Span(int x, int count, unsigned int coverage) {
    const int end = x + count;
    const int begin = std::clamp(full_.x0, x, end);
    const int rest = std::clamp(full_.x1, begin, end);
    if (begin > x) HiddenSpan(x, begin - x, coverage);
    if (rest > begin) painter_.Span(begin, rest - begin, coverage);
    if (end > rest) HiddenSpan(rest, end - rest, coverage);
  }
  template <class V>
  HWY_INLINE void Group(int x, int count, V coverage) {
    if (IsFull(x, kGroup)) {
      painter_.Group(x, count, coverage);
      return;
    }
    const Four d;
    unsigned char clip[kGroup] = {};
    if (count >= kGroup) {
      std::memcpy(clip, At(x), kGroup);
    } else {
      std::memcpy(clip, At(x), static_cast<std::size_t>(count));
    }
    std::uint32_t all = 0;
    std::memcpy(&all, clip, sizeof(all));
    if (all == 0) return;
    const Wide<Four> w;
    const auto product = hn::Mul(hn::BitCast(w, coverage), hn::BitCast(w, LoadCoverage(d, clip)));
    painter_.Group(x, count, hn::BitCast(d, DivideBy255(product)));
  }
  void Mask(int x, int count, const unsigned char* coverage) {
    unsigned char product[kPiece];
    for (int begin = 0; begin < count; begin += kPiece) {
      const int size = std::min(kPiece, count - begin);
      for (int i = 0; i < size; ++i) product[i] = Product(coverage[begin + i], At(x)[begin + i]);
      painter_.Mask(x + begin, size, product);
    }
  }

 private:
  static constexpr int kPiece = 256;
  static constexpr int kStep = 8;
  static constexpr int kLong = 16;

  static unsigned char Product(unsigned int a, unsigned int b) {
    const unsigned int v = a * b + 128;
    return static_cast<unsigned char>((v + (v >> 8)) >> 8);
  }
  const unsigned char* At(int x) const { return row_ + (x - clip_.box.x0); }
  bool IsFull(int x, int count) const { return x >= full_.x0 && x + count <= full_.x1; }

  // Long stretches of nothing and of everything are skipped or painted as spans, what lies between through the mask.
  void HiddenSpan(int x, int count, unsigned int coverage) {
    const unsigned char* clip = At(x);
    for (int begin = 0; begin < count;) {
      const int same = SameBytes(clip + begin, count - begin);
      if (same >= kLong || same == count - begin) {
        if (clip[begin] == 255) painter_.Span(x + begin, same, coverage);
        begin += same;
      } else {
        const int mixed = std::max(same, MixedBytes(clip + begin, count - begin));
        Partial(x + begin, mixed, clip + begin, coverage);
        begin += mixed;
      }
    }
  }

  static bool IsUniform(const unsigned char* eight) {
    std::uint64_t word = 0;
    std::memcpy(&word, eight, kStep);
    return word == 0 || word == ~std::uint64_t{0};
  }
  // How many bytes are the same, 0 or 255; none when the first is neither.
  static int SameBytes(const unsigned char* bytes, int count) {
    if (bytes[0] != 0 && bytes[0] != 255) return 0;
    int i = 0;
    for (; i + kStep <= count && bytes[i] == bytes[0] && IsUniform(bytes + i); i += kStep) {
    }
    while (i < count && bytes[i] == bytes[0]) ++i;
    return i;
  }
  // How many come before a long stretch, about.
  static int MixedBytes(const unsigned char* bytes, int count) {
    count = std::min(count, kPiece);
    int uniform = 0;
    int i = 0;
    for (; i + kStep <= count && uniform < kLong / kStep; i += kStep) uniform = IsUniform(bytes + i) ? uniform + 1 : 0;
    return uniform == kLong / kStep ? i - kLong : count;
  }
  void Partial(int x, int count, const unsigned char* clip, unsigned int coverage) {
    if (coverage == 255) {
      painter_.Mask(x, count, clip);
      return;
    }
    unsigned char product[kPiece];
    for (int i = 0; i < count; ++i) product[i] = Product(coverage, clip[i]);
    painter_.Mask(x, count, product);
  }

  const MaskView& clip_;
  Painter& painter_;
  const unsigned char* row_ = nullptr;
  Run full_;
};

/// Writes the coverage itself.
class BytePainter {
 public:
  BytePainter(const Box& box, unsigned char* bytes, std::size_t stride) : box_(box), bytes_(bytes), stride_(stride) {}

  void BeginRow(int y) { row_ = bytes_ + static_cast<std::size_t>(y - box_.y0) * stride_; }
  HWY_INLINE void Span(int x, int count, unsigned int coverage) {
    std::memset(row_ + (x - box_.x0), static_cast<int>(coverage), static_cast<std::size_t>(count));
  }
  template <class V>
  HWY_INLINE void Group(int x, int count, V coverage) {
    StoreGroup(coverage, std::min(count, kGroup), row_ + (x - box_.x0));
  }

 private:
  Box box_;
  unsigned char* bytes_;
  std::size_t stride_;
  unsigned char* row_ = nullptr;
};

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
