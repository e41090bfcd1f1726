#include "AKPlatform/AKLineOutlines.h"

#include <CoreText/CTFont.h>
#include <CoreText/CTRun.h>
#include <CoreText/CTStringAttributes.h>

#include <vector>

namespace {

void AddRun(CTRunRef run, const CGAffineTransform& place, CGMutablePathRef path) {
  const auto* font = static_cast<CTFontRef>(CFDictionaryGetValue(CTRunGetAttributes(run), kCTFontAttributeName));
  const CFIndex count = CTRunGetGlyphCount(run);
  if (font == nullptr || count <= 0) return;
  std::vector<CGGlyph> glyphs(static_cast<std::size_t>(count));
  std::vector<CGPoint> positions(glyphs.size());
  CTRunGetGlyphs(run, CFRangeMake(0, 0), glyphs.data());  // a length of 0: to the end
  CTRunGetPositions(run, CFRangeMake(0, 0), positions.data());
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    CGPathRef outline = CTFontCreatePathForGlyph(font, glyphs[i], nullptr);
    if (outline == nullptr) continue;  // a blank, or a picture
    const CGAffineTransform placed = CGAffineTransformTranslate(place, positions[i].x, positions[i].y);
    CGPathAddPath(path, &placed, outline);
    CGPathRelease(outline);
  }
}

}  // namespace

void CTLineAddToPath(CTLineRef line, const CGAffineTransform* m, CGMutablePathRef path) {
  if (line == nullptr || path == nullptr) return;
  CFArrayRef runs = CTLineGetGlyphRuns(line);
  for (CFIndex i = 0; runs != nullptr && i < CFArrayGetCount(runs); ++i) {
    AddRun(static_cast<CTRunRef>(CFArrayGetValueAtIndex(runs, i)), m == nullptr ? CGAffineTransformIdentity : *m, path);
  }
}
