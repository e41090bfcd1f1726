#include "platform/raster/Path.h"

#include <algorithm>

namespace raster {

bool ExtentOf(const PathView& path, Extent* extent) {
  const double* p = path.coordinates;
  bool isNumber = true;
  for (std::size_t i = 0; i < path.pointCount; ++i, p += 2) {
    isNumber = isNumber && !std::isnan(p[0]) && !std::isnan(p[1]);
    extent->x0 = std::min(extent->x0, p[0]);
    extent->x1 = std::max(extent->x1, p[0]);
    extent->y0 = std::min(extent->y0, p[1]);
    extent->y1 = std::max(extent->y1, p[1]);
  }
  return isNumber;
}

}  // namespace raster
