// The operations of drawing contexts that paint.
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/graphics/BitmapPaint.h"
#include "platform/graphics/StrokeArea.h"
#include "platform/paths/PathDashes.h"

namespace {

using platform::PixelBox;

// Sets cairo's source, for device space; false when there is none.
bool SetSource(CGContext* context, const platform::Paint& paint) {
  const double alpha = paint.alpha * context->state.alpha;
  if (paint.pattern.Get() == nullptr) {
    cairo_set_source_rgba(context->cairo.get(), paint.red, paint.green, paint.blue, alpha);
    return true;
  }
  const CGSize phase = context->state.patternPhase;
  platform::CairoPattern source =
      context->target->PatternSource(paint.pattern.Get(), phase, alpha, context->baseToDevice);
  if (source == nullptr) {
    source = platform::MakePatternSource(paint.pattern.Get(), phase, alpha, context->baseToDevice);
  }
  if (source == nullptr) return false;
  cairo_set_source(context->cairo.get(), source.get());
  return true;
}

// Puts the current path and the clip into cairo, ready for an operation on the returned box; false: nothing to do. The
// stroke of a path that is not filled goes so far out from it.
bool Prepare(CGContext* context, bool isFilled, double reach, PixelBox* box) {
  cairo_t* cairo = context->cairo.get();
  const PixelBox bounds = context->target->Bounds();
  platform::ApplyClip(context);
  cairo_new_path(cairo);
  if (!(isFilled ? platform::EmitPath(cairo, *context->path.items, bounds, box)
                 : platform::EmitOutline(cairo, *context->path.items, bounds, reach, box))) {
    return false;
  }
  *box = platform::WidenBox(*box, reach, bounds);
  if (box->IsEmpty()) return false;
  cairo_set_antialias(cairo, context->state.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  return true;
}

void FillCurrentPath(CGContext* context, cairo_fill_rule_t rule) {
  if (context->bitmap != nullptr) {
    const bool isEvenOdd = rule == CAIRO_FILL_RULE_EVEN_ODD;
    platform::FillOnBitmap(context, isEvenOdd ? raster::FillRule::kEvenOdd : raster::FillRule::kNonZero, false);
    return;
  }
  PixelBox box;
  if (!Prepare(context, true, 0, &box)) return;
  cairo_t* cairo = context->cairo.get();
  cairo_set_fill_rule(cairo, rule);
  if (!SetSource(context, context->state.fill)) return;
  cairo_fill(cairo);
}

// How far a stroke may reach from its path, in device units: a mitre goes 10 half widths out, a square cap 1.42.
double StrokeReach(const CGContext* context, const CGAffineTransform& m) {
  const double scale = std::sqrt(m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d);
  const double factor = context->state.lineJoin == kCGLineJoinMiter ? 10.0 : 1.5;
  return context->state.lineWidth * 0.5 * scale * factor;
}

// Strokes wider than cairo's numbers allow are filled, and so are those of nibs all but flat, whose edge cairo would
// make of a million corners.
constexpr double kWidestReach = 30000;
constexpr double kFlattestNib = 1e-3;

bool IsAllButFlat(const CGAffineTransform& m) {
  return std::fabs(m.a * m.d - m.b * m.c) < kFlattestNib * (m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d);
}

void FillStrokeArea(CGContext* context, const CGAffineTransform& m, double reach) {
  const PixelBox bounds = context->target->Bounds();
  CGPath area;
  platform::AddStrokeArea(*context->path.items, m, context->state, platform::CutBoxOf(bounds, reach), &area);
  cairo_t* cairo = context->cairo.get();
  platform::ApplyClip(context);
  cairo_new_path(cairo);
  PixelBox box;
  if (!platform::EmitPath(cairo, area, bounds, &box) || !SetSource(context, context->state.stroke)) return;
  box = platform::WidenBox(box, 0, bounds);
  if (box.IsEmpty()) return;
  cairo_set_antialias(cairo, context->state.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  cairo_fill(cairo);
}

// By how much a matrix stretches what it stretches most.
double LargestScale(const CGAffineTransform& m) {
  const double sum = m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d;
  const double difference = m.a * m.a + m.b * m.b - m.c * m.c - m.d * m.d;
  return std::sqrt((sum + std::hypot(difference, 2 * (m.a * m.c + m.b * m.d))) / 2);
}

// The current path becomes its dashes. What is a dot has a direction all the same, so that caps are drawn.
void DashCurrentPath(CGContext* context, double width) {
  constexpr double kLeast = 0.01;  // line widths
  std::vector<double> lengths(*context->state.dashes);
  for (std::size_t i = 0; i < lengths.size(); ++i) lengths[i] = width * std::max(lengths[i], i % 2 == 0 ? kLeast : 0.0);
  CGPath dashed;
  if (platform::AddDashes(*context->path.items, lengths, &dashed)) {
    context->path.Empty();
    CGPathAddPath(context->path.items, nullptr, &dashed);
  }
}

void StrokeCurrentPath(CGContext* context) {
  const CGAffineTransform m = context->UserToDevice();
  const platform::GraphicsState& state = context->state;
  if (!(state.lineWidth > 0) || !std::isfinite(state.lineWidth) || !platform::IsInvertible(m)) return;
  if (state.dashes != nullptr) DashCurrentPath(context, state.lineWidth * LargestScale(m));
  if (context->bitmap != nullptr) {
    platform::StrokeOnBitmap(context);
    return;
  }
  const double reach = StrokeReach(context, m);
  if (reach > kWidestReach || IsAllButFlat(m)) return FillStrokeArea(context, m, reach);
  PixelBox box;
  if (!Prepare(context, false, reach, &box)) return;
  cairo_t* cairo = context->cairo.get();
  if (!SetSource(context, state.stroke)) return;  // before the matrix, which would map a pattern too
  cairo_set_line_width(cairo, state.lineWidth);
  cairo_set_line_cap(cairo, static_cast<cairo_line_cap_t>(state.lineCap));
  cairo_set_line_join(cairo, static_cast<cairo_line_join_t>(state.lineJoin));
  const cairo_matrix_t matrix{m.a, m.b, m.c, m.d, 0, 0};  // where it lies makes no difference to a nib
  cairo_set_matrix(cairo, &matrix);
  cairo_stroke(cairo);
  cairo_identity_matrix(cairo);
}

static_assert(static_cast<int>(CAIRO_LINE_CAP_ROUND) == kCGLineCapRound);
static_assert(static_cast<int>(CAIRO_LINE_CAP_SQUARE) == kCGLineCapSquare);
static_assert(static_cast<int>(CAIRO_LINE_JOIN_ROUND) == kCGLineJoinRound);
static_assert(static_cast<int>(CAIRO_LINE_JOIN_BEVEL) == kCGLineJoinBevel);

void SetRectPath(CGContext* context, CGRect rect) {
  context->path.Empty();
  const CGAffineTransform m = context->UserToDevice();
  CGPathAddRect(context->path.items, &m, rect);  // which has room inside the path
}

// A long path that is added again, as it is done for each shape under a clip, most likely becomes that clip again: it
// is neither mapped nor copied before it is used otherwise.
void AddPath(CGContext* context, const CGPath& path) {
  const CGAffineTransform m = context->UserToDevice();
  platform::PathOrigin origin;
  if (context->path.IsEmpty() && path.points.Count() > CGPath::kInlineItems) {
    origin = {path.Identity(), m};
    context->path.same = SameIn(context->appliedClip, context->state.clip, origin, context->state.antialias);
    if (!(context->path.same == nullptr)) return;
  }
  CGPathAddPath(&context->path.Own(), &m, &path);
  context->path.origin = origin;
}

// What cairo draws in a scope clears.
class ClearingScope {
 public:
  explicit ClearingScope(cairo_t* cairo) : cairo_(cairo) { cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR); }
  ClearingScope(const ClearingScope&) = delete;
  ClearingScope& operator=(const ClearingScope&) = delete;
  ~ClearingScope() { cairo_set_operator(cairo_, CAIRO_OPERATOR_OVER); }

 private:
  cairo_t* cairo_;
};

// What paints the current path; that is empty afterwards, whatever happens.
template <typename Paint>
void PaintPath(CGContext* context, const Paint& paint) {
  platform::Guarded(context, [&] {
    if (!context->CanPaint() || context->path.isLost) return;
    context->path.Own();
    paint();
  });
  context->path.Empty();
}

}  // namespace

void CGContextBeginPath(CGContextRef context) {
  if (context != nullptr) context->path.Empty();
}

void CGContextAddPath(CGContextRef context, CGPathRef path) {
  if (context == nullptr || path == nullptr) return;
  const auto add = [&] { AddPath(context, *path); };
  if (!context->HasState() || !platform::Guarded(context, add)) context->path.isLost = true;  // or in a wrong place
}

void CGContextClip(CGContextRef context) {
  if (context == nullptr) return;
  const auto clip = [context] {
    platform::GraphicsState& state = context->state;
    const platform::Clip& known = context->path.same;
    if (!(known == nullptr) && known->parent.get() == state.clip.get() && known->antialias == state.antialias) {
      state.clip = known;
    } else {
      context->path.Own();
      platform::PushClip(context, &context->path.items, context->path.origin);
    }
  };
  if (context->HasState() && (context->path.isLost || !platform::Guarded(context, clip))) context->state.isLost = true;
  context->path.Empty();
}

void CGContextDrawPath(CGContextRef context, CGPathDrawingMode mode) {
  if (context == nullptr) return;
  PaintPath(context, [context, mode] {
    if (mode == kCGPathStroke) {
      StrokeCurrentPath(context);
    } else {
      FillCurrentPath(context, mode == kCGPathEOFill ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    }
  });
}

void CGContextFillRect(CGContextRef context, CGRect rect) {
  if (context == nullptr) return;
  SetRectPath(context, rect);
  PaintPath(context, [context] { FillCurrentPath(context, CAIRO_FILL_RULE_WINDING); });
}

void CGContextClearRect(CGContextRef context, CGRect rect) {
  if (context == nullptr) return;
  SetRectPath(context, rect);
  PaintPath(context, [context, rect] {
    if (context->target->ClearAll(context, rect)) return;
    if (context->bitmap != nullptr) {
      platform::FillOnBitmap(context, raster::FillRule::kNonZero, true);
      return;
    }
    platform::ApplyClip(context);  // which may set the operator
    const ClearingScope clearing(context->cairo.get());
    FillCurrentPath(context, CAIRO_FILL_RULE_WINDING);
  });
}
