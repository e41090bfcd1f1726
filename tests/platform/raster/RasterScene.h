// Shapes and pixels for the tests of the engine.
#pragma once

#include <cstring>
#include <random>
#include <vector>

#include "platform/raster/Raster.h"

namespace raster_scene {

/// A path under construction; the view holds while it lives and is not changed.
struct Path {
  std::vector<raster::Verb> verbs;
  std::vector<double> coordinates;

  void Add(raster::Verb verb, std::initializer_list<double> points) {
    verbs.push_back(verb);
    coordinates.insert(coordinates.end(), points);
  }
  void Move(double x, double y) { Add(raster::Verb::kMove, {x, y}); }
  void Line(double x, double y) { Add(raster::Verb::kLine, {x, y}); }
  void Cubic(double a, double b, double c, double d, double x, double y) {
    Add(raster::Verb::kCubic, {a, b, c, d, x, y});
  }
  void Close() { Add(raster::Verb::kClose, {}); }
  void Polygon(const std::vector<raster::Point>& points) {
    for (std::size_t i = 0; i < points.size(); ++i)
      i == 0 ? Move(points[i].x, points[i].y) : Line(points[i].x, points[i].y);
    Close();
  }
  void Rect(double x0, double y0, double x1, double y1) { Polygon({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}); }

  raster::PathView View() const { return {verbs.data(), verbs.size(), coordinates.data(), coordinates.size() / 2}; }
};

struct Random {
  explicit Random(unsigned int seed) : engine(seed) {}
  double In(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine); }
  int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(engine); }
  std::mt19937 engine;
};

/// The coverage of a shape in a box of pixels.
struct Coverage {
  Coverage(const raster::Shape& shape, const raster::Box& pixels)
      : box(pixels), bytes(static_cast<std::size_t>(pixels.Width()) * static_cast<std::size_t>(pixels.Height()), 77) {
    isDone = raster::Cover(shape, box, bytes.data(), static_cast<std::size_t>(box.Width()));
  }
  int At(int x, int y) const {
    return bytes[static_cast<std::size_t>(y - box.y0) * static_cast<std::size_t>(box.Width()) +
                 static_cast<std::size_t>(x - box.x0)];
  }

  raster::Box box;
  std::vector<unsigned char> bytes;
  bool isDone;
};

inline raster::Shape Filled(const Path& path, raster::FillRule rule = raster::FillRule::kNonZero) {
  raster::Shape shape;
  shape.path = path.View();
  shape.rule = rule;
  return shape;
}

}  // namespace raster_scene
