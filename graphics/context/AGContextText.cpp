// The text operations of the drawing context.
#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLowText.h"

namespace {

AGTextAlignment AlignmentOf(int hAlign) {
  if (hAlign == 0) return kAGTextAlignmentCenter;
  return hAlign < 0 ? kAGTextAlignmentLeft : kAGTextAlignmentRight;
}

}  // namespace

void AGContext::DrawText(AKString const& text, AGFont const& font, AGPoint const& point, AGAffineTransform const& t,
                         AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawUText(*this, font, text, AKUniChars(), point, t, alignment);
}

void AGContext::DrawUText(AKUniChars const& text, AGFont const& font, AGPoint const& point, AGAffineTransform const& t,
                          AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawUText(*this, font, AKString(), text, point, t, alignment);
}

void AGContext::DrawText(AKString const& text, AGFont const& font, AGRect const& rect, int hAlign, int vAlign) const {
  DrawText(text, font, font.GetTextPosInBounds(rect, hAlign, vAlign), kAGAffineTransformIdentity, AlignmentOf(hAlign));
}

void AGContext::DrawUText(AKUniChars const& text, AGFont const& font, AGRect const& rect, int hAlign,
                          int vAlign) const {
  DrawUText(text, font, font.GetTextPosInBounds(rect, hAlign, vAlign), kAGAffineTransformIdentity, AlignmentOf(hAlign));
}

void AGContext::DrawStrings(AKStringArray const& strings, AGFont const& font, AGPointArray const& points,
                            AGAffineTransform const& t, AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawStrings(*this, font, strings, points, t, alignment);
}
