// The values of the graphics layer and the functions on them, gathered.
#pragma once

#include "graphics/geometry/AGAffineTransformFactorize.h"
#include "graphics/geometry/AGGeometry.h"
#include "graphics/paint/AGBrushFillMode.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGConstants.h"
#include "kit/geometry/AGInterval.h"
#include "kit/geometry/AGPlacement.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
