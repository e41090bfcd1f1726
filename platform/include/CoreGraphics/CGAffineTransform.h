// Affine maps of the native layer.
#pragma once

#include "CoreGraphics/CGGeometry.h"

/// (x, y) maps to (a·x + c·y + tx, b·x + d·y + ty).
struct CGAffineTransform {
  CGFloat a, b, c, d, tx, ty;
};

inline constexpr CGAffineTransform CGAffineTransformIdentity = {1, 0, 0, 1, 0, 0};

inline CGAffineTransform CGAffineTransformMake(CGFloat a, CGFloat b, CGFloat c, CGFloat d, CGFloat tx, CGFloat ty) {
  return {a, b, c, d, tx, ty};
}
inline bool CGAffineTransformIsIdentity(CGAffineTransform t) {
  return t.a == 1 && t.b == 0 && t.c == 0 && t.d == 1 && t.tx == 0 && t.ty == 0;
}
inline CGPoint CGPointApplyAffineTransform(CGPoint p, CGAffineTransform t) {
  return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
}
/// The map that applies `first` and then `second`.
inline CGAffineTransform CGAffineTransformConcat(CGAffineTransform first, CGAffineTransform second) {
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          first.tx * second.a + first.ty * second.c + second.tx,
          first.tx * second.b + first.ty * second.d + second.ty};
}
/// `t` with a translation applied inside it: the translation acts on a point first.
inline CGAffineTransform CGAffineTransformTranslate(CGAffineTransform t, CGFloat tx, CGFloat ty) {
  return CGAffineTransformConcat({1, 0, 0, 1, tx, ty}, t);
}
/// `t` with a scale applied inside it: the scale acts on a point first.
inline CGAffineTransform CGAffineTransformScale(CGAffineTransform t, CGFloat sx, CGFloat sy) {
  return CGAffineTransformConcat({sx, 0, 0, sy, 0, 0}, t);
}
