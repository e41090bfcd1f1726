// Filling and stroking paths, and clearing.
#include <algorithm>
#include <cmath>
#include <optional>

#include "graphics/geometry/AGAffineTransformFactorize.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "graphics/native/AGGraphicsLowSupport.h"
#include "graphics/native/AGMacOS.h"

namespace AGGraphicsLow {
namespace {

// Below this ratio the nib is elliptical.
constexpr double kRoundNibRatio = 0.99;

CGPathDrawingMode FillRule(const AGBrush& brush) {
  return brush.FillMode() == kAGBrushFillWinding ? kCGPathFill : kCGPathEOFill;
}

void FillPath(const AGContext& context, const AGPath& path) {
  CGContextRef port = context.NativePort();
  CGContextBeginPath(port);
  CGContextAddPath(port, path.NativePath());
  CGContextDrawPath(port, FillRule(context.brush));
}

void FillSolid(const AGContext& context, const AGPath& path) {
  SetFillColor(context.NativePort(), ApplyColorFactor(context.brush.Color(), context.colorFactor));
  FillPath(context, path);
}

double Round(double value) { return std::floor(value + 0.5); }

CGSize PatternPhase(const AGContext& context) {
  return {Round(context.patternOrigin.x), Round(context.patternOrigin.y)};
}

// A pattern made native for the time of a call.
class PatternScope {
 public:
  PatternScope(const AGBrush& brush, double colorFactor)
      : pattern_(NewPattern(MakePatternRecord(brush, colorFactor))), space_(CGColorSpaceCreatePattern(nullptr)) {}
  PatternScope(const PatternScope&) = delete;
  PatternScope& operator=(const PatternScope&) = delete;
  ~PatternScope() {
    CGColorSpaceRelease(space_);
    CGPatternRelease(pattern_);
  }

  CGPatternRef Pattern() const { return pattern_; }
  CGColorSpaceRef Space() const { return space_; }

