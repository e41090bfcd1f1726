// The layouts of the graphics layer that a program and the bundles that it loads must agree on, checked at compile
// time.
#pragma once

#include <cstddef>
#include <type_traits>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AGContext.h"
#include "graphics/context/AKDrawEvent.h"
#include "graphics/images/AGImage.h"
#include "graphics/paint/AGBrushAndPen.h"
#include "graphics/paths/AGPath.h"
#include "graphics/text/AGFont.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGInterval.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

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
  static_assert(offsetof(AGPath, flatBounds_) == 64);
  static_assert(offsetof(AGPath, text_) == 96);
};

// Classes with fields of both accesses or with virtual functions have no layout that the language fixes; the compilers
// of this platform do, and it is theirs that is checked.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// Sees the private fields of brushes, pens, fonts, contexts, images and bitmaps.
struct AGLayout {
  static_assert(sizeof(AGBrush) == 40);
  static_assert(offsetof(AGBrush, style_) == 0 && offsetof(AGBrush, fillMode_) == 2 &&
                offsetof(AGBrush, patternIndex_) == 4);
  static_assert(offsetof(AGBrush, color_) == 8 && offsetof(AGBrush, color2_) == 12);
  static_assert(offsetof(AGBrush, blend_) == 16 && offsetof(AGBrush, angle_) == 20);
  static_assert(offsetof(AGBrush, centerX_) == 24 && offsetof(AGBrush, centerY_) == 28);
  static_assert(offsetof(AGBrush, customGradient_) == 32);

  static_assert(sizeof(AGPen) == 72);
  static_assert(offsetof(AGPen, sizeMode_) == 0 && offsetof(AGPen, lineCap_) == 2 && offsetof(AGPen, lineJoin_) == 4);
  static_assert(offsetof(AGPen, size_) == 8 && offsetof(AGPen, ratio_) == 12 && offsetof(AGPen, angle_) == 16);
  static_assert(offsetof(AGPen, brush_) == 24 && offsetof(AGPen, customArrow_) == 64);

  static_assert(sizeof(AGFont) == 48);
  static_assert(offsetof(AGFont, native_) == 0 && offsetof(AGFont, computed_) == 8 && offsetof(AGFont, name_) == 16);
  static_assert(offsetof(AGFont, size_) == 24 && offsetof(AGFont, style_) == 32 && offsetof(AGFont, lineHeight_) == 40);

  static_assert(sizeof(AGContext) == 232);
  static_assert(offsetof(AGContext, port_) == 0 && offsetof(AGContext, antialias) == 8);
  static_assert(offsetof(AGContext, alpha) == 16 && offsetof(AGContext, colorFactor) == 24);
  static_assert(offsetof(AGContext, size_) == 32 && offsetof(AGContext, transform) == 48);
  static_assert(offsetof(AGContext, brush) == 96 && offsetof(AGContext, pen) == 136);
  static_assert(offsetof(AGContext, patternOrigin) == 208 && offsetof(AGContext, clipPath_) == 224);

  static_assert(sizeof(AGImage) == 32);
  static_assert(offsetof(AGImage, native_) == 0 && offsetof(AGImage, kind_) == 8);
  static_assert(offsetof(AGImage, width_) == 12 && offsetof(AGImage, height_) == 16 && offsetof(AGImage, name_) == 24);

  static_assert(sizeof(AGBitmap) == 56);
  static_assert(offsetof(AGBitmapBase, context_) == 8 && offsetof(AGBitmapBase, pixels_) == 16);
  static_assert(offsetof(AGBitmapBase, byteCount_) == 24 && offsetof(AGBitmapBase, bytesPerPixel_) == 28);
  static_assert(offsetof(AGBitmapBase, rowStride_) == 32 && offsetof(AGBitmapBase, width_) == 36);
  static_assert(offsetof(AGBitmapBase, height_) == 40 && offsetof(AGBitmapBase, littleEndianLayout_) == 44);
  static_assert(offsetof(AGBitmapBase, bitmapCacheUsed_) == 45 && offsetof(AGBitmapBase, cachedImage_) == 48);
};

#pragma GCC diagnostic pop
