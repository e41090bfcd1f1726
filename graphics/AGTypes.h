// The values of the graphics layer and the functions on them, gathered.
#pragma once

#include "graphics/AGAffineTransformFactorize.h"
#include "graphics/AGArrays.h"
#include "graphics/AGBrushFillMode.h"
#include "graphics/AGGeometry.h"
#include "graphics/values/AGAffineTransform.h"
#include "graphics/values/AGColor.h"
#include "graphics/values/AGConstants.h"
#include "graphics/values/AGInterval.h"
#include "graphics/values/AGPlacement.h"
#include "graphics/values/AGPoint.h"
#include "graphics/values/AGRect.h"
#include "graphics/values/AGSize.h"
