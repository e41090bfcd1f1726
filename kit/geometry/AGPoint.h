// A point of the plane, in map units.
#pragma once

struct AGPoint {
  double x = 0;
  double y = 0;

  bool operator==(const AGPoint&) const = default;
};

constexpr AGPoint operator+(const AGPoint& a, const AGPoint& b) { return {a.x + b.x, a.y + b.y}; }
constexpr AGPoint operator-(const AGPoint& a, const AGPoint& b) { return {a.x - b.x, a.y - b.y}; }
constexpr AGPoint operator-(const AGPoint& a) { return {-a.x, -a.y}; }
constexpr AGPoint operator*(const AGPoint& a, double factor) { return {a.x * factor, a.y * factor}; }

inline constexpr AGPoint kAGNullPoint{0, 0};
