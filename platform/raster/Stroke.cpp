#include "platform/raster/Stroke.h"

#include <algorithm>
#include <cmath>

#include "platform/raster/Flatten.h"

namespace raster {

bool Nib::SetUp(const StrokeStyle& s) {
  const double determinant = s.a * s.d - s.b * s.c;
  const double inverse = 1 / determinant;
  if (!(s.width > 0) || !std::isfinite(s.width) || !std::isfinite(determinant) || !std::isfinite(inverse)) return false;
  cap = s.cap;
  join = s.join;
  miterLimit = s.miterLimit;
  ia_ = s.d * inverse;
  ib_ = -s.b * inverse;
  ic_ = -s.c * inverse;
  id_ = s.a * inverse;
  // The longer half axis of the ellipse is the map's larger singular value.
  const double sum = s.a * s.a + s.b * s.b + s.c * s.c + s.d * s.d;
  const double scale = std::sqrt((sum + std::sqrt(std::max(0.0, sum * sum - 4 * determinant * determinant))) / 2);
  if (!std::isfinite(scale)) return false;
  constexpr double kFlattest = 1e-6;
  isExact = std::fabs(determinant) > kFlattest * sum;
  // Further out than points may be it makes no difference how large the nib is.
  radius = std::min(s.width / 2, kFarthest / scale);
  reach = radius * scale;
  a_ = radius * s.a;
  b_ = radius * s.b;
  c_ = radius * s.c;
  d_ = radius * s.d;
  // A line for the angle t of a circle of radius r is off by r (1 - cos(t / 2)).
  const double half = std::max(0.0, 1 - kFlatness / reach);
  flatCosine = 2 * half * half - 1;
  arcStep = reach > kFlatness ? std::max(2 * std::acos(half), 1e-12) : 3;
  if (reach <= kFlatness) flatCosine = -1;
  return true;
}

double Nib::Reach() const {
  const double factor = join == Join::kMiter ? std::max(miterLimit, 1.5) : 1.5;
  return reach * factor;
}

}  // namespace raster
