#include "platform/text/LineMask.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "platform/text/FontFace.h"

namespace platform {
namespace {

constexpr std::size_t kMaxGlyphs = 2048;
constexpr double kFarAway = 1e6;

unsigned char Sum(unsigned char a, unsigned char b) { return static_cast<unsigned char>(std::min(a + b, 255)); }

// Eight sums that stop at 255, in one word: the upper bits are added apart from the others, and a byte whose sum left
// its upper bit is filled.
void AddGroup(const unsigned char* from, unsigned char* to) {
  constexpr std::uint64_t kUpperBits = 0x8080808080808080U;
  std::uint64_t a = 0;
  std::uint64_t b = 0;
  static_assert(sizeof(a) == GlyphMask::kGroup);
  std::memcpy(&a, from, sizeof(a));
  std::memcpy(&b, to, sizeof(b));
  const std::uint64_t sum = ((a & ~kUpperBits) + (b & ~kUpperBits)) ^ ((a ^ b) & kUpperBits);
  const std::uint64_t carries = ((a & b) | ((a | b) & ~sum)) & kUpperBits;
  const std::uint64_t result = sum | (carries >> 7) * 255;
  std::memcpy(to, &result, sizeof(result));
}

// Bytes of a box that glyphs are added to.
class Coverage {
 public:
  explicit Coverage(const PixelBox& box)
      : box_(box),
        stride_(cairo_format_stride_for_width(CAIRO_FORMAT_A8, box.x1 - box.x0 + GlyphMask::kGroup)),
        rows_(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(box.y1 - box.y0), 0) {}

  void Add(const GlyphMask& glyph, int left, int top) {
    const int y1 = std::min(top + glyph.height, box_.y1);
    const bool isInside = left >= box_.x0 && left + glyph.width <= box_.x1;
    for (int y = std::max(top, box_.y0); y < y1; ++y) {
      const unsigned char* from = &glyph.coverage[std::size_t(y - top) * std::size_t(glyph.stride)];
      unsigned char* row = &rows_[std::size_t(y - box_.y0) * std::size_t(stride_)];
      if (isInside) {
        for (int x = 0; x < glyph.stride; x += GlyphMask::kGroup) AddGroup(from + x, row + (left - box_.x0) + x);
      } else {
        AddClipped(from, row, left, left + glyph.width);
      }
    }
  }

  void Paint(cairo_t* cairo) {
    const CairoSurface mask(cairo_image_surface_create_for_data(rows_.data(), CAIRO_FORMAT_A8, box_.x1 - box_.x0,
                                                                box_.y1 - box_.y0, stride_));
    cairo_mask_surface(cairo, mask.get(), box_.x0, box_.y0);
  }

 private:
  void AddClipped(const unsigned char* from, unsigned char* row, int left, int right) const {
    for (int x = std::max(left, box_.x0); x < std::min(right, box_.x1); ++x) {
      row[x - box_.x0] = Sum(row[x - box_.x0], from[x - left]);
    }
  }

  PixelBox box_;
  int stride_;  // a group wider than the box
  std::vector<unsigned char> rows_;
};

void Widen(PixelBox* box, const PixelBox& other) {
  if (box->IsEmpty()) {
    *box = other;
    return;
  }
  *box = {std::min(box->x0, other.x0), std::min(box->y0, other.y0), std::max(box->x1, other.x1),
          std::max(box->y1, other.y1)};
}

}  // namespace

LineMask::LineMask(const ShapedLine& line, const CGAffineTransform& m) {
  if (line.glyphs.size() > kMaxGlyphs) return;
  items_.reserve(line.glyphs.size());
  isComplete_ =
      std::all_of(line.runs.begin(), line.runs.end(), [&](const ShapedRun& run) { return AddRun(line, run, m); });
}

LineMask::~LineMask() {
  for (GlyphMasks* source : sources_) source->Trim();
}

bool LineMask::AddRun(const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m) {
  FontFace& face = FontFace::Of(run.font.Get());
  GlyphMasks& masks = face.MasksFor({m.a, m.b, m.c, m.d, 0, 0});
  sources_.push_back(&masks);
  for (std::size_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
    const cairo_glyph_t& glyph = line.glyphs[i];
    const CGPoint at = CGPointApplyAffineTransform({glyph.x, glyph.y}, m);
    if (!(std::fabs(at.x) < kFarAway && std::fabs(at.y) < kFarAway)) return false;
    const GlyphPlace place = masks.PlaceOf(at.x, at.y);
    const GlyphMask& picture = masks.Mask(face, static_cast<std::uint32_t>(glyph.index), place.step);
    if (picture.isPicture) return false;
    if (picture.coverage.empty()) continue;
    const Item item{&picture, place.x + picture.left, place.y + picture.top};
    Widen(&box_, {item.left, item.top, item.left + picture.width, item.top + picture.height});
    items_.push_back(item);
  }
  return true;
}

void LineMask::Paint(cairo_t* cairo, const PixelBox& box) const {
  Coverage coverage(box);
  for (const Item& item : items_) coverage.Add(*item.glyph, item.left, item.top);
  coverage.Paint(cairo);
}

}  // namespace platform
