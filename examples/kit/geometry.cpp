// Points, rectangles, maps of the plane, colours, and what is reckoned with them. y points up, angles are radians.
#include <cstdio>

#include "graphics/AGTypes.h"
#include "graphics/geometry/AGBezier.h"

int main() {
  const AGRect rect{0, 0, 40, 30};
  const AGPoint center = rect.Center();
  std::printf("(%g;%g)\n", center.x, center.y);  // prints: (20;15)

  // A quarter turn about the centre takes the middle of the right side to the middle of the upper one.
  const AGAffineTransform turn = AGAffineTransformRotation(kPi / 2, center);
  const AGPoint top = turn.Apply({40, 15});
  std::printf("(%.0f;%.0f)\n", top.x, top.y);  // prints: (20;35)
  const AGAffineTransform both = AGAffineTransformConcat(turn, AGAffineTransformInverse(turn));
  const AGPoint same = both.Apply({3, 4});
  std::printf("(%.0f;%.0f)\n", same.x, same.y);  // prints: (3;4)

  // Placed in a rectangle: shrunk to fit, in the middle.
  const AGAffineTransform placed =
      AGGeometry::GetPlacementAFT({0, 0, 80, 30}, rect, kAGPlacementHCenter | kAGPlacementVCenter);
  std::printf("%g, up %g\n", placed.a, placed.ty);  // prints: 0.5, up 7.5

  AGPointArray triangle;
  AGGeometry::GenerateRegularPolygon(&triangle, 3, {0, 0}, 10, kPi / 2);
  std::printf("%d %d\n", AGGeometry::IsPointInsidePolygon(triangle, {0, 0}),
              AGGeometry::IsPointInsidePolygon(triangle, {0, -6}));  // prints: 1 0

  // The curve is half as high as its control point.
  AGPoint least, greatest;
  AGBezierQuadGetMinimax({0, 0}, {5, 10}, {10, 0}, &least, &greatest);
  std::printf("%g to %g\n", least.y, greatest.y);  // prints: 0 to 5

  const AGSize size{rect.Width(), rect.Height()};
  const AGInterval across{rect.x0, rect.x1};
  std::printf("%g %g\n", size.height, across.end);  // prints: 30 40
  const AGColor orange(255, 128, 0);
  std::printf("%08X %d\n", orange.rgba, orange.Alpha());  // prints: FF0080FF 255
}
