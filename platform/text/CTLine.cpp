#include "CoreText/CTLine.h"

#include <limits>

#include "AKPlatform/AKLineOutlines.h"
#include "CoreText/CTStringAttributes.h"
#include "platform/foundation/CFAttributedStringValue.h"
#include "platform/foundation/CFNumberValue.h"
#include "platform/foundation/NotNull.h"
#include "platform/graphics/CGContextState.h"
#include "platform/text/CTLineValue.h"

namespace platform {

bool TextStyle::Take(CFAttributedStringRef text) {
  if (text == nullptr) return false;
  font = NativeRef(text->Get<__CTFont>(kCTFontAttributeName));
  fill = NativeRef(text->Get<CGColor>(kCTForegroundColorAttributeName));
  stroke = NativeRef(text->Get<CGColor>(kCTStrokeColorAttributeName));
  const auto* line = text->Get<CFNumber>(kCTUnderlineStyleAttributeName);
  underline = line != nullptr && line->integer != 0;
  return font.Get() != nullptr;
}

void AppendOutlines(const CTLine& line, const CGAffineTransform& m, bool withUnderline, CGMutablePathRef path) {
  const ShapedLine& shape = *line.shape.Get();
  const double scale = line.style.Scale();
  const CGAffineTransform fromReference = CGAffineTransformScale(m, scale, scale);
  for (const ShapedRun& run : shape.runs) {
    FontFace& face = FontFace::Of(run.font.Get());
    for (std::size_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
      const cairo_glyph_t& glyph = shape.glyphs[i];
      const CGAffineTransform placed = CGAffineTransformTranslate(fromReference, glyph.x, glyph.y);
      CGPathAddPath(path, &placed, &face.Outline(static_cast<std::uint32_t>(glyph.index)));
    }
  }
  if (withUnderline && line.style.underline) AppendUnderline(line, m, path);
}

void AppendUnderline(const CTLine& line, const CGAffineTransform& m, CGMutablePathRef path) {
  const FontMetrics& metrics = FontFace::Of(line.style.font.Get()->face.Get()->font.Get()).Metrics();
  const CGAffineTransform fromReference = CGAffineTransformScale(m, line.style.Scale(), line.style.Scale());
  const double bottom = metrics.underlineTop - metrics.underlineThickness;
  CGPathAddRect(path, &fromReference,
                {{line.underlined.start, bottom}, {line.underlined.width, metrics.underlineThickness}});
}

}  // namespace platform

CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef text) {
  platform::MustBeThere(text);
  const CFIndex length = CFAttributedStringGetLength(text);
  platform::TextStyle style;
  if (length == 0 || length > platform::kMaxTextLength || !style.Take(text)) return nullptr;
  const __CTFont& font = *style.font.Get();
  platform::NativeRef<const platform::ShapedLine> shape =
      platform::CachedLine(*font.face.Get(), text->text.Get()->units.data(), static_cast<std::size_t>(length));
  const double width = shape.Get()->width;
  return new CTLine(std::move(style), std::move(shape), {0, width});
}

CGRect CTLineGetImageBounds(CTLineRef line, CGContextRef context) {
  platform::MustBeThere(line);
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (line == nullptr || line->shape.Get()->Ink().IsEmpty()) return {{kInfinity, kInfinity}, {0, 0}};
  const platform::InkBox& ink = line->shape.Get()->Ink();
  const double scale = line->style.Scale();
  const CGPoint start = context == nullptr ? CGPoint{0, 0} : CGContextGetTextPosition(context);
  return {{start.x + ink.x0 * scale, start.y + ink.y0 * scale}, {(ink.x1 - ink.x0) * scale, (ink.y1 - ink.y0) * scale}};
}

double CTLineGetTypographicBounds(CTLineRef line, CGFloat* ascent, CGFloat* descent, CGFloat* leading) {
  platform::MustBeThere(line);
  platform::FontMetrics metrics;
  double scale = 0;
  double width = 0;
  if (line != nullptr) {
    metrics = line->shape.Get()->metrics;
    scale = line->style.Scale();
    width = line->shape.Get()->width;
  }
  if (ascent != nullptr) *ascent = metrics.ascent * scale;
  if (descent != nullptr) *descent = metrics.descent * scale;
  if (leading != nullptr) *leading = metrics.leading * scale;
  return width * scale;
}

void CTLineDraw(CTLineRef line, CGContextRef context) {
  platform::MustBeThere(line);
  if (line != nullptr && context != nullptr) platform::DrawLine(context, *line, context->textMatrix);
}

void CTLineAddToPath(CTLineRef line, const CGAffineTransform* m, CGMutablePathRef path) {
  platform::MustBeThere(line);
  if (line == nullptr || path == nullptr) return;
  platform::AppendOutlines(*line, m == nullptr ? CGAffineTransformIdentity : *m, false, path);
}
