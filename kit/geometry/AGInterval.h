// A stretch of an axis, in map units.
#pragma once

/// From `start` to `end`, in this order or the other.
struct AGInterval {
  double start = 0;  ///< in map units
  double end = 0;    ///< in map units

  /// Both numbers, exactly.
  bool operator==(const AGInterval&) const = default;
};

/// Of no length, at 0.
inline constexpr AGInterval kAGNullInterval{0, 0};
