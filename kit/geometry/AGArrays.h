// Arrays of the plain geometric values and of colours.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"

using AGPointArray = ATNumberArray<AGPoint, double, 0>;
using AGRectArray = ATNumberArray<AGRect, double, 0>;
using AGColorArray = ATNumberArray<AGColor, unsigned int, 0>;
