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
  radius = s.width / 2;
  a_ = radius * s.a;
  b_ = radius * s.b;
  c_ = radius * s.c;
  d_ = radius * s.d;
  ia_ = s.d * inverse;
  ib_ = -s.b * inverse;
  ic_ = -s.c * inverse;
  id_ = s.a * inverse;
  // The longer half axis of the ellipse is the map's larger singular value.
  const double sum = a_ * a_ + b_ * b_ + c_ * c_ + d_ * d_;
  const double product = a_ * d_ - b_ * c_;
  reach = std::sqrt((sum + std::sqrt(std::max(0.0, sum * sum - 4 * product * product))) / 2);
  if (!std::isfinite(reach)) return false;
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
