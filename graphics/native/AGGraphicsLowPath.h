// The measures and hit tests that read a path's native elements. Coordinates are map units.
#pragma once

#include "graphics/paint/AGBrushFillMode.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"

class AGPath;

namespace AGGraphicsLow {

/// The box of all points of the path, control points included, or with `exact` that of the curves themselves. The zero
/// rectangle for an empty path and for one without any number among its coordinates.
AGRect AGPathGetBoundingBox(const AGPath& path, bool exact);

/// Whether the point lies within `tolerance` of the outline. The outline, relative to the path's origin, is mapped by
/// `t`; curves count as 8 chords each. A tolerance of 0 or less asks for the outline itself.
bool AGPathIsPointOnPath(const AGPath& path, const AGPoint& point, double tolerance, const AGAffineTransform& t);

/// Whether the point lies inside, every subpath taken as closed. Which points on the outline count: AGPath.h.
bool AGPathIsPointInPath(const AGPath& path, const AGPoint& point, AGBrushFillMode mode);

}  // namespace AGGraphicsLow
