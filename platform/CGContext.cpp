// The state of drawing contexts.
#include "CoreGraphics/CGContext.h"

#include <algorithm>
#include <utility>

#include "platform/CGContextState.h"

CGContext::CGContext(platform::CairoContext cairoContext, std::unique_ptr<platform::DrawingTarget> drawingTarget,
                     CGAffineTransform toDevice)
    : cairo(std::move(cairoContext)),
      target(std::move(drawingTarget)),
      baseToDevice(toDevice),
      path(CGPathCreateMutable()) {
  // cairo's own defaults happen to be these, or not to matter; they are stated so that no release can change them.
  cairo_set_miter_limit(cairo.get(), 10.0);
  cairo_set_tolerance(cairo.get(), 0.1);
  cairo_set_operator(cairo.get(), CAIRO_OPERATOR_OVER);
  cairo_identity_matrix(cairo.get());
}

CGContext::~CGContext() { CGPathRelease(path); }

CGContextRef CGContextRetain(CGContextRef context) {
  if (context != nullptr) context->Retain();
  return context;
}

void CGContextRelease(CGContextRef context) {
  if (context != nullptr) context->Release();
}

void CGContextSaveGState(CGContextRef context) {
  if (context != nullptr) context->savedStates.push_back(context->state);
}

void CGContextRestoreGState(CGContextRef context) {
  if (context == nullptr || context->savedStates.empty()) return;
  context->state = std::move(context->savedStates.back());
  context->savedStates.pop_back();
}

void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform) {
  if (context != nullptr) context->state.matrix = CGAffineTransformConcat(transform, context->state.matrix);
}

CGAffineTransform CGContextGetCTM(CGContextRef context) {
  return context != nullptr ? context->state.matrix : CGAffineTransformIdentity;
}

void CGContextSetShouldAntialias(CGContextRef context, bool antialias) {
  if (context != nullptr) context->state.antialias = antialias;
}

void CGContextSetAlpha(CGContextRef context, CGFloat alpha) {
  if (context != nullptr) context->state.alpha = alpha > 0 ? std::min(alpha, 1.0) : 0;
}

void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  if (context != nullptr) context->state.fill = {red, green, blue, alpha};
}

void CGContextSetRGBStrokeColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  if (context != nullptr) context->state.stroke = {red, green, blue, alpha};
}

void CGContextSetLineWidth(CGContextRef context, CGFloat width) {
  if (context != nullptr) context->state.lineWidth = width;
}

void CGContextSetLineCap(CGContextRef context, CGLineCap cap) {
  if (context != nullptr) context->state.lineCap = cap;
}

void CGContextSetLineJoin(CGContextRef context, CGLineJoin join) {
  if (context != nullptr) context->state.lineJoin = join;
}
