// A width and a height, in map units.
#pragma once

struct AGSize {
  double width = 0;
  double height = 0;

  bool operator==(const AGSize&) const = default;
};

inline constexpr AGSize kAGNullSize{0, 0};
