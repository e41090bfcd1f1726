// Arrays of the plain geometric values.
#pragma once

#include "graphics/values/AGPoint.h"
#include "graphics/values/AGRect.h"
#include "kit/ATNumberArray.h"

using AGPointArray = ATNumberArray<AGPoint, double, 0>;
using AGRectArray = ATNumberArray<AGRect, double, 0>;
