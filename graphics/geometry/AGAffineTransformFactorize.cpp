#include "graphics/geometry/AGAffineTransformFactorize.h"

#include <cmath>

#include "kit/geometry/AGConstants.h"

namespace {

// The angle of a unit vector in [0, 2π); of the zero vector π/2. acos of the x component is the same angle, but loses
// half of its digits near 0 and π.
double AngleOf(const AGPoint& unit) {
  if (unit.x == 0 && unit.y == 0) return kPi / 2;
  const double angle = std::atan2(unit.y + 0.0, unit.x);  // the sum makes a -0 positive
  return std::fmod(angle < 0 ? angle + k2Pi : angle, k2Pi);
}

}  // namespace

void AGAffineTransformFactorize(const AGAffineTransform& t, AGPoint* shear, AGPoint* scale, double* rotation,
                                AGPoint* translation) {
  if (translation) *translation = {t.tx, t.ty};
  if (!shear && !scale && !rotation) return;

  const double sx = std::hypot(t.a, t.b);
  const AGPoint u = sx == 0 ? AGPoint{0, 0} : AGPoint{t.a / sx, t.b / sx};
  const double along = t.c * u.x + t.d * u.y;
  const AGPoint orthogonal = {t.c - along * u.x, t.d - along * u.y};
  double sy = std::hypot(orthogonal.x, orthogonal.y);
  if (t.Determinant() < 0) sy = -sy;

  // The orthogonal unit vector turns u by a quarter, so that its cross product with (c, d) is the part along u.
  if (shear) *shear = {sx == 0 || sy == 0 ? 0 : along / sx, 0};
  if (scale) *scale = {sx, sy};
  if (rotation) *rotation = AngleOf(u);
}
