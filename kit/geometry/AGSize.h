// A width and a height, in map units.
#pragma once

/// An extent along both axes.
struct AGSize {
  double width = 0;   ///< in map units
  double height = 0;  ///< in map units

  /// Both numbers, exactly.
  bool operator==(const AGSize&) const = default;
};

/// Of no extent.
inline constexpr AGSize kAGNullSize{0, 0};
