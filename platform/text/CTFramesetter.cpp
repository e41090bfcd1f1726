#include "CoreText/CTFramesetter.h"

#include <algorithm>
#include <cmath>

#include "CoreText/CTStringAttributes.h"
#include "platform/foundation/CFArrayValue.h"
#include "platform/foundation/CFAttributedStringValue.h"
#include "platform/foundation/NotNull.h"
#include "platform/graphics/CGContextState.h"
#include "platform/text/CTLineValue.h"
#include "platform/text/CTParagraphStyleValue.h"
#include "platform/text/LineBreaker.h"

struct CTFramesetter final : platform::NativeObject {
  platform::NativeRef<const CFAttributedString> text;
  platform::TextStyle style;
  CTTextAlignment alignment = kCTTextAlignmentLeft;
  PangoDirection direction = PANGO_DIRECTION_NEUTRAL;
};

struct CTFrame final : platform::NativeObject {
  CTFrame(CGRect frameRect, std::vector<CFArray::Item> frameLines, std::vector<CGPoint> frameOrigins)
      : rect(frameRect),
        lines(platform::TakeRef<const CFArray>(new CFArray(std::move(frameLines)))),
        origins(std::move(frameOrigins)) {}

  const CGRect rect;
  const platform::NativeRef<const CFArray> lines;
  const std::vector<CGPoint> origins;
};

namespace {

using platform::NativeRef;
using platform::ShapedLine;

PangoDirection DirectionOf(CTWritingDirection direction) {
  if (direction == kCTWritingDirectionNatural) return PANGO_DIRECTION_NEUTRAL;
  return direction == kCTWritingDirectionRightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR;
}

// Stacks lines from the top of a frame down.
class Stack {
 public:
  Stack(const CTFramesetter& setter, CGSize size) : setter_(setter), size_(size), y_(size.height) {}

  // False, and the line is left out, when there is no room for it.
  bool Add(NativeRef<const ShapedLine> shape, platform::VisiblePart visible) {
    const double scale = setter_.style.Scale();
    const platform::FontMetrics& metrics = shape.Get()->metrics;
    const double baseline = y_ - metrics.ascent * scale;
    if (!(baseline - metrics.descent * scale >= 0)) return false;
    y_ = baseline - (metrics.descent + metrics.leading) * scale;
    origins_.push_back({Indent(size_.width - visible.width * scale) - visible.start * scale, baseline});
    const auto* line = new CTLine(setter_.style, std::move(shape), visible);  // no line under blanks
    lines_.push_back(platform::TakeRef<const platform::NativeObject>(line));
    return true;
  }

  CTFrameRef Finish(CGRect rect) { return new CTFrame(rect, std::move(lines_), std::move(origins_)); }

 private:
  double Indent(double room) const {
    if (setter_.alignment == kCTTextAlignmentRight) return room;
    return setter_.alignment == kCTTextAlignmentCenter ? room / 2 : 0;
  }

  const CTFramesetter& setter_;
  CGSize size_;
  double y_;  // the top of the next line
  std::vector<CFArray::Item> lines_;
  std::vector<CGPoint> origins_;
};

}  // namespace

CTFramesetterRef CTFramesetterCreateWithAttributedString(CFAttributedStringRef text) {
  platform::MustBeThere(text);
  const CFIndex length = CFAttributedStringGetLength(text);
  platform::TextStyle style;
  if (length == 0 || length > platform::kMaxTextLength || !style.Take(text)) return nullptr;
  auto* setter = new CTFramesetter;
  setter->text = NativeRef(text);
  setter->style = std::move(style);
  const auto* paragraph = text->Get<CTParagraphStyle>(kCTParagraphStyleAttributeName);
  if (paragraph == nullptr) return setter;
  setter->alignment = paragraph->alignment;
  setter->direction = DirectionOf(paragraph->direction);
  return setter;
}

CTFrameRef CTFramesetterCreateFrame(CTFramesetterRef framesetter, CFRange range, CGPathRef path, CFDictionaryRef) {
  platform::MustBeThere(framesetter);
  platform::MustBeThere(path);
  if (framesetter == nullptr || CGPathIsEmpty(path)) return nullptr;
  const std::vector<UniChar>& units = framesetter->text.Get()->text.Get()->units;
  const bool isWhole = range.location == 0 && (range.length == 0 || range.length == static_cast<CFIndex>(units.size()));
  const CGRect rect = CGPathGetBoundingBox(path);
  const double scale = framesetter->style.Scale();
  if (!isWhole || !std::isfinite(rect.size.width) || !std::isfinite(rect.size.height) || !(scale > 0)) return nullptr;
  Stack stack(*framesetter, rect.size);
  platform::BreakIntoLines(
      *framesetter->style.font.Get()->face.Get(), units, framesetter->direction, rect.size.width / scale,
      [&](NativeRef<const ShapedLine> line, platform::VisiblePart part) { return stack.Add(std::move(line), part); });
  return stack.Finish(rect);
}

CFArrayRef CTFrameGetLines(CTFrameRef frame) {
  platform::MustBeThere(frame);
  return frame == nullptr ? nullptr : frame->lines.Get();
}

void CTFrameGetLineOrigins(CTFrameRef frame, CFRange range, CGPoint* origins) {
  platform::MustBeThere(frame);
  if (frame == nullptr || origins == nullptr) return;
  const auto count = static_cast<CFIndex>(frame->origins.size());
  if (range.location < 0 || range.location > count) return;
  const CFIndex rest = count - range.location;
  const CFIndex wanted = range.length == 0 ? rest : std::min(range.length, rest);
  std::copy_n(frame->origins.begin() + range.location, std::max<CFIndex>(wanted, 0), origins);
}

void CTFrameDraw(CTFrameRef frame, CGContextRef context) {
  platform::MustBeThere(frame);
  if (frame == nullptr || context == nullptr) return;
  for (std::size_t i = 0; i < frame->origins.size(); ++i) {
    const CGPoint origin = frame->origins[i];
    CGContextSetTextPosition(context, frame->rect.origin.x + origin.x, frame->rect.origin.y + origin.y);
    CTLineDraw(static_cast<CTLineRef>(frame->lines.Get()->items[i].Get()), context);
  }
}