 private:
  CGPatternRef pattern_;
  CGColorSpaceRef space_;
};

void FillPattern(const AGContext& context, const AGPath& path) {
  CGContextRef port = context.NativePort();
  const PatternScope scope(context.brush, context.colorFactor);
  if (scope.Pattern() == nullptr) return;
  const CGFloat opaque = 1.0;
  CGContextSetFillColorSpace(port, scope.Space());
  CGContextSetFillPattern(port, scope.Pattern(), &opaque);
  CGContextSetPatternPhase(port, PatternPhase(context));
  FillPath(context, path);
}

// What a gradient spans, relative to the path's origin.
AGRect GradientRect(const AGBrush& brush, const AGPath& path) {
  const ATBrushCustomGradient<double>* custom = brush.CustomGradient();
  const bool ownBounds = custom != nullptr && !(custom->Bounds() == kAGNullRect);
  const AGRect rect = ownBounds ? custom->Bounds() : path.GetBoundingBox();
  const AGPoint origin = path.Origin();
  return {rect.x0 - origin.x, rect.y0 - origin.y, rect.x1 - origin.x, rect.y1 - origin.y};
}

AGRect MapRect(const AGRect& rect, const AGAffineTransform& scaling) {
  const AGPoint p0 = scaling.Apply({rect.x0, rect.y0});
  const AGPoint p1 = scaling.Apply({rect.x1, rect.y1});
  return {p0.x, p0.y, p1.x, p1.y};
}

void FillGradient(const AGContext& context, const AGPath& path) {
  CGContextRef port = context.NativePort();
  const AGBrush& brush = context.brush;
  AGRect rect = GradientRect(brush, path);
  AGAffineTransform toSquare = kAGAffineTransformIdentity;
  if (brush.Style() == kAGBrushStyleRadialGradient) {
    if (rect.IsEmpty()) return;
    // A circle in the largest centred square becomes an ellipse that fills the rectangle.
    const AGRect square = MapRect({0, 0, 1, 1}, FitBox({0, 0, 1, 1}, rect, true));
    CGContextConcatCTM(port, AGMacOS::CGAffineTransformConvert(FitBox(square, rect, false)));
    toSquare = FitBox(rect, square, false);
    rect = square;
  }
  CGShadingRef shading = NewGradientShading(brush, rect, context.colorFactor);
  if (shading == nullptr) return;
  const MappedPath mapped(path.NativePath(), toSquare);
  CGContextBeginPath(port);
  CGContextAddPath(port, mapped.Get());
  CGContextClip(port);
  CGContextDrawShading(port, shading);
  CGShadingRelease(shading);
}

void Fill(const AGContext& context, const AGPath& path, const AGAffineTransform& transform) {
  const PortScope scope(context);
  const AGAffineTransform matrix = PathToPort(context, path, transform);
  if (!matrix.IsIdentity()) CGContextConcatCTM(context.NativePort(), AGMacOS::CGAffineTransformConvert(matrix));
  switch (context.brush.Style()) {
    case kAGBrushStyleSolid:
      FillSolid(context, path);
      break;
    case kAGBrushStylePattern:
      FillPattern(context, path);
      break;
    default:
      FillGradient(context, path);
      break;
  }
}

// The pen counts square before round, the native layer round before square.
CGLineCap NativeCap(AGPenLineCap cap) {
  switch (cap) {
    case kAGPenLineCapSquare:
      return kCGLineCapSquare;
    case kAGPenLineCapRound:
      return kCGLineCapRound;
    default:
      return kCGLineCapButt;
  }
}

CGLineJoin NativeJoin(AGPenLineJoin join) {
  switch (join) {
    case kAGPenLineJoinBevel:
      return kCGLineJoinBevel;
    case kAGPenLineJoinRound:
      return kCGLineJoinRound;
    default:
      return kCGLineJoinMiter;
  }
}

// Maps a round nib onto one that is thin across the pen's direction: it scales y, then turns by θ, so that the long
// axis of the ellipse lies along θ.
AGAffineTransform NibMatrix(const AGPen& pen, const AGAffineTransform& matrix) {
  double rotation = 0;
  AGAffineTransformFactorize(matrix, nullptr, nullptr, &rotation, nullptr);
  const double theta = pen.Angle() - rotation;
  const double ratio = std::max(pen.Ratio(), 1.001 / pen.Size());
  return {std::cos(theta), std::sin(theta), -ratio * std::sin(theta), ratio * std::cos(theta), 0, 0};
}

// Gradient pens stroke in their first colour.
void StrokeMapped(const AGContext& context, const AGPath& path, const AGAffineTransform& matrix) {
  CGContextRef port = context.NativePort();
  const AGBrush& brush = context.pen.Brush();
  const MappedPath mapped(path.NativePath(), matrix);
  std::optional<PatternScope> scope;
  if (brush.Style() == kAGBrushStylePattern) {
    scope.emplace(brush, context.colorFactor);
    if (scope->Pattern() == nullptr) return;
    const CGFloat opaque = 1.0;
    CGContextSetStrokeColorSpace(port, scope->Space());
    CGContextSetStrokePattern(port, scope->Pattern(), &opaque);
    CGContextSetPatternPhase(port, PatternPhase(context));
  } else {
    SetStrokeColor(port, ApplyColorFactor(brush.Color(), context.colorFactor));
  }
  CGContextBeginPath(port);
  CGContextAddPath(port, mapped.Get());
  CGContextDrawPath(port, kCGPathStroke);
}

void Stroke(const AGContext& context, const AGPath& path, const AGAffineTransform& transform) {
  const PortScope scope(context);
  CGContextRef port = context.NativePort();
  CGContextSetLineWidth(port, PenWidth(context));
  CGContextSetLineCap(port, NativeCap(context.pen.LineCap()));
  CGContextSetLineJoin(port, NativeJoin(context.pen.LineJoin()));

  const AGAffineTransform matrix = PathToPort(context, path, transform);
  if (context.pen.Ratio() < kRoundNibRatio) {
    const AGAffineTransform nib = NibMatrix(context.pen, matrix);  // its determinant, the ratio, is never 0
    CGContextConcatCTM(port, AGMacOS::CGAffineTransformConvert(nib));
    StrokeMapped(context, path, AGAffineTransformConcat(matrix, AGAffineTransformInverse(nib)));
  } else {
    StrokeMapped(context, path, matrix);
  }
}

// The part of `rect` on the surface, in whole units; false when there is none.
bool TakeSurfaceRect(const AGContext& context, const AGRect& rect, CGRect* out) {
  const double x0 = std::max(Round(rect.x0), 0.0);
  const double y0 = std::max(Round(rect.y0), 0.0);
  const double x1 = std::min(Round(rect.x1), Round(context.Size().width));
  const double y1 = std::min(Round(rect.y1), Round(context.Size().height));
  if (context.NativePort() == nullptr || !(x0 < x1 && y0 < y1)) return false;
  *out = CGRectMake(x0, y0, x1 - x0, y1 - y0);
  return true;
}

}  // namespace

bool AGContextDrawPath(const AGContext& context, const AGPath& path, const AGAffineTransform& transform,
                       AGDrawMode mode) {
  if (context.NativePort() == nullptr || path.IsEmpty() || !(context.alpha >= AGContext::kMinVisibleAlpha)) {
    return false;
  }
  const bool fills = context.brush.Appears() && (mode & kAGDrawModeStrokeOnly) == 0;
  const bool strokes = context.pen.Appears() && (mode & kAGDrawModeFillOnly) == 0;
  if (fills) Fill(context, path, transform);
  if (strokes) Stroke(context, path, transform);
  return fills || strokes;
}

void AGContextClearPixels(const AGContext& context, AGColor color, const AGRect& rect) {
  CGRect cleared;
  if (!TakeSurfaceRect(context, rect, &cleared)) return;
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  CGContextSetShouldAntialias(port, false);
  SetFillColor(port, AGColor(color.Red(), color.Green(), color.Blue(), 255));
  CGContextFillRect(port, cleared);
  CGContextRestoreGState(port);
}

void AGContextErasePixels(const AGContext& context, const AGRect& rect) {
  CGRect cleared;
  if (!TakeSurfaceRect(context, rect, &cleared)) return;
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  CGContextSetShouldAntialias(port, false);
  CGContextClearRect(port, cleared);
  CGContextRestoreGState(port);
}

}  // namespace AGGraphicsLow
