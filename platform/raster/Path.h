// Shapes as the engine gets them: lines and curves in pixels, y downwards.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace raster {

struct Point {
  double x;
  double y;
};

inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
inline Point operator*(double k, Point p) { return {k * p.x, k * p.y}; }
inline double Dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
inline double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }

enum class Verb : std::uint8_t { kMove, kLine, kQuad, kCubic, kClose };

/// Somebody else's path: `verbs`, and the coordinates of the points that they use, x before y: a move and a line use
/// one point, a quadratic curve two, a cubic curve three, a close none. The first verb is a move; what follows a close
/// continues at the start of the closed contour.
struct PathView {
  const Verb* verbs = nullptr;
  std::size_t verbCount = 0;
  const double* coordinates = nullptr;
  std::size_t pointCount = 0;
};

enum class FillRule : std::uint8_t { kNonZero, kEvenOdd };

/// The extent of points.
struct Extent {
  double x0 = INFINITY;
  double y0 = INFINITY;
  double x1 = -INFINITY;
  double y1 = -INFINITY;
};

/// The extent of all points of a path, those that steer curves too. False when a coordinate is not a number.
bool ExtentOf(const PathView& path, Extent* extent);

/// Points further out than this are pulled in: nothing there can be told apart on a bitmap, and products stay finite.
inline constexpr double kFarthest = 1e15;

inline double Near(double value) { return value < -kFarthest ? -kFarthest : value > kFarthest ? kFarthest : value; }

/// Calls `visitor` for each piece of a path with points that were pulled in: MoveTo(p), LineTo(p), QuadTo(c, p),
/// CubicTo(c, d, p), Close().
template <typename Visitor>
void Visit(const PathView& path, Visitor&& visitor) {
  const double* next = path.coordinates;
  const auto take = [&next] {
    const Point p{Near(next[0]), Near(next[1])};
    next += 2;
    return p;
  };
  for (std::size_t i = 0; i < path.verbCount; ++i) {
    switch (path.verbs[i]) {
      case Verb::kMove:
        visitor.MoveTo(take());
        break;
      case Verb::kLine:
        visitor.LineTo(take());
        break;
      case Verb::kQuad: {
        const Point control = take();
        visitor.QuadTo(control, take());
        break;
      }
      case Verb::kCubic: {
        const Point first = take();
        const Point second = take();
        visitor.CubicTo(first, second, take());
        break;
      }
      case Verb::kClose:
        visitor.Close();
        break;
    }
  }
}

}  // namespace raster
