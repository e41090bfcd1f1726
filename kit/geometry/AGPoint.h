// A point of the plane, in map units.
#pragma once

/// A place, or the difference of two.
struct AGPoint {
  double x = 0;  ///< in map units
  double y = 0;  ///< in map units; up where a context draws

  /// Both numbers, exactly.
  bool operator==(const AGPoint&) const = default;
};

///@{
/// Sums, differences and multiples, coordinate by coordinate.
constexpr AGPoint operator+(const AGPoint& a, const AGPoint& b) { return {a.x + b.x, a.y + b.y}; }
constexpr AGPoint operator-(const AGPoint& a, const AGPoint& b) { return {a.x - b.x, a.y - b.y}; }
constexpr AGPoint operator-(const AGPoint& a) { return {-a.x, -a.y}; }
constexpr AGPoint operator*(const AGPoint& a, double factor) { return {a.x * factor, a.y * factor}; }
///@}

/// The origin.
inline constexpr AGPoint kAGNullPoint{0, 0};
