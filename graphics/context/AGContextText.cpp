// The text operations of the drawing context.
#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLowText.h"

namespace {

AGTextAlignment AlignmentOf(int hAlign) {
  if (hAlign == 0) return kAGTextAlignmentCenter;
  return hAlign < 0 ? kAGTextAlignmentLeft : kAGTextAlignmentRight;
}

}  // namespace

void AGContext::DrawText(const AKString& text, const AGFont& font, const AGPoint& point, const AGAffineTransform& t,
                         AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawUText(*this, font, text, AKUniChars(), point, t, alignment);
}

void AGContext::DrawUText(const AKUniChars& text, const AGFont& font, const AGPoint& point, const AGAffineTransform& t,
                          AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawUText(*this, font, AKString(), text, point, t, alignment);
}

void AGContext::DrawText(const AKString& text, const AGFont& font, const AGRect& rect, int hAlign, int vAlign) const {
  DrawText(text, font, font.GetTextPosInBounds(rect, hAlign, vAlign), kAGAffineTransformIdentity, AlignmentOf(hAlign));
}

void AGContext::DrawUText(const AKUniChars& text, const AGFont& font, const AGRect& rect, int hAlign,
                          int vAlign) const {
  DrawUText(text, font, font.GetTextPosInBounds(rect, hAlign, vAlign), kAGAffineTransformIdentity, AlignmentOf(hAlign));
}

void AGContext::DrawStrings(const AKStringArray& strings, const AGFont& font, const AGPointArray& points,
                            const AGAffineTransform& t, AGTextAlignment alignment) const {
  AGGraphicsLow::AGContextDrawStrings(*this, font, strings, points, t, alignment);
}
