// An upright rectangle, in map units, stored as two corners.
#pragma once

#include <utility>

#include "kit/geometry/AGPoint.h"

/// (x0, y0) is the left top corner and (x1, y1) the right bottom one. Functions that build a rectangle from points
/// put the smaller coordinates first; a rectangle that a caller fills may be mirrored (x0 > x1 or y0 > y1).
struct AGRect {
  double x0 = 0;  ///< first corner, in map units
  double y0 = 0;  ///< first corner
  double x1 = 0;  ///< second corner
  double y1 = 0;  ///< second corner

  ///@{
  /// The extent along an axis in map units, negative for a mirrored rectangle.
  constexpr double Width() const { return x1 - x0; }
  constexpr double Height() const { return y1 - y0; }
  ///@}
  /// The point in the middle.
  constexpr AGPoint Center() const { return {(x0 + x1) * 0.5, (y0 + y1) * 0.5}; }

  /// Swaps the x's when x0 > x1 and the y's when y0 > y1.
  constexpr void Normalize() {
    if (x0 > x1) std::swap(x0, x1);
    if (y0 > y1) std::swap(y0, y1);
  }

  /// True unless both sides are positive (a NaN corner is empty too).
  constexpr bool IsEmpty() const { return !(x0 < x1 && y0 < y1); }

  /// All four numbers, exactly.
  bool operator==(const AGRect&) const = default;
};

/// The empty rectangle at the origin, which stands for "no rectangle".
inline constexpr AGRect kAGNullRect{0, 0, 0, 0};
