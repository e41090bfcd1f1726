// The layouts of the graphics layer that a program and the bundles that it loads must agree on, checked at compile
// time.
#pragma once

#include <cstddef>
#include <type_traits>

#include "graphics/AGPath.h"
#include "graphics/values/AGAffineTransform.h"
#include "graphics/values/AGColor.h"
#include "graphics/values/AGInterval.h"
#include "graphics/values/AGPoint.h"
#include "graphics/values/AGRect.h"
#include "graphics/values/AGSize.h"

static_assert(sizeof(AGPoint) == 16 && offsetof(AGPoint, x) == 0 && offsetof(AGPoint, y) == 8);
static_assert(sizeof(AGSize) == 16 && offsetof(AGSize, width) == 0 && offsetof(AGSize, height) == 8);
static_assert(sizeof(AGInterval) == 16 && offsetof(AGInterval, start) == 0 && offsetof(AGInterval, end) == 8);
static_assert(sizeof(AGRect) == 32 && offsetof(AGRect, x0) == 0 && offsetof(AGRect, y0) == 8 &&
              offsetof(AGRect, x1) == 16 && offsetof(AGRect, y1) == 24);
static_assert(sizeof(AGColor) == 4 && offsetof(AGColor, rgba) == 0);
static_assert(sizeof(AGAffineTransform) == 48 && offsetof(AGAffineTransform, a) == 0 &&
              offsetof(AGAffineTransform, b) == 8 && offsetof(AGAffineTransform, c) == 16 &&
              offsetof(AGAffineTransform, d) == 24 && offsetof(AGAffineTransform, tx) == 32 &&
              offsetof(AGAffineTransform, ty) == 40);

/// Sees AGPath's fields for the checks.
struct AGPathLayout {
  static_assert(std::is_standard_layout_v<AGPath>);
  static_assert(sizeof(AGPath) == 104);
  static_assert(offsetof(AGPath, native_) == 0);
  static_assert(offsetof(AGPath, flags_) == 8);
  static_assert(offsetof(AGPath, origin_) == 16);
  static_assert(offsetof(AGPath, bounds_) == 32);
  static_assert(offsetof(AGPath, flat_bounds_) == 64);
  static_assert(offsetof(AGPath, text_) == 96);
};
