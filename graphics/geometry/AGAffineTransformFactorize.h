// The parts that an affine map is made of.
#pragma once

#include "kit/geometry/AGAffineTransform.h"

/// Splits `t` into shear, scale, rotation and translation, applied to a point in this order: with u = (cos r, sin r)
/// and v = (-sin r, cos r) the columns are (a, b) = scale.x · u and (c, d) = shear.x · scale.x · u + scale.y · v.
///
/// The rotation is in radians, in [0, 2π). A mirroring shows as a negative scale.y; shear.y is always 0. A first column
/// of zeros gives a scale.x and a shear of 0 and a rotation of π/2. Any output may be null.
void AGAffineTransformFactorize(const AGAffineTransform& t, AGPoint* shear, AGPoint* scale, double* rotation,
                                AGPoint* translation);
