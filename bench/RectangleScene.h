// Turned rounded rectangles, drawn by hand with cairo: the reference of the drawing benchmarks.
#pragma once

#include <cairo.h>

#include <functional>
#include <memory>
#include <vector>

#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGRect.h"

namespace scene {

inline constexpr unsigned int kSide = 1000;  // of the square bitmap, in pixels
inline constexpr double kCurvature = 0.5;

struct Shape {
  AGRect bounds;
  double angle;
  AGColor color;
};

/// `count` rectangles with sides between `smallest` and `largest`, the same at every call.
std::vector<Shape> MakeShapes(unsigned int count, double smallest, double largest);

/// Puts the shape into cairo's path, around the origin of its own turned space, which is set; y points down there.
void PathByHand(cairo_t* cairo, const Shape& shape);

/// Draws every shape: path, then what `paint` does with it.
void DrawByHand(cairo_t* cairo, const std::vector<Shape>& shapes,
                const std::function<void(cairo_t*, const Shape&)>& paint);

/// A bitmap of cairo's own and a context on it.
struct Canvas {
  Canvas();
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  cairo_surface_t* surface;
  cairo_t* cairo;
};

/// Both ways must paint the same picture, or a comparison means nothing. True when the mean difference of a channel is
/// below `tolerance` of 255; both are blue-first pixels of the whole side.
bool PicturesAgree(const unsigned char* pixels, const Canvas& canvas, double tolerance);

}  // namespace scene
