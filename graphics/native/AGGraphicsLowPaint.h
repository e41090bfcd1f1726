// Patterns and gradients as native paint. Private to the bridge.
#pragma once

#include "CoreGraphics/CGPattern.h"
#include "CoreGraphics/CGShading.h"
#include "graphics/context/AGContext.h"
#include "graphics/paint/AGBrush.h"
#include "kit/geometry/AGRect.h"

namespace AGGraphicsLow {

/// The colours of a gradient: two of them, and a table of how they are mixed along it.
struct _LowCGShadingRobot {
  static constexpr int kTableSize = 512;

  AGColor color;
  AGColor color2;
  double table[kTableSize] = {};  ///< 0 is colour 1, 1 is colour 2

  /// Fills the table from stops: for each pair that follows in order, the entries between their positions run from one
  /// factor to the other. Positions count 511 steps. Entries that no pair reaches stay 0. Null arrays or fewer than two
  /// stops leave all at 0.
  void SetBlend(const double* factors, const double* positions, int count);
  void SetBlend(const float* factors, const float* positions, int count);
};

/// The native function behind a shading: `info` is a _LowCGShadingRobot, the input 0 to 1 counts 512 steps.
void _LowCGShadingCallback(void* info, const CGFloat* in, CGFloat* out);

/// Where the direction `angle` from the centre of the rectangle meets its border, in the rectangle's proportions.
AGPoint _LowCGShadingPointOnRectAtAngle(AGRect rect, double angle);

/// The shading of a gradient brush over `rect`, both in the coordinates that the path is drawn in. Null when there is
/// none, as for an empty rectangle of a radial gradient. Its colours are the brush's after the context's colour factor;
/// it has all that it needs of the brush. The caller releases it.
CGShadingRef NewGradientShading(const AGBrush& brush, const AGRect& rect, double colorFactor);

/// A pattern of two colours: 8 rows of 8 bits, the most significant bit first; a set bit is colour 1.
struct PatternRecord {
  AGColor color;
  AGColor color2;
  unsigned char rows[8];
};

/// The built-in patterns; a brush's pattern index n is entry n − 1.
extern const unsigned char kAGBrushPatterns[AGBrush::kPatternCount][8];

PatternRecord MakePatternRecord(const AGBrush& brush, double colorFactor);

/// Draws one cell: `info` is a PatternRecord. Row 0 is at the bottom, the least significant bit at the right.
void _LowCGPatternCallback(void* info, CGContext* context);

/// The native pattern of a record, of which it has a copy; null on failure. The caller releases it.
CGPatternRef NewPattern(const PatternRecord& record);

}  // namespace AGGraphicsLow
