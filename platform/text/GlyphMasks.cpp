#include "platform/text/GlyphMasks.h"

#include <cmath>

#include "platform/graphics/CGContextState.h"
#include "platform/text/FontFace.h"

namespace platform {
namespace {

constexpr int kSteps = 4;  // in a pixel
constexpr double kStep = 1.0 / kSteps;
constexpr std::size_t kMaxBytes = 1 << 20;

// The coordinates of glyphs that are drawn are far below the limits of an int.
int Floor(double value) {
  const int cut = static_cast<int>(value);
  return cut - (value < cut ? 1 : 0);
}

// Splits a coordinate into a pixel and a step.
int Split(double value, unsigned int* step) {
  const int steps = Floor(value * kSteps + 0.5);
  const int pixel = steps >> 2;
  *step = static_cast<unsigned int>(steps - pixel * kSteps);
  return pixel;
}
static_assert(kSteps == 1 << 2);

void FillInto(GlyphMask* mask, const CGPath& outline) {
  mask->coverage.resize(static_cast<std::size_t>(mask->stride) * static_cast<std::size_t>(mask->height));
  const CairoSurface surface(cairo_image_surface_create_for_data(mask->coverage.data(), CAIRO_FORMAT_A8, mask->width,
                                                                 mask->height, mask->stride));
  const CairoContext cairo(cairo_create(surface.get()));
  cairo_surface_set_device_offset(surface.get(), -mask->left, -mask->top);
  PixelBox box;
  if (EmitPath(cairo.get(), outline, &box)) cairo_fill(cairo.get());
  cairo_surface_finish(surface.get());
}

}  // namespace

GlyphMasks::GlyphMasks(const cairo_matrix_t& scale)
    : scale_{scale.xx, scale.yx, scale.xy, scale.yy, 0, 0}, isLevel_(scale.yx == 0) {}

bool GlyphMasks::IsFor(const cairo_matrix_t& scale) const {
  return scale.xx == scale_.xx && scale.yx == scale_.yx && scale.xy == scale_.xy && scale.yy == scale_.yy;
}

// The baseline of level text stands on whole pixels, so that its letters keep their edges.
GlyphPlace GlyphMasks::PlaceOf(double deviceX, double deviceY) const {
  unsigned int stepX = 0;
  unsigned int stepY = 0;
  GlyphPlace place{};
  place.x = Split(deviceX, &stepX);
  place.y = isLevel_ ? Floor(deviceY + 0.5) : Split(deviceY, &stepY);
  place.step = stepX + kSteps * stepY;
  return place;
}

const GlyphMask& GlyphMasks::Mask(FontFace& face, std::uint32_t glyph, unsigned int step) {
  const std::uint64_t key = std::uint64_t{glyph} * kSteps * kSteps + step;
  const auto found = masks_.find(key);
  if (found != masks_.end()) return found->second;
  GlyphMask mask = Render(face, glyph, step);
  byteCount_ += mask.coverage.size() + sizeof(mask);
  return masks_.emplace(key, std::move(mask)).first->second;
}

void GlyphMasks::Trim() {
  if (byteCount_ <= kMaxBytes) return;
  masks_.clear();
  byteCount_ = 0;
}

GlyphMask GlyphMasks::Render(FontFace& face, std::uint32_t glyph, unsigned int step) const {
  GlyphMask mask;
  const CGPath& outline = face.Outline(glyph);
  if (CGPathIsEmpty(&outline)) {
    mask.isPicture = !face.GlyphInk(glyph).IsEmpty();
    return mask;
  }
  const unsigned int stepX = step % kSteps;
  const unsigned int stepY = step / kSteps;
  const CGAffineTransform toPixels{scale_.xx, scale_.yx, scale_.xy, scale_.yy, stepX * kStep, stepY * kStep};
  const CGPath* path = CGPathCreateCopyAndTransform(&outline, &toPixels);
  const CGRect box = CGPathGetBoundingBox(path);
  mask.left = static_cast<int>(std::floor(box.origin.x));
  mask.top = static_cast<int>(std::floor(box.origin.y));
  mask.width = static_cast<int>(std::ceil(box.origin.x + box.size.width)) - mask.left;
  mask.height = static_cast<int>(std::ceil(box.origin.y + box.size.height)) - mask.top;
  mask.stride = (mask.width + GlyphMask::kGroup - 1) / GlyphMask::kGroup * GlyphMask::kGroup;
  if (mask.width > 0 && mask.height > 0) FillInto(&mask, *path);
  CGPathRelease(path);
  return mask;
}

}  // namespace platform
