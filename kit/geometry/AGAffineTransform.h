// An affine map of the plane.
#pragma once

#include "kit/geometry/AGPoint.h"

/// (x, y) maps to (a·x + c·y + tx, b·x + d·y + ty).
struct AGAffineTransform {
  double a = 0;
  double b = 0;
  double c = 0;
  double d = 0;
  double tx = 0;
  double ty = 0;

  constexpr AGPoint Apply(const AGPoint& p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
  /// The map of a difference of points: the linear part alone.
  constexpr AGPoint ApplyLinear(const AGPoint& p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }
  constexpr double Determinant() const { return a * d - b * c; }
  constexpr bool IsIdentity() const { return a == 1 && b == 0 && c == 0 && d == 1 && tx == 0 && ty == 0; }

  bool operator==(const AGAffineTransform&) const = default;
};

/// The map that applies `first` and then `second`.
constexpr AGAffineTransform AGAffineTransformConcat(const AGAffineTransform& first, const AGAffineTransform& second) {
  const AGPoint origin = second.Apply({first.tx, first.ty});
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          origin.x,
          origin.y};
}

constexpr AGAffineTransform AGAffineTransformTranslation(double tx, double ty) { return {1, 0, 0, 1, tx, ty}; }
constexpr AGAffineTransform AGAffineTransformScaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }

/// All six components 0: not the identity.
inline constexpr AGAffineTransform kAGNullAffineTransform{0, 0, 0, 0, 0, 0};
inline constexpr AGAffineTransform kAGAffineTransformIdentity{1, 0, 0, 1, 0, 0};
