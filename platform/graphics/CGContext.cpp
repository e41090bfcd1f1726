// The state of drawing contexts.
#include "CoreGraphics/CGContext.h"

#include <algorithm>
#include <utility>

#include "AKPlatform/AKDashes.h"
#include "platform/graphics/CGColorSpaceValue.h"
#include "platform/graphics/CGContextState.h"

namespace {

bool TakesState(CGContextRef context) { return context != nullptr && context->HasState(); }

void SetColor(platform::Paint* paint, double red, double green, double blue, double alpha) {
  *paint = {red, green, blue, alpha, {}, false};
}

void SetSpace(platform::Paint* paint, CGColorSpaceRef space) {
  SetColor(paint, 0, 0, 0, 1);
  paint->takesPattern = space != nullptr && space->kind == CGColorSpace::Kind::kPattern;
}

void SetPattern(platform::Paint* paint, CGPatternRef pattern, const CGFloat* components) {
  if (!paint->takesPattern || pattern == nullptr || components == nullptr) return;
  paint->pattern = platform::NativeRef<CGPattern>(pattern);
  paint->alpha = components[0];
}

}  // namespace

CGContext::CGContext(platform::CairoContext cairoContext, std::unique_ptr<platform::DrawingTarget> drawingTarget,
                     CGAffineTransform toDevice)
    : cairo(std::move(cairoContext)),
      target(std::move(drawingTarget)),
      baseToDevice(toDevice),
      path{CGPathCreateMutable(), {}, {}} {
  if (cairo != nullptr) platform::SetUpCairo(cairo.get());
}

CGContext::~CGContext() { CGPathRelease(path.items); }

void platform::CurrentPath::Empty() {
  items->verbs.Clear();
  items->points.Clear();
  items->Changed();
  origin = {};
  same = {};
  isLost = false;
}

CGPath& platform::CurrentPath::Own() {
  if (!(same == nullptr)) {
    CGPathAddPath(items, nullptr, same->path);
    origin = same->origin;
    same = {};
  }
  return *items;
}

CGContextRef CGContextRetain(CGContextRef context) {
  if (context != nullptr) context->Retain();
  return context;
}

void CGContextRelease(CGContextRef context) {
  if (context != nullptr) context->Release();
}

void CGContextSaveGState(CGContextRef context) {
  if (context == nullptr) return;
  const auto save = [context] { context->savedStates.push_back(context->state); };
  if (!context->HasState() || !platform::Guarded(context, save)) ++context->lostSaves;
}

void CGContextRestoreGState(CGContextRef context) {
  if (context == nullptr) return;
  if (!context->HasState()) {
    --context->lostSaves;
  } else if (!context->savedStates.empty()) {
    context->state = std::move(context->savedStates.back());
    context->savedStates.pop_back();
  }
}

void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform) {
  if (TakesState(context)) context->state.matrix = CGAffineTransformConcat(transform, context->state.matrix);
}

CGAffineTransform CGContextGetCTM(CGContextRef context) {
  return context != nullptr ? context->state.matrix : CGAffineTransformIdentity;
}

void CGContextSetShouldAntialias(CGContextRef context, bool antialias) {
  if (TakesState(context)) context->state.antialias = antialias;
}

void CGContextSetAlpha(CGContextRef context, CGFloat alpha) {
  if (TakesState(context)) context->state.alpha = alpha > 0 ? std::min(alpha, 1.0) : 0;
}

void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  if (TakesState(context)) SetColor(&context->state.fill, red, green, blue, alpha);
}

void CGContextSetRGBStrokeColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  if (TakesState(context)) SetColor(&context->state.stroke, red, green, blue, alpha);
}

void CGContextSetFillColorSpace(CGContextRef context, CGColorSpaceRef space) {
  if (TakesState(context)) SetSpace(&context->state.fill, space);
}

void CGContextSetFillPattern(CGContextRef context, CGPatternRef pattern, const CGFloat* components) {
  if (TakesState(context)) SetPattern(&context->state.fill, pattern, components);
}

void CGContextSetStrokeColorSpace(CGContextRef context, CGColorSpaceRef space) {
  if (TakesState(context)) SetSpace(&context->state.stroke, space);
}

void CGContextSetStrokePattern(CGContextRef context, CGPatternRef pattern, const CGFloat* components) {
  if (TakesState(context)) SetPattern(&context->state.stroke, pattern, components);
}

void CGContextSetPatternPhase(CGContextRef context, CGSize phase) {
  if (TakesState(context)) context->state.patternPhase = phase;
}

void CGContextSetLineWidth(CGContextRef context, CGFloat width) {
  if (TakesState(context)) context->state.lineWidth = width;
}

void CGContextSetLineCap(CGContextRef context, CGLineCap cap) {
  if (TakesState(context)) context->state.lineCap = cap;
}

void CGContextSetLineJoin(CGContextRef context, CGLineJoin join) {
  if (TakesState(context)) context->state.lineJoin = join;
}

void CGContextSetDashes(CGContextRef context, const CGFloat* lengths, size_t count) {
  if (!TakesState(context)) return;
  const auto set = [&] {
    context->state.dashes =
        count == 0 ? nullptr : std::make_shared<const std::vector<double>>(lengths, lengths + count);
  };
  if (!platform::Guarded(context, set)) context->state.isLost = true;
}

void CGContextSetBlendMode(CGContextRef context, CGBlendMode mode) {
  if (TakesState(context)) context->state.blendMode = mode;
}

void CGContextSetInterpolationQuality(CGContextRef context, CGInterpolationQuality quality) {
  if (TakesState(context)) context->state.interpolation = quality;
}
