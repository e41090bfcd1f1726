// An affine map of the plane.
#pragma once

#include <cmath>

#include "kit/geometry/AGPoint.h"

/// (x, y) maps to (a·x + c·y + tx, b·x + d·y + ty).
struct AGAffineTransform {
  double a = 0;   ///< x of the image of the unit vector along x
  double b = 0;   ///< y of it
  double c = 0;   ///< x of the image of the unit vector along y
  double d = 0;   ///< y of it
  double tx = 0;  ///< x of the image of the origin, in map units
  double ty = 0;  ///< y of it

  /// The image of a point.
  constexpr AGPoint Apply(const AGPoint& p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
  /// The map of a difference of points: the linear part alone.
  constexpr AGPoint ApplyLinear(const AGPoint& p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }
  /// By how much areas grow; negative for a mirroring, 0 when the plane is flattened.
  constexpr double Determinant() const { return a * d - b * c; }
  /// True when every point stays where it is.
  constexpr bool IsIdentity() const { return a == 1 && b == 0 && c == 0 && d == 1 && tx == 0 && ty == 0; }

  /// All six numbers, exactly.
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

/// A shift by (tx, ty) map units.
constexpr AGAffineTransform AGAffineTransformTranslation(double tx, double ty) { return {1, 0, 0, 1, tx, ty}; }
/// A scaling from the origin.
constexpr AGAffineTransform AGAffineTransformScaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
/// A turn by `angle` radians, anticlockwise where y points up, about a point that stays where it is.
inline AGAffineTransform AGAffineTransformRotation(double angle, const AGPoint& about = {0, 0}) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return {c, s, -s, c, about.x - about.x * c + about.y * s, about.y - about.x * s - about.y * c};
}

/// The map that undoes `t`, whose determinant must not be 0.
constexpr AGAffineTransform AGAffineTransformInverse(const AGAffineTransform& t) {
  const double determinant = t.Determinant();
  const AGAffineTransform linear{t.d / determinant, -t.b / determinant, -t.c / determinant, t.a / determinant, 0, 0};
  const AGPoint origin = linear.Apply({-t.tx, -t.ty});
  return {linear.a, linear.b, linear.c, linear.d, origin.x, origin.y};
}

/// All six components 0: not the identity.
inline constexpr AGAffineTransform kAGNullAffineTransform{0, 0, 0, 0, 0, 0};
/// Leaves every point where it is.
inline constexpr AGAffineTransform kAGAffineTransformIdentity{1, 0, 0, 1, 0, 0};
