// A stretch of pixels.
#pragma once

#include <algorithm>

namespace raster {

/// The pixels x0 <= x < x1, y0 <= y < y1; y counts downwards.
struct Box {
  int x0 = 0;
  int y0 = 0;
  int x1 = 0;
  int y1 = 0;

  bool IsEmpty() const { return x0 >= x1 || y0 >= y1; }
  int Width() const { return x1 - x0; }
  int Height() const { return y1 - y0; }
};

inline Box Intersection(const Box& a, const Box& b) {
  return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

inline bool Contains(const Box& outer, const Box& inner) {
  return outer.x0 <= inner.x0 && outer.y0 <= inner.y0 && inner.x1 <= outer.x1 && inner.y1 <= outer.y1;
}

}  // namespace raster
