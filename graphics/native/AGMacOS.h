// The values of the graphics layer as those of the native drawing API, and back. Nothing here can fail.
#pragma once

#include "CoreGraphics/CGAffineTransform.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"

namespace AGMacOS {

inline CGPoint CGPointConvert(const AGPoint& point) { return {point.x, point.y}; }
/// The point moved by `offset`.
inline CGPoint CGPointConvert(const AGPoint& point, const AGPoint& offset) {
  return {point.x + offset.x, point.y + offset.y};
}
inline AGPoint AGPointConvert(const CGPoint& point) { return {point.x, point.y}; }

/// The rectangle moved by `offset`; a mirrored rectangle gets a negative size.
inline CGRect CGRectConvert(const AGRect& rect, const AGPoint& offset = {0, 0}) {
  return {{rect.x0 + offset.x, rect.y0 + offset.y}, {rect.x1 - rect.x0, rect.y1 - rect.y0}};
}
inline AGRect AGRectConvert(const CGRect& rect, const AGPoint& offset = {0, 0}) {
  const double x = rect.origin.x + offset.x, y = rect.origin.y + offset.y;
  return {x, y, x + rect.size.width, y + rect.size.height};
}

inline CGAffineTransform CGAffineTransformConvert(const AGAffineTransform& t) {
  return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

}  // namespace AGMacOS
