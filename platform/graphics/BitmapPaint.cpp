#include "platform/graphics/BitmapPaint.h"

#include <cmath>
#include <cstdio>
#include <new>

#include "AKPlatform/AKPixelOrder.h"
#include "platform/graphics/PatternRows.h"
#include "platform/graphics/ShadingRows.h"

namespace platform {
namespace {

void Check(bool isDone) {
  if (!isDone) throw std::bad_alloc();
}

// As a component of 16 bits is narrowed, of which the upper eight count.
std::uint32_t Channel(double component) {
  const double inside = component > 0 ? std::min(component, 1.0) : 0;
  std::uint32_t wide = static_cast<std::uint32_t>(inside * 65536);
  wide -= wide >> 16;
  return wide >> 8;
}

raster::Ink ColorInk(const Paint& paint, double contextAlpha, raster::PixelOrder order) {
  const double alpha = paint.alpha * contextAlpha;
  const double a = alpha > 0 ? std::min(alpha, 1.0) : 0;
  const std::uint32_t color =
      Channel(a) << 24 | Channel(paint.red * a) << 16 | Channel(paint.green * a) << 8 | Channel(paint.blue * a);
  raster::Ink ink;
  ink.color = raster::InOrder(color, order);
  return ink;
}

// The last clip that was drawn under is kept: set anew for the next shape, it is taken up again.
raster::Clip ClipOf(CGContext* context, const Clip& clip) {
  if (!(clip == nullptr)) context->appliedClip = clip;
  return BitmapClip::Of(clip.get(), context->target->Bounds());
}

void PaintPath(const raster::Surface& surface, const CGPath& path, const raster::Shape& shape, const raster::Clip& clip,
               const raster::Ink& ink) {
  raster::Box box;
  if (shape.stroke == nullptr && IsWholeBox(path, &box)) {
    raster::PaintBox(surface, box, clip, ink);
  } else {
    Check(raster::Paint(surface, shape, clip, ink));
  }
}

// Whole pixels, as cells of patterns and backgrounds are made of, need no edges.
void PaintShape(CGContext* context, const raster::Shape& shape, const raster::Ink& ink) {
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  PaintPath(surface, *context->path.items, shape, ClipOnBitmap(context), ink);
}

void PaintShape(CGContext* context, raster::Shape shape, const Paint& paint) {
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  if (paint.pattern.Get() == nullptr) {
    PaintShape(context, shape, ColorInk(paint, context->state.alpha, surface.order));
    return;
  }
  const double alpha = paint.alpha * context->state.alpha;
  const NativeRef<CGPattern> pattern = paint.pattern;
  const PatternRows rows(pattern.Get(), context->state.patternPhase, alpha, surface);
  if (!rows.IsUsable()) return;
  shape.path = ViewOf(*context->path.items);  // who draws the cell may have changed the path
  PaintShape(context, shape, raster::Ink{raster::Ink::Kind::kRows, rows.IsOpaque(), 0, &rows});
}

}  // namespace

raster::Surface SurfaceOf(const BitmapInfo& info) {
  return {static_cast<unsigned char*>(info.data), info.bytesPerRow, static_cast<int>(info.width),
          static_cast<int>(info.height),
          info.bitmapInfo == kCGBitmapAlphaFirst ? raster::PixelOrder::kAlphaFirst : raster::PixelOrder::kBlueFirst};
}

raster::Clip ClipOnBitmap(CGContext* context) {
  if (context->state.textClip != nullptr) SettleTextClip(context);
  return ClipOf(context, context->state.clip);
}

void FillOnBitmap(CGContext* context, raster::FillRule rule, bool isClearing) {
  raster::Shape shape = ShapeOf(*context->path.items, context->state.antialias);
  shape.rule = rule;
  if (isClearing) {
    PaintShape(context, shape, raster::Ink{raster::Ink::Kind::kClear, false, 0, nullptr});
  } else {
    PaintShape(context, shape, context->state.fill);
  }
}

void StrokeOnBitmap(CGContext* context) {
  const GraphicsState& state = context->state;
  const CGAffineTransform m = context->UserToDevice();
  raster::StrokeStyle style;
  style.width = state.lineWidth;
  style.cap = static_cast<raster::Cap>(state.lineCap);
  style.join = static_cast<raster::Join>(state.lineJoin);
  style.a = m.a;
  style.b = m.b;
  style.c = m.c;
  style.d = m.d;
  raster::Shape shape = ShapeOf(*context->path.items, state.antialias);
  shape.stroke = &style;
  PaintShape(context, shape, state.stroke);
}

static_assert(static_cast<int>(raster::Cap::kButt) == kCGLineCapButt);
static_assert(static_cast<int>(raster::Cap::kRound) == kCGLineCapRound);
static_assert(static_cast<int>(raster::Cap::kSquare) == kCGLineCapSquare);
static_assert(static_cast<int>(raster::Join::kMiter) == kCGLineJoinMiter);
static_assert(static_cast<int>(raster::Join::kRound) == kCGLineJoinRound);
static_assert(static_cast<int>(raster::Join::kBevel) == kCGLineJoinBevel);

// The usual call is "clip to a path, draw the shading": the innermost clip becomes the shape, and only the clips around
// it stay clips.
void ShadeOnBitmap(CGContext* context, const CGShading& shading) {
  if (context->state.textClip != nullptr) SettleTextClip(context);
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  const Clip innermost = context->state.clip;  // kept, whatever the shading's function does to the context
  const raster::Clip clip = ClipOf(context, !(innermost == nullptr) ? innermost->parent : Clip());
  const raster::Shape shape =
      !(innermost == nullptr) ? ShapeOf(*innermost->path, innermost->antialias) : raster::Shape{};
  const raster::Box box = !(innermost == nullptr) ? raster::BoxOf(shape, clip.box) : clip.box;
  if (box.IsEmpty()) return;
  const ShadingRows rows(shading, context->UserToDevice(), box, context->state.alpha, surface.order);
  const raster::Ink ink{raster::Ink::Kind::kRows, rows.IsOpaque(), 0, &rows};
  if (innermost == nullptr) {
    raster::PaintBox(surface, box, clip, ink);
  } else {
    Check(raster::Paint(surface, shape, clip, ink));
  }
}

void MaskOnBitmap(CGContext* context, const Paint& paint, const raster::MaskView& mask) {
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  raster::PaintMask(surface, mask, ClipOnBitmap(context), ColorInk(paint, context->state.alpha, surface.order));
}

void BoxOnBitmap(CGContext* context, const raster::RowSource& rows, const raster::Box& box) {
  const raster::Ink ink{raster::Ink::Kind::kRows, false, 0, &rows};
  raster::PaintBox(SurfaceOf(*context->bitmap), box, ClipOnBitmap(context), ink);
}

void RowsOnBitmap(CGContext* context, const raster::RowSource& rows, bool isOpaque, const CGPath& path) {
  raster::Ink ink{raster::Ink::Kind::kRows, isOpaque, 0, &rows};
  if (context->state.blendMode == kCGBlendModeSoftLight) ink.kind = raster::Ink::Kind::kSoftLight;
  if (context->state.blendMode == kCGBlendModeHardLight) ink.kind = raster::Ink::Kind::kHardLight;
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  PaintPath(surface, path, ShapeOf(path, context->state.antialias), ClipOnBitmap(context), ink);
}

}  // namespace platform
