// Drawing, outlining and measuring text.
#include "graphics/native/AGGraphicsLowText.h"

#include <algorithm>
#include <vector>

#include "AKPlatform/AKLineOutlines.h"
#include "CoreText/CTFramesetter.h"
#include "CoreText/CTLine.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowOwned.h"
#include "graphics/native/AGGraphicsLowSupport.h"
#include "graphics/native/AGMacOS.h"

namespace AGGraphicsLow {
namespace {

// Frames are set in a band of this width and height, which the point lies at the upper edge of.
constexpr double kBand = 32000;

double BandStart(AGTextAlignment alignment) {
  if (alignment == kAGTextAlignmentRight) return -kBand;
  return alignment == kAGTextAlignmentCenter ? -kBand / 2 : 0;
}

double ImageWidth(CTLineRef line) { return CTLineGetImageBounds(line, nullptr).size.width; }

// How far to the right of the point a single line begins.
double LineStart(CTLineRef line, AGTextAlignment alignment) {
  if (alignment == kAGTextAlignmentRight) return -ImageWidth(line);
  return alignment == kAGTextAlignmentCenter ? -ImageWidth(line) / 2 : 0;
}

// A text that is laid out: a frame or a line.
class LaidOutText {
 public:
  LaidOutText(CFAttributedStringRef text, AGTextAlignment alignment, bool hasLineBreak) {
    if (text == nullptr) return;
    if (hasLineBreak) {
      MakeFrame(text, alignment);
    } else {
      line_ = Owned<CTLineRef>(CTLineCreateWithAttributedString(text));
      if (line_.Get() != nullptr) offset_.x = LineStart(line_.Get(), alignment);
    }
  }

  bool IsEmpty() const { return frame_.Get() == nullptr && line_.Get() == nullptr; }
  /// From the point that the text is drawn at to the origin that it is laid out from.
  AGPoint Offset() const { return offset_; }

  void Draw(CGContextRef port) const {
    if (frame_.Get() != nullptr) {
      CTFrameDraw(frame_.Get(), port);
    } else {
      CGContextSetTextPosition(port, 0, 0);
      CTLineDraw(line_.Get(), port);
    }
  }

  /// Calls `use` with each line and where its baseline begins, from the origin that the text is laid out from.
  template <typename Use>
  void ForEachLine(Use use) const {
    if (line_.Get() != nullptr) use(line_.Get(), CGPoint{0, 0});
    if (frame_.Get() == nullptr) return;
    for (std::size_t i = 0; i < origins_.size(); ++i) {
      const auto* line = static_cast<CTLineRef>(CFArrayGetValueAtIndex(CTFrameGetLines(frame_.Get()), CFIndex(i)));
      use(line, CGPoint{bandStart_ + origins_[i].x, origins_[i].y - kBand});
    }
  }

 private:
  void MakeFrame(CFAttributedStringRef text, AGTextAlignment alignment) {
    const Owned<CTFramesetterRef> framesetter(CTFramesetterCreateWithAttributedString(text));
    if (framesetter.Get() == nullptr) return;
    bandStart_ = BandStart(alignment);
    CGMutablePathRef band = CGPathCreateMutable();
    CGPathAddRect(band, nullptr, CGRectMake(bandStart_, 0, kBand, -kBand));
    frame_ = Owned<CTFrameRef>(CTFramesetterCreateFrame(framesetter.Get(), CFRangeMake(0, 0), band, nullptr));
    CGPathRelease(band);
    if (frame_.Get() == nullptr) return;
    origins_.resize(static_cast<std::size_t>(CFArrayGetCount(CTFrameGetLines(frame_.Get()))));
    if (origins_.empty()) return;
    CTFrameGetLineOrigins(frame_.Get(), CFRangeMake(0, 0), origins_.data());
    offset_.y = kBand - origins_[0].y;
  }

  Owned<CTFrameRef> frame_;
  Owned<CTLineRef> line_;
  AGPoint offset_;
  double bandStart_ = 0;
  std::vector<CGPoint> origins_;
};

// How a context draws text.
struct TextPaint {
  explicit TextPaint(const AGContext& context) {
    const bool isVisible = context.alpha >= AGContext::kMinVisibleAlpha;
    fills = isVisible && context.brush.Appears();
    strokes = isVisible && context.pen.Appears();
    if (fills) fill = ApplyColorFactor(context.brush.Color(), context.colorFactor);
    if (strokes) stroke = ApplyColorFactor(context.pen.Brush().Color(), context.colorFactor);
  }

  CGTextDrawingMode Mode(bool clips) const {
    if (fills && strokes) return clips ? kCGTextFillStrokeClip : kCGTextFillStroke;
    if (fills) return clips ? kCGTextFillClip : kCGTextFill;
    return clips ? kCGTextStrokeClip : kCGTextStroke;
  }

