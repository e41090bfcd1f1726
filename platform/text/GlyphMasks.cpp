#include "platform/text/GlyphMasks.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "AKPlatform/AKPixelOrder.h"
#include "platform/graphics/BitmapPaint.h"
#include "platform/text/FontFace.h"
#include "platform/text/GlyphStore.h"
#include "platform/text/TextEngine.h"

namespace platform {
namespace {

constexpr int kSteps = 4;  // in a pixel
constexpr double kStep = 1.0 / kSteps;
// Above this height of an em, in pixels, a baseline between pixels is not seen as a blur.
constexpr double kMaxLevelEm = 128;

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

// Gives the mask the pixels that a box of device space touches; false when there are none, or too many to keep.
bool TakeBox(GlyphMask* mask, const CGRect& box, int bytesPerPixel) {
  constexpr double kFar = 1e6;
  const double x0 = std::floor(box.origin.x);
  const double y0 = std::floor(box.origin.y);
  const double width = std::ceil(box.origin.x + box.size.width) - x0;
  const double height = std::ceil(box.origin.y + box.size.height) - y0;
  if (!(width > 0 && height > 0)) return false;
  const double stride = std::ceil(width * bytesPerPixel / GlyphMask::kGroup) * GlyphMask::kGroup;
  if (!(stride * height <= GlyphStore::kMaxMaskBytes && std::fabs(x0) < kFar && std::fabs(y0) < kFar)) {
    mask->kind = GlyphMask::Kind::kNotKept;
    return false;
  }
  mask->left = static_cast<int>(x0);
  mask->top = static_cast<int>(y0);
  mask->width = static_cast<int>(width);
  mask->height = static_cast<int>(height);
  mask->stride = static_cast<int>(stride);
  mask->bytes.resize(static_cast<std::size_t>(mask->stride) * static_cast<std::size_t>(mask->height));
  return true;
}

void FillInto(GlyphMask* mask, const CGPath& outline, bool isSoft) {
  const raster::Box box{mask->left, mask->top, mask->left + mask->width, mask->top + mask->height};
  if (!raster::Cover(ShapeOf(outline, isSoft), box, mask->bytes.data(), static_cast<std::size_t>(mask->stride))) {
    throw std::bad_alloc();
  }
}

CGRect BoxOf(const CGRect& rect, const CGAffineTransform& m) {
  CGPath path;
  CGPathAddRect(&path, &m, rect);
  return CGPathGetBoundingBox(&path);
}

// Draws the picture; `toDevice` maps reference units.
void DrawInto(GlyphMask* mask, FontFace& face, std::uint32_t glyph, const CGAffineTransform& toDevice) {
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGContextRef context = CGBitmapContextCreate(mask->bytes.data(), static_cast<std::size_t>(mask->width),
                                               static_cast<std::size_t>(mask->height), 8,
                                               static_cast<std::size_t>(mask->stride), space, kCGBitmapBlueFirst);
  CGColorSpaceRelease(space);
  if (context == nullptr) throw std::bad_alloc();
  const NativeRef<CGContext> owned = TakeRef(context);
  const CGAffineTransform fromBox{1, 0, 0, 1, -static_cast<double>(mask->left), -static_cast<double>(mask->top)};
  const CGAffineTransform flip{1, 0, 0, -1, 0, static_cast<double>(mask->height)};
  CGContextConcatCTM(context, CGAffineTransformConcat(CGAffineTransformConcat(toDevice, fromBox), flip));
  face.Pictures().Draw(context, face, glyph);
  if (context->hasFailed) throw std::bad_alloc();  // a part of a picture is none
}

}  // namespace

std::size_t BytesOf(const GlyphMask& mask) {
  constexpr std::size_t kNode = 48;  // of the map, and of the two blocks of memory
  return mask.bytes.size() + sizeof(mask) + kNode;
}

GlyphMasks::GlyphMasks(FontFace* face, const cairo_matrix_t& scale, bool isSoft)
    : face_(face),
      scale_{scale.xx, scale.yx, scale.xy, scale.yy, 0, 0},
      isSoft_(isSoft),
      isLevel_(scale.yx == 0 && std::hypot(scale.xy, scale.yy) * kReferenceSize <= kMaxLevelEm) {}

// The baseline of level text stands on whole pixels, so that its letters keep their edges.
GlyphPlace GlyphMasks::PlaceOf(std::uint32_t glyph, double deviceX, double deviceY) const {
  if (!isSoft_ || face_->Pictures().Has(glyph)) return {Floor(deviceX + 0.5), Floor(deviceY + 0.5), 0};
  unsigned int stepX = 0;
  unsigned int stepY = 0;
  GlyphPlace place{};
  place.x = Split(deviceX, &stepX);
  place.y = isLevel_ ? Floor(deviceY + 0.5) : Split(deviceY, &stepY);
  place.step = stepX + kSteps * stepY;
  return place;
}

GlyphMask& GlyphMasks::Mask(std::uint32_t glyph, unsigned int step, std::size_t* newBytes) {
  const std::uint64_t key = std::uint64_t{glyph} * kSteps * kSteps + step;
  const auto found = masks_.find(key);
  if (found != masks_.end()) return found->second;
  GlyphMask mask = face_->Pictures().Has(glyph) ? RenderPicture(glyph) : Render(glyph, step);
  GlyphMask& kept = masks_.emplace(key, std::move(mask)).first->second;
  *newBytes += BytesOf(kept);
  return kept;
}

GlyphMask GlyphMasks::Render(std::uint32_t glyph, unsigned int step) const {
  GlyphMask mask;
  const CGPath& outline = face_->Outline(glyph);
  if (CGPathIsEmpty(&outline)) {
    if (!face_->GlyphInk(glyph).IsEmpty()) mask.kind = GlyphMask::Kind::kNotKept;
    return mask;
  }
  const unsigned int stepX = step % kSteps;
  const unsigned int stepY = step / kSteps;
  const CGAffineTransform toPixels{scale_.xx, scale_.yx, scale_.xy, scale_.yy, stepX * kStep, stepY * kStep};
  CGPath path;
  CGPathAddPath(&path, &toPixels, &outline);
  if (TakeBox(&mask, CGPathGetBoundingBox(&path), 1)) {
    FillInto(&mask, path, isSoft_);
    mask.kind = GlyphMask::Kind::kCoverage;
  }
  return mask;
}

GlyphMask GlyphMasks::RenderPicture(std::uint32_t glyph) const {
  GlyphMask mask;
  const std::vector<GlyphPictures::Layer> layers = face_->Pictures().LayersOf(glyph);
  if (std::any_of(layers.begin(), layers.end(), [](const auto& layer) { return layer.isOfText; })) {
    mask.kind = GlyphMask::Kind::kNotKept;  // it looks different in each text
    return mask;
  }
  const CGAffineTransform toPixels{scale_.xx, scale_.yx, scale_.xy, scale_.yy, 0, 0};
  const InkBox ink = face_->GlyphInk(glyph);
  if (!ink.IsEmpty() && TakeBox(&mask, BoxOf(ink.Rect(), toPixels), 4)) {
    DrawInto(&mask, *face_, glyph, toPixels);
    mask.kind = GlyphMask::Kind::kPicture;
  }
  return mask;
}

}  // namespace platform
