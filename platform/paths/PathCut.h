// Cutting paths to what can be seen of them. Private to the native layer.
//
// cairo keeps coordinates in 24.8 fixed point and wraps beyond; its edges go wrong long before that. A path that leaves
// the neighbourhood of its target is therefore cut to a box around the target first, in doubles: what is left has the
// slopes that it had, inside the box lies what lay there, and outside of it nothing that matters.
#pragma once

#include <vector>

#include "platform/paths/CGPathValue.h"
#include "platform/raster/Box.h"

namespace platform {

/// A box of device space.
struct CutBox {
  double x0;
  double y0;
  double x1;
  double y1;

  bool Contains(CGPoint p) const { return p.x >= x0 && p.x <= x1 && p.y >= y0 && p.y <= y1; }
};

/// A target's pixels and a wide margin: what lies inside is drawn as it is. `reach` is how far from the path its
/// drawing goes, as for a stroke.
CutBox CutBoxOf(const raster::Box& target, double reach);

/// True when all points of the path, control points included, lie inside.
bool IsInside(const CGPath& path, const CutBox& box);

/// Appends to `out` a path that covers the same of the box, by either fill rule, and nothing outside of it. Subpaths
/// count as closed. Curves are kept where they lie in the box and are lines of less than a tenth of a pixel's error
/// where they leave it.
void CutForFill(const CGPath& path, const CutBox& box, CGPath* out);

/// Appends to `out` the parts of the outline that lie in the box: open where they were cut, with all joins between.
void CutForStroke(const CGPath& path, const CutBox& box, CGPath* out);

/// A subpath as lines. Points between the pieces of what was a curve are smooth.
struct Polyline {
  std::vector<CGPoint> points;
  std::vector<bool> isSmooth;  ///< as many
  bool isClosed;
};

/// The subpaths, their curves made lines of less than a tenth of a pixel's error, or of `tolerance` if that is more,
/// but where they lie beside `seen`.
std::vector<Polyline> Flatten(const CGPath& path, const CutBox& seen, double tolerance);

}  // namespace platform
