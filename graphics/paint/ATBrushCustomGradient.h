// The stops of a gradient that replaces a brush's plain blend of two colours.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/geometry/AGRect.h"

/// Each stop is a position along the gradient, 0 to 1, and a factor, 0 for colour 1 to 1 for colour 2. The bounds are
/// the rectangle that the gradient spans, in the path's coordinates; all zero means the path's own box.
template <typename T>
class ATBrushCustomGradient {
 public:
  ///@{
  /// The rectangle that the gradient spans.
  void SetBounds(const AGRect& bounds) { bounds_ = bounds; }
  const AGRect& Bounds() const { return bounds_; }
  ///@}

  ///@{
  /// Replaces both arrays by `count` values; a null pointer or a count of 0 empties that array.
  void SetFactors(const float* factors, const float* positions, unsigned int count) { Set(factors, positions, count); }
  void SetFactors(const double* factors, const double* positions, unsigned int count) {
    Set(factors, positions, count);
  }
  ///@}

  ///@{
  /// The first element, or null when the array is empty.
  const T* Positions() const { return positions_.Data(); }
  const T* Factors() const { return factors_.Data(); }
  ///@}
  ///@{
  /// The lengths of the two arrays.
  unsigned int FactorCount() const { return factors_.Count(); }
  unsigned int PositionCount() const { return positions_.Count(); }
  ///@}

 private:
  using Numbers = ATNumberArray<T, T, 0>;

  template <typename Source>
  static void Fill(Numbers* target, const Source* source, unsigned int count) {
    Numbers values;
    if (source != nullptr) {
      values.Reserve(count);
      for (unsigned int i = 0; i < count; ++i) values.Append(static_cast<T>(source[i]));
    }
    target->Swap(&values);
  }

  template <typename Source>
  void Set(const Source* factors, const Source* positions, unsigned int count) {
    Numbers newPositions;
    Fill(&newPositions, positions, count);
    Fill(&factors_, factors, count);
    positions_.Swap(&newPositions);
  }

  AGRect bounds_ = kAGNullRect;
  Numbers positions_;
  Numbers factors_;
};
