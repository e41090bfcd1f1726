// The operations of drawing contexts on text.
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/graphics/CGContextState.h"
#include "platform/text/CTLineValue.h"
#include "platform/text/GlyphPainter.h"
#include "platform/text/TextEngine.h"

namespace {

using platform::Paint;
using platform::Scoped;

bool Fills(CGTextDrawingMode mode) {
  return mode == kCGTextFill || mode == kCGTextFillStroke || mode == kCGTextFillClip || mode == kCGTextFillStrokeClip;
}

bool Strokes(CGTextDrawingMode mode) {
  return mode == kCGTextStroke || mode == kCGTextFillStroke || mode == kCGTextStrokeClip ||
         mode == kCGTextFillStrokeClip;
}

bool Clips(CGTextDrawingMode mode) { return mode >= kCGTextFillClip; }

Paint PaintOf(const CGColor* color, const CGColor* otherwise) {
  const CGColor* used = color != nullptr ? color : otherwise;
  if (used == nullptr) return {};
  return {used->red, used->green, used->blue, used->alpha, {}, false};
}

// Paints a path of device space as the context's current one, which is left as it was.
void PaintPath(CGContext* context, CGPath* path, CGPathDrawingMode mode, const Paint& paint) {
  const Scoped used(mode == kCGPathStroke ? context->state.stroke : context->state.fill, paint);
  const Scoped current(context->path, platform::CurrentPath{path, {}, {}});
  CGContextDrawPath(context, mode);
}

void PaintOutlines(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice,
                   CGPathDrawingMode mode, const Paint& paint) {
  CGPath path;
  platform::AppendOutlines(line, textToDevice, true, &path);
  PaintPath(context, &path, mode, paint);
}

void FillUnderline(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint) {
  CGPath path;
  platform::AppendUnderline(line, textToDevice, &path);
  PaintPath(context, &path, kCGPathFill, paint);
}

void Fill(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint) {
  if (!platform::PaintGlyphs(context, line, textToDevice, paint)) {
    {
      const Scoped antialias(context->state.antialias, platform::IsSoft(context->state));
      PaintOutlines(context, line, textToDevice, kCGPathFill, paint);
    }
    platform::PaintPictures(context, line, textToDevice, paint);
  } else if (line.style.underline) {
    FillUnderline(context, line, textToDevice, paint);
  }
}

// A page can't stroke text as text: next to the outlines it gets text that is all but invisible, to be found and
// copied by a reader.
void Stroke(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint,
            bool isFilled) {
  constexpr double kLeastAlpha = 1.0 / 255;  // cairo leaves out what has less
  if (!isFilled && context->target->IsVector()) {
    Paint faint = paint;
    faint.alpha = kLeastAlpha / context->state.alpha;
    if (paint.alpha > faint.alpha) platform::PaintLetters(context, line, textToDevice, faint);
  }
  PaintOutlines(context, line, textToDevice, kCGPathStroke, paint);
}

struct OwnPath {
  OwnPath() = default;
  OwnPath(const OwnPath&) = delete;
  OwnPath& operator=(const OwnPath&) = delete;
  ~OwnPath() { CGPathRelease(path); }
  CGMutablePathRef path = CGPathCreateMutable();
};

void AddToTextClip(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice) {
  auto& clip = context->state.textClip;
  if (clip == nullptr) {
    clip = std::make_shared<std::vector<platform::ClippingText>>();
  } else if (clip.use_count() > 1) {  // a saved state has it too
    clip = std::make_shared<std::vector<platform::ClippingText>>(*clip);
  }
  clip->push_back({platform::NativeRef(&line), textToDevice});
}

}  // namespace

namespace platform {

void DrawLine(CGContextRef context, const CTLine& line, const CGAffineTransform& textToUser) {
  const CGAffineTransform textToDevice = CGAffineTransformConcat(textToUser, context->UserToDevice());
  const double scale = line.style.Scale();
  if (!(scale > 0) || !IsInvertible(CGAffineTransformScale(textToDevice, scale, scale))) return;
  const CGTextDrawingMode mode = context->state.textMode;
  const CGColor* fill = line.style.fill.Get();
  Guarded(context, [&] {
    if (!context->CanPaint()) return;
    const Scoped others(context->state.textClip, {});  // text beside text is not clipped by it
    if (Fills(mode)) Fill(context, line, textToDevice, PaintOf(fill, nullptr));
    if (Strokes(mode)) Stroke(context, line, textToDevice, PaintOf(line.style.stroke.Get(), fill), Fills(mode));
  });
  if (!Clips(mode) || !context->HasState()) return;
  if (!Guarded(context, [&] { AddToTextClip(context, line, textToDevice); })) context->state.isLost = true;
}

void SettleTextClip(CGContext* context) {
  OwnPath outlines;
  for (const ClippingText& item : *context->state.textClip) {
    AppendOutlines(*item.line.Get(), item.toDevice, false, outlines.path);
  }
  PushClip(context, &outlines.path, {});
  context->state.textClip = nullptr;
}

}  // namespace platform

void CGContextSetTextMatrix(CGContextRef context, CGAffineTransform matrix) {
  if (context != nullptr) context->textMatrix = matrix;
}

void CGContextSetTextPosition(CGContextRef context, CGFloat x, CGFloat y) {
  if (context == nullptr) return;
  context->textMatrix.tx = x;
  context->textMatrix.ty = y;
}

CGPoint CGContextGetTextPosition(CGContextRef context) {
  return context == nullptr ? CGPoint{0, 0} : CGPoint{context->textMatrix.tx, context->textMatrix.ty};
}

void CGContextSetTextDrawingMode(CGContextRef context, CGTextDrawingMode mode) {
  if (context != nullptr && context->HasState()) context->state.textMode = mode;
}

void CGContextSetAllowsFontSmoothing(CGContextRef context, bool allows) {
  if (context != nullptr && context->HasState()) context->state.allowsFontSmoothing = allows;
}

void CGContextSetShouldSmoothFonts(CGContextRef context, bool should) {
  if (context != nullptr && context->HasState()) context->state.shouldSmoothFonts = should;
}
