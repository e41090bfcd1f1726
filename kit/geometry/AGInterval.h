// A stretch of an axis, in map units.
#pragma once

struct AGInterval {
  double start = 0;
  double end = 0;

  bool operator==(const AGInterval&) const = default;
};

inline constexpr AGInterval kAGNullInterval{0, 0};
