#include "platform/text/LineMask.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "platform/graphics/BitmapPaint.h"
#include "platform/graphics/ImageRows.h"
#include "platform/text/FontFace.h"

namespace platform {
namespace {

constexpr std::size_t kMaxGlyphs = std::size_t{1} << 20;
constexpr double kFarAway = 5e8;  // quarter pixels are counted in an int

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

// An array whose memory serves the next of its kind; text belongs to one thread.
template <typename T>
std::vector<T>& Spare() {
  static auto& spare = *new std::vector<T>;
  return spare;
}

template <typename T>
std::vector<T> TakeSpare() {
  std::vector<T> taken = std::move(Spare<T>());
  taken.clear();
  return taken;
}

template <typename T>
void GiveBack(std::vector<T>* array) {
  constexpr std::size_t kMaxBytes = std::size_t{1} << 20;
  const std::size_t bytes = array->capacity() * sizeof(T);
  if (bytes <= kMaxBytes && array->capacity() > Spare<T>().capacity()) Spare<T>() = std::move(*array);
}

// Bytes of a box that glyphs are added to.
class Coverage {
 public:
  explicit Coverage(const PixelBox& box)
      : box_(box), stride_(cairo_format_stride_for_width(CAIRO_FORMAT_A8, box.x1 - box.x0 + GlyphMask::kGroup)) {
    rows_.resize(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(box.y1 - box.y0));
  }
  Coverage(const Coverage&) = delete;
  Coverage& operator=(const Coverage&) = delete;
  ~Coverage() { GiveBack(&rows_); }

  void Add(const GlyphMask& glyph, int left, int top) {
    const int y1 = std::min(top + glyph.height, box_.y1);
    const bool isInside = left >= box_.x0 && left + glyph.width <= box_.x1;
    for (int y = std::max(top, box_.y0); y < y1; ++y) {
      const unsigned char* from = &glyph.bytes[std::size_t(y - top) * std::size_t(glyph.stride)];
      unsigned char* row = &rows_[std::size_t(y - box_.y0) * std::size_t(stride_)];
      if (isInside) {
        for (int x = 0; x < glyph.stride; x += GlyphMask::kGroup) AddGroup(from + x, row + (left - box_.x0) + x);
      } else {
        AddClipped(from, row, left, left + glyph.width);
      }
    }
  }

  raster::MaskView View() const { return {rows_.data(), static_cast<std::size_t>(stride_), box_}; }

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
  std::vector<unsigned char> rows_ = TakeSpare<unsigned char>();
};

template <typename Items>
void AddAll(const Items& letters, Coverage* coverage) {
  for (const auto& item : letters) coverage->Add(*item.glyph, item.left, item.top);
}

void PaintPicture(cairo_t* cairo, const GlyphMask& glyph, int left, int top, double alpha) {
  const CairoSurface picture(cairo_image_surface_create_for_data(
      const_cast<unsigned char*>(glyph.bytes.data()), CAIRO_FORMAT_ARGB32, glyph.width, glyph.height, glyph.stride));
  cairo_set_source_surface(cairo, picture.get(), left, top);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_paint_with_alpha(cairo, alpha);
}

void Widen(PixelBox* box, const PixelBox& other) {
  if (box->IsEmpty()) {
    *box = other;
    return;
  }
  *box = {std::min(box->x0, other.x0), std::min(box->y0, other.y0), std::max(box->x1, other.x1),
          std::max(box->y1, other.y1)};
}

}  // namespace

LineMask::LineMask(const ShapedLine& line, const CGAffineTransform& m, bool isSoft) : letters_(TakeSpare<Item>()) {
  if (line.glyphs.size() > kMaxGlyphs) return;
  letters_.reserve(line.glyphs.size());
  isComplete_ = std::all_of(line.runs.begin(), line.runs.end(),
                            [&](const ShapedRun& run) { return AddRun(line, run, m, isSoft); });
}

LineMask::~LineMask() { GiveBack(&letters_); }

bool LineMask::AddRun(const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m, bool isSoft) {
  GlyphStore& store = GlyphStore::Shared();
  GlyphMasks& masks = store.MasksFor(&FontFace::Of(run.font.Get()), {m.a, m.b, m.c, m.d, 0, 0}, isSoft);
  for (std::size_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
    const auto index = static_cast<std::uint32_t>(line.glyphs[i].index);
    const CGPoint at = CGPointApplyAffineTransform({line.glyphs[i].x, line.glyphs[i].y}, m);
    if (!(std::fabs(at.x) < kFarAway && std::fabs(at.y) < kFarAway)) continue;  // nor do targets reach so far
    const GlyphPlace place = masks.PlaceOf(index, at.x, at.y);
    const GlyphMask& mask = store.Mask(&masks, index, place.step);
    if (mask.kind == GlyphMask::Kind::kNotKept) return false;
    if (mask.kind == GlyphMask::Kind::kNothing) continue;
    const Item item{&mask, place.x + mask.left, place.y + mask.top};
    Widen(&box_, {item.left, item.top, item.left + mask.width, item.top + mask.height});
    (mask.kind == GlyphMask::Kind::kPicture ? pictures_ : letters_).push_back(item);
  }
  return true;
}

void LineMask::PaintOnBitmap(CGContext* context, const Paint& paint, const PixelBox& box) const {
  if (!letters_.empty()) {
    Coverage coverage(box);
    AddAll(letters_, &coverage);
    MaskOnBitmap(context, paint, coverage.View());
  }
  for (const Item& item : pictures_) {
    const GlyphMask& glyph = *item.glyph;
    const raster::PixelGrid grid{reinterpret_cast<const std::uint32_t*>(glyph.bytes.data()),
                                 static_cast<std::size_t>(glyph.stride) / sizeof(std::uint32_t), glyph.width,
                                 glyph.height};
    const ImageRows rows(grid, {1, 0, 0, 1, static_cast<double>(item.left), static_cast<double>(item.top)},
                         paint.alpha * context->state.alpha, SurfaceOf(*context->bitmap).order);
    BoxOnBitmap(context, rows, {item.left, item.top, item.left + glyph.width, item.top + glyph.height});
  }
}

void LineMask::PaintThroughCairo(cairo_t* cairo, const Paint& paint, double alpha, const PixelBox& box) const {
  cairo_set_source_rgba(cairo, paint.red, paint.green, paint.blue, paint.alpha * alpha);
  if (!letters_.empty()) {
    Coverage coverage(box);
    AddAll(letters_, &coverage);
    coverage.Paint(cairo);
  }
  for (const Item& item : pictures_) PaintPicture(cairo, *item.glyph, item.left, item.top, paint.alpha * alpha);
  cairo_set_source_rgb(cairo, 0, 0, 0);  // the last one's pixels belong to the store
}

}  // namespace platform