  bool fills = false;
  bool strokes = false;
  AGColor fill = AGColor(0, 0, 0, 0);
  AGColor stroke = kAGNullColor;
};

// Prepares the port, whose state the caller saved, for text through `transform` and then the context's own.
void SetTextState(const AGContext& context, const TextPaint& paint, const AGAffineTransform& transform) {
  CGContextRef port = context.NativePort();
  CGContextSetTextMatrix(port, CGAffineTransformIdentity);
  CGContextSetInterpolationQuality(port, context.antialias ? kCGInterpolationHigh : kCGInterpolationLow);
  CGContextSetShouldSmoothFonts(port, context.antialias);
  CGContextSetAllowsFontSmoothing(port, context.antialias);
  CGContextConcatCTM(port, AGMacOS::CGAffineTransformConvert(AGAffineTransformConcat(transform, context.transform)));
  if (paint.strokes) CGContextSetLineWidth(port, PenWidth(context));
  CGContextSetTextDrawingMode(port, paint.Mode(context.HasClip()));
}

bool CanDraw(const AGContext& context, const AGFont& font, const TextPaint& paint) {
  return (paint.fills || paint.strokes) && context.NativePort() != nullptr && font.IsValid();
}

}  // namespace

bool AGContextDrawUText(const AGContext& context, const AGFont& font, const AKString& string, const AKUniChars& text,
                        const AGPoint& point, const AGAffineTransform& transform, AGTextAlignment alignment) {
  const TextPaint paint(context);
  if ((string.IsEmpty() && text.IsEmpty()) || !CanDraw(context, font, paint)) return false;
  bool hasLineBreak = false;
  const Owned<CFAttributedStringRef> attributed(
      _LowCFAttributedStringCreate(string, text, font, alignment, paint.fill, paint.stroke, &hasLineBreak));
  const LaidOutText laidOut(attributed.Get(), alignment, hasLineBreak);
  if (laidOut.IsEmpty()) return false;
  const AGPoint origin = point + laidOut.Offset();
  const PortScope scope(context);
  SetTextState(context, paint, AGAffineTransformConcat(AGAffineTransformTranslation(origin.x, origin.y), transform));
  laidOut.Draw(context.NativePort());
  return true;
}

bool AGContextDrawStrings(const AGContext& context, const AGFont& font, const AKStringArray& strings,
                          const AGPointArray& points, const AGAffineTransform& transform, AGTextAlignment alignment) {
  const TextPaint paint(context);
  const unsigned int count = std::min(strings.Count(), points.Count());
  if (count == 0 || !CanDraw(context, font, paint)) return false;
  CGContextRef port = context.NativePort();
  const PortScope scope(context);
  SetTextState(context, paint, transform);
  bool drew = false;
  for (unsigned int i = 0; i < count; ++i) {
    const Owned<CFAttributedStringRef> attributed(_LowCFAttributedStringCreate(
        strings[i], AKUniChars(), font, kAGTextAlignmentLeft, paint.fill, paint.stroke, nullptr));
    if (attributed.Get() == nullptr) continue;  // an empty string
    const Owned<CTLineRef> line(CTLineCreateWithAttributedString(attributed.Get()));
    if (line.Get() == nullptr) continue;
    CGContextSetTextPosition(port, points[i].x + LineStart(line.Get(), alignment), points[i].y);
    CTLineDraw(line.Get(), port);
    drew = true;
  }
  return drew;
}

bool AGPathAddUText(AGPath* path, const AGFont& font, const AKString& string, const AKUniChars& text,
                    const AGPoint& point, AGTextAlignment alignment) {
  if ((string.IsEmpty() && text.IsEmpty()) || !font.IsValid()) return false;
  bool hasLineBreak = false;
  const Owned<CFAttributedStringRef> attributed(
      _LowCFAttributedStringCreate(string, text, font, alignment, kAGColorBlack, kAGNullColor, &hasLineBreak));
  const LaidOutText laidOut(attributed.Get(), alignment, hasLineBreak);
  if (laidOut.IsEmpty()) return false;
  path->UpdateOrigin(point);
  const AGPoint start = point + laidOut.Offset() - path->Origin();
  CGMutablePathRef native = path->NativePathToModify();
  laidOut.ForEachLine([&](CTLineRef line, CGPoint origin) {
    const CGAffineTransform place{1, 0, 0, 1, start.x + origin.x, start.y + origin.y};
    CTLineAddToPath(line, &place, native);
  });
  return true;
}

AGSize AGFontGetUTextExtent(const AGFont& font, const AKString& string, const AKUniChars& text) {
  AGSize extent;
  if ((string.IsEmpty() && text.IsEmpty()) || !font.IsValid()) return extent;
  bool hasLineBreak = false;
  const Owned<CFAttributedStringRef> attributed(_LowCFAttributedStringCreate(
      string, text, font, kAGTextAlignmentLeft, kAGColorBlack, kAGNullColor, &hasLineBreak));
  const LaidOutText laidOut(attributed.Get(), kAGTextAlignmentLeft, hasLineBreak);
  laidOut.ForEachLine([&](CTLineRef line, CGPoint) {
    CGFloat ascent = 0;
    CGFloat descent = 0;
    CGFloat leading = 0;
    CTLineGetTypographicBounds(line, &ascent, &descent, &leading);
    extent.width = std::max(extent.width, ImageWidth(line));
    extent.height += ascent + descent + leading;
  });
  return extent;
}

double AGFontGetLineHeight(const AGFont& font) {
  return AGFontGetUTextExtent(font, AKString(" "), AKUniChars()).height;
}

}  // namespace AGGraphicsLow
