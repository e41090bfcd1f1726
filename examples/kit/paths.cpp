// Paths: shapes, curves, holes, and what lies in them.
#include <cstdio>

#include "graphics/paths/AGPath.h"

int main() {
  AGPath ring;
  ring.AddEllipseInRect({0, 0, 100, 100}, false);
  ring.AddEllipseInRect({25, 25, 75, 75}, false);
  std::printf("%d %d\n", ring.IsPointInPath({50, 50}, kAGBrushFillEvenOdd),
              ring.IsPointInPath({10, 50}, kAGBrushFillEvenOdd));    // prints: 0 1
  std::printf("%d\n", ring.IsPointOnPath({100, 50}, 0.5, nullptr));  // prints: 1

  // The box of the curve is smaller than that of its control points.
  AGPath curve;
  curve.StartSubPath({0, 0});
  curve.AddQuadBezier({5, 10}, {10, 0});
  std::printf("%g, %g\n", curve.GetBoundingBox().y1, curve.GetFlattenedBoundingBox().y1);  // prints: 10, 5

  // Arrays too short, and lines without a current point, add nothing.
  AGPath empty;
  empty.AddLine({1, 1});
  std::printf("%d\n", empty.IsEmpty());  // prints: 1

  ring.PutInBounds({0, 0, 40, 20}, true);
  const AGRect box = ring.GetBoundingBox();
  std::printf("%.0f to %.0f\n", box.x0, box.x1);  // prints: 10 to 30
}
