#include "host/labels/LabelDrawing.h"

#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "host/labels/LabelLayout.h"

namespace host {
namespace {

AGSize SizeOf(const AGRect& bounds) { return {bounds.Width(), bounds.Height()}; }

bool IsWithin(const AGRect& inner, const AGSize& outer) {
  return inner.x0 >= -outer.width / 2 && inner.x1 <= outer.width / 2 && inner.y0 >= -outer.height / 2 &&
         inner.y1 <= outer.height / 2;
}

}  // namespace

void DrawLabel(const DocumentObject& object, const AGContext& context) {
  CGContextRef port = context.NativePort();
  const AGSize size = SizeOf(object.bounds);
  const auto layout = LabelLayout::Of(object.marks.label, size);
  if (layout == nullptr || port == nullptr) return;
  const AGPoint middle = object.bounds.Center();
  const double cosine = std::cos(object.angle);
  const double sine = std::sin(object.angle);
  CGContextSaveGState(port);
  CGContextConcatCTM(port, {cosine, sine, -sine, cosine, middle.x, middle.y});
  // Most labels fit, and a clip that is turned costs a mask.
  if (!IsWithin(layout->Ink(), size)) {
    CGMutablePathRef bounds = CGPathCreateMutable();
    CGPathAddRect(bounds, nullptr, CGRectMake(-size.width / 2, -size.height / 2, size.width, size.height));
    CGContextBeginPath(port);
    CGContextAddPath(port, bounds);
    CGContextClip(port);
    CGPathRelease(bounds);
  }
  layout->Draw(port);
  CGContextRestoreGState(port);
}

bool LabelCovers(const DocumentObject& object, const AGPoint& point) {
  if (object.marks.label == nullptr) return false;
  const AGSize size = SizeOf(object.bounds);
  const auto layout = LabelLayout::Of(object.marks.label, size);
  if (layout == nullptr) return false;
  const AGPoint middle = object.bounds.Center();
  const AGPoint from{point.x - middle.x, point.y - middle.y};
  const AGPoint turned{from.x * std::cos(object.angle) + from.y * std::sin(object.angle),
                       from.y * std::cos(object.angle) - from.x * std::sin(object.angle)};
  const AGRect& box = layout->Box();
  return IsWithin({turned.x, turned.y, turned.x, turned.y}, size) && turned.x >= box.x0 && turned.x <= box.x1 &&
         turned.y >= box.y0 && turned.y <= box.y1;
}

}  // namespace host
