#include "platform/graphics/BitmapPaint.h"

#include <cmath>
#include <cstdio>
#include <new>

#include "platform/graphics/PatternRows.h"
#include "platform/graphics/ShadingRows.h"

namespace platform {
namespace {

static_assert(static_cast<int>(raster::Verb::kMove) == kCGPathElementMoveToPoint);
static_assert(static_cast<int>(raster::Verb::kLine) == kCGPathElementAddLineToPoint);
static_assert(static_cast<int>(raster::Verb::kQuad) == kCGPathElementAddQuadCurveToPoint);
static_assert(static_cast<int>(raster::Verb::kCubic) == kCGPathElementAddCurveToPoint);
static_assert(static_cast<int>(raster::Verb::kClose) == kCGPathElementCloseSubpath);
static_assert(sizeof(raster::Verb) == sizeof(CGPath::Verb) && sizeof(CGPoint) == 2 * sizeof(double));

// Once a process, since every operation that follows is likely to lack memory too.
void ReportNoMemory() {
  static const bool isReported = std::fputs("AKPlatform: memory ran out, something was not drawn\n", stderr) >= 0;
  (void)isReported;
}

void Check(bool isDone) {
  if (!isDone) ReportNoMemory();
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

// Rows of a shading in the target's order.
class ShadingSource final : public raster::RowSource {
 public:
  ShadingSource(const ShadingRows& rows, raster::PixelOrder order)
      : rows_(rows), isReversed_(order == raster::PixelOrder::kAlphaFirst) {}

  void Fetch(int x, int y, int count, std::uint32_t* pixels) const override {
    rows_.Fill(x, y, count, pixels);
    if (isReversed_) raster::ReverseBytes(pixels, static_cast<std::size_t>(count));
  }

 private:
  const ShadingRows& rows_;
  bool isReversed_;
};

// A clip is often set anew for each of many shapes: what was made for the last one serves the same clip again.
raster::Clip ClipOf(CGContext* context, const Clip& clip) {
  if (clip != nullptr && clip->onBitmap == nullptr) {
    if (context->appliedClip != nullptr && SameClip(clip.get(), context->appliedClip.get())) {
      clip->onBitmap = context->appliedClip->onBitmap;
    } else {
      context->appliedClip = clip;
    }
  }
  return BitmapClip::Of(clip.get(), context->target->Bounds());
}

raster::Shape ShapeOf(const CGPath& path, bool antialias) {
  raster::Shape shape;
  shape.path = ViewOf(path);
  shape.antialias = antialias;
  return shape;
}

// The whole pixels that an upright rectangle is made of; false when it is something else.
bool IsWholeBox(const CGPath& path, raster::Box* box) {
  if (path.points.Count() != 4 || path.verbs.Count() != 5) return false;
  constexpr double kFarthest = 1 << 30;
  const CGPoint* p = path.points.Data();
  for (int i = 0; i < 4; ++i) {
    if (p[i].x != std::floor(p[i].x) || p[i].y != std::floor(p[i].y) || !(std::fabs(p[i].x) <= kFarthest) ||
        !(std::fabs(p[i].y) <= kFarthest) ||
        path.verbs.Data()[i] != (i == 0 ? kCGPathElementMoveToPoint : kCGPathElementAddLineToPoint)) {
      return false;
    }
  }
  const bool isUpright = (p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x) ||
                         (p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y);
  if (!isUpright) return false;
  *box = {static_cast<int>(std::min(p[0].x, p[2].x)), static_cast<int>(std::min(p[0].y, p[2].y)),
          static_cast<int>(std::max(p[0].x, p[2].x)), static_cast<int>(std::max(p[0].y, p[2].y))};
  return true;
}

// Whole pixels, as cells of patterns and backgrounds are made of, need no edges.
void PaintShape(CGContext* context, const raster::Shape& shape, const raster::Ink& ink) {
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  const raster::Clip clip = ClipOnBitmap(context);
  raster::Box box;
  const bool isBox = shape.stroke == nullptr && IsWholeBox(*context->path, &box);
  Check(isBox ? raster::PaintBox(surface, box, clip, ink) : raster::Paint(surface, shape, clip, ink));
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
  shape.path = ViewOf(*context->path);  // who draws the cell may have changed the path
  PaintShape(context, shape, raster::Ink{raster::Ink::Kind::kRows, rows.IsOpaque(), 0, &rows});
}

}  // namespace

raster::Surface SurfaceOf(const BitmapInfo& info) {
  return {static_cast<unsigned char*>(info.data), info.bytesPerRow, static_cast<int>(info.width),
          static_cast<int>(info.height),
          info.bitmapInfo == kCGBitmapAlphaFirst ? raster::PixelOrder::kAlphaFirst : raster::PixelOrder::kBlueFirst};
}

raster::PathView ViewOf(const CGPath& path) {
  return {reinterpret_cast<const raster::Verb*>(path.verbs.Data()), path.verbs.Count(),
          reinterpret_cast<const double*>(path.points.Data()), path.points.Count()};
}

const BitmapClip& BitmapClip::Resolve(const ClipNode& node, const raster::Box& bounds) {
  if (node.onBitmap == nullptr) {
    node.onBitmap = std::make_shared<BitmapClip>();
    node.onBitmap->SetUp(node, bounds);
  }
  return *node.onBitmap;
}

void BitmapClip::SetUp(const ClipNode& node, const raster::Box& bounds) {
  const BitmapClip* parent = node.parent != nullptr ? &Resolve(*node.parent, bounds) : nullptr;
  const raster::Box within = parent != nullptr ? parent->clip_.box : bounds;
  raster::Box box;
  if (IsWholeBox(*node.path, &box)) {
    clip_.box = raster::Intersection(box, within);
    if (parent != nullptr && parent->clip_.mask != nullptr) {
      bytes_ = parent->bytes_;
      full_ = parent->full_;
      view_ = parent->view_;
      clip_.mask = &view_;
    }
    return;
  }
  const raster::Shape shape = ShapeOf(*node.path, node.antialias);
  clip_.box = raster::BoxOf(shape, within);
  if (clip_.box.IsEmpty()) return;
  const auto width = static_cast<std::size_t>(clip_.box.Width());
  const std::size_t size = width * static_cast<std::size_t>(clip_.box.Height());
  bytes_.reset(new (std::nothrow) unsigned char[size]);
  if (bytes_ == nullptr || !raster::Cover(shape, clip_.box, bytes_.get(), width)) {
    ReportNoMemory();
    clip_.box = {};
    return;
  }
  view_ = {bytes_.get(), width, clip_.box};
  clip_.mask = &view_;
  for (int y = clip_.box.y0; parent != nullptr && parent->clip_.mask != nullptr && y < clip_.box.y1; ++y) {
    raster::MultiplyBytes(bytes_.get() + static_cast<std::size_t>(y - clip_.box.y0) * width,
                          parent->view_.At(clip_.box.x0, y), width);
  }
  FindFull();
}

// Most of what is drawn under a clip lies well within it. Without memory it is looked at pixel by pixel.
void BitmapClip::FindFull() {
  const auto rows = static_cast<std::size_t>(clip_.box.Height());
  full_.reset(new (std::nothrow) raster::Run[rows]);
  for (std::size_t i = 0; full_ != nullptr && i < rows; ++i) {
    full_[i] = raster::LongestFull(view_, clip_.box.y0 + static_cast<int>(i));
  }
  view_.full = full_.get();
}

raster::Clip BitmapClip::Of(const ClipNode* node, const raster::Box& bounds) {
  return node == nullptr ? raster::Clip{bounds, nullptr} : Resolve(*node, bounds).clip_;
}

raster::Clip ClipOnBitmap(CGContext* context) {
  if (context->state.textClip != nullptr) SettleTextClip(context);
  return ClipOf(context, context->state.clip);
}

void FillOnBitmap(CGContext* context, raster::FillRule rule, bool isClearing) {
  raster::Shape shape = ShapeOf(*context->path, context->state.antialias);
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
  raster::Shape shape = ShapeOf(*context->path, state.antialias);
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
  const raster::Clip clip = ClipOf(context, innermost != nullptr ? innermost->parent : Clip());
  const raster::Shape shape = innermost != nullptr ? ShapeOf(*innermost->path, innermost->antialias) : raster::Shape{};
  const raster::Box box = innermost != nullptr ? raster::BoxOf(shape, clip.box) : clip.box;
  if (box.IsEmpty()) return;
  const ShadingRows rows(shading, context->UserToDevice(), box, context->state.alpha);
  const ShadingSource source(rows, surface.order);
  const raster::Ink ink{raster::Ink::Kind::kRows, rows.IsOpaque(), 0, &source};
  Check(innermost != nullptr ? raster::Paint(surface, shape, clip, ink) : raster::PaintBox(surface, box, clip, ink));
}

void MaskOnBitmap(CGContext* context, const Paint& paint, const raster::MaskView& mask) {
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  Check(raster::PaintMask(surface, mask, ClipOnBitmap(context), ColorInk(paint, context->state.alpha, surface.order)));
}

void BoxOnBitmap(CGContext* context, const raster::RowSource& rows, const raster::Box& box) {
  const raster::Ink ink{raster::Ink::Kind::kRows, false, 0, &rows};
  Check(raster::PaintBox(SurfaceOf(*context->bitmap), box, ClipOnBitmap(context), ink));
}

void RowsOnBitmap(CGContext* context, const raster::RowSource& rows, bool isOpaque, const CGPath& path) {
  raster::Ink ink{raster::Ink::Kind::kRows, isOpaque, 0, &rows};
  if (context->state.blendMode == kCGBlendModeSoftLight) ink.kind = raster::Ink::Kind::kSoftLight;
  if (context->state.blendMode == kCGBlendModeHardLight) ink.kind = raster::Ink::Kind::kHardLight;
  const raster::Surface surface = SurfaceOf(*context->bitmap);
  const raster::Clip clip = ClipOnBitmap(context);
  raster::Box box;
  Check(IsWholeBox(path, &box) ? raster::PaintBox(surface, box, clip, ink)
                               : raster::Paint(surface, ShapeOf(path, context->state.antialias), clip, ink));
}

}  // namespace platform
