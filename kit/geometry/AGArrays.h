// Arrays of the plain geometric values and of colours.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"

/// Points, as pairs of doubles.
using AGPointArray = ATNumberArray<AGPoint, double, 0>;
/// Rectangles, as four doubles each.
using AGRectArray = ATNumberArray<AGRect, double, 0>;
/// Colours, as 32-bit numbers.
using AGColorArray = ATNumberArray<AGColor, unsigned int, 0>;
