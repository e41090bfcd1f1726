#include "platform/raster/Kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/Kernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/raster/Paint-inl.h"
#include "platform/raster/Rows-inl.h"
#include "platform/raster/Sweep-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster::HWY_NAMESPACE {

// Calls `use` with the painter of an ink; x ends at `end`.
template <class Use>
HWY_INLINE void WithPainter(const Surface& surface, const Ink& ink, int end, const Use& use) {
  switch (ink.kind) {
    case Ink::Kind::kColor: {
      const ColorMixer mixer(ink, surface.order);
      FlatPainter painter(surface, mixer, mixer.isOpaque, ink.color);
      use(painter);
      break;
    }
    case Ink::Kind::kClear: {
      FlatPainter painter(surface, ClearMixer(), true, 0);
      use(painter);
      break;
    }
    case Ink::Kind::kRows: {
      RowPainter painter(surface, ink, end);
      use(painter);
      break;
    }
    default: {
      BlendPainter painter(surface, ink);
      use(painter);
    }
  }
}

// Calls `use` with the painter of an ink, behind a clip if there is one.
template <class Use>
HWY_INLINE void WithClippedPainter(const Surface& surface, const Ink& ink, int end, const MaskView* clip,
                                   const Use& use) {
  WithPainter(surface, ink, end, [&](auto& painter) HWY_ATTR {
    if (clip == nullptr) {
      use(painter);
      return;
    }
    ClippedPainter clipped(*clip, &painter);
    use(clipped);
  });
}

void SweepTile(const Tile<std::int32_t>& tile, FillRule rule, const MaskView* clip, const Surface& surface,
               const Ink& ink) {
  WithClippedPainter(surface, ink, tile.box.x1, clip, [&](auto& painter) HWY_ATTR { SweepRows(tile, rule, painter); });
}

void SweepToBytes(const Tile<std::int32_t>& tile, FillRule rule, unsigned char* bytes, std::size_t stride) {
  BytePainter painter(tile.box, bytes, stride);
  SweepRows(tile, rule, painter);
}

void PaintThrough(const Surface& surface, int x, int y, int count, const unsigned char* coverage, const MaskView* clip,
                  const Ink& ink) {
  WithClippedPainter(surface, ink, x + count, clip, [&](auto& painter) HWY_ATTR {
    painter.BeginRow(y);
    painter.Mask(x, count, coverage);
  });
}

void PaintSpan(const Surface& surface, int x, int y, int count, const MaskView* clip, const Ink& ink) {
  WithClippedPainter(surface, ink, x + count, clip, [&](auto& painter) HWY_ATTR {
    painter.BeginRow(y);
    painter.Span(x, count, 255);
  });
}

}  // namespace raster::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(SweepTile);
HWY_EXPORT(SweepToBytes);
HWY_EXPORT(PaintThrough);
HWY_EXPORT(PaintSpan);
HWY_EXPORT(MultiplyBytes);
HWY_EXPORT(PackColors);
HWY_EXPORT(LookUpLinear);
HWY_EXPORT(LookUpRadial);
HWY_EXPORT(LookUpBilinear);
HWY_EXPORT(CopyReversed);
HWY_EXPORT(ScaleBytes);

void SweepTile(const Tile<std::int32_t>& tile, FillRule rule, const MaskView* clip, const Surface& surface,
               const Ink& ink) {
  HWY_DYNAMIC_DISPATCH(SweepTile)(tile, rule, clip, surface, ink);
}
void SweepToBytes(const Tile<std::int32_t>& tile, FillRule rule, unsigned char* bytes, std::size_t stride) {
  HWY_DYNAMIC_DISPATCH(SweepToBytes)(tile, rule, bytes, stride);
}
void PaintThrough(const Surface& surface, int x, int y, int count, const unsigned char* coverage, const MaskView* clip,
                  const Ink& ink) {
  HWY_DYNAMIC_DISPATCH(PaintThrough)(surface, x, y, count, coverage, clip, ink);
}
void PaintSpan(const Surface& surface, int x, int y, int count, const MaskView* clip, const Ink& ink) {
  HWY_DYNAMIC_DISPATCH(PaintSpan)(surface, x, y, count, clip, ink);
}
void MultiplyBytes(unsigned char* bytes, const unsigned char* by, std::size_t count) {
  HWY_DYNAMIC_DISPATCH(MultiplyBytes)(bytes, by, count);
}
void PackColors(const double* colors, std::size_t count, double alpha, PixelOrder order, std::uint32_t* pixels) {
  HWY_DYNAMIC_DISPATCH(PackColors)(colors, count, alpha, order, pixels);
}
void LookUpLinear(const std::uint32_t* table, int last, double first, double step, int count, std::uint32_t* pixels) {
  HWY_DYNAMIC_DISPATCH(LookUpLinear)(table, last, first, step, count, pixels);
}
void LookUpRadial(const std::uint32_t* table, int last, const RadialRow& row, int count, std::uint32_t* pixels) {
  HWY_DYNAMIC_DISPATCH(LookUpRadial)(table, last, row, count, pixels);
}

void LookUpBilinear(const PixelGrid& grid, const GridRow& row, int count, std::uint32_t* pixels) {
  HWY_DYNAMIC_DISPATCH(LookUpBilinear)(grid, row, count, pixels);
}
void CopyReversed(const std::uint32_t* from, std::size_t count, std::uint32_t* to) {
  HWY_DYNAMIC_DISPATCH(CopyReversed)(from, count, to);
}
void ScaleBytes(unsigned char* bytes, unsigned int by, std::size_t count) {
  HWY_DYNAMIC_DISPATCH(ScaleBytes)(bytes, by, count);
}

Run LongestFull(const MaskView& mask, int y) {
  const unsigned char* row = mask.At(mask.box.x0, y);
  Run longest;
  const int width = mask.box.Width();
  for (int x = 0; x < width; ++x) {
    if (row[x] != 255) continue;
    const int begin = x;
    while (x < width && row[x] == 255) ++x;
    if (x - begin > longest.x1 - longest.x0) longest = {begin + mask.box.x0, x + mask.box.x0};
  }
  return longest;
}

// A million edges in one row are rare enough for a plain loop.
std::int64_t SweepWide(std::int64_t* cells, int count, FillRule rule, std::int64_t sum, unsigned char* bytes) {
  for (int i = 0; i < count; ++i) {
    sum += cells[i];
    cells[i] = 0;
    bytes[i] = static_cast<unsigned char>(HWY_STATIC_DISPATCH(CoverageOf)(rule, sum));
  }
  return sum;
}

}  // namespace raster
#endif
