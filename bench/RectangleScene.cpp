#include "bench/RectangleScene.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

#include "kit/geometry/AGConstants.h"

namespace scene {

std::vector<Shape> MakeShapes(unsigned int count, double smallest, double largest) {
  std::mt19937 random(20);
  const auto number = [&random](double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random); };
  const auto channel = [&number] { return static_cast<unsigned char>(number(0, 255)); };
  std::vector<Shape> shapes;
  for (unsigned int i = 0; i < count; ++i) {
    const AGPoint corner{number(0, kSide - largest), number(0, kSide - largest)};
    shapes.push_back({{corner.x, corner.y, corner.x + number(smallest, largest), corner.y + number(smallest, largest)},
                      number(0, k2Pi),
                      AGColor(channel(), channel(), channel())});
  }
  return shapes;
}

void PathByHand(cairo_t* cairo, const Shape& shape) {
  const double w = shape.bounds.Width() / 2;
  const double h = shape.bounds.Height() / 2;
  const double r = std::min(w, h) * kCurvature;
  cairo_translate(cairo, shape.bounds.Center().x, kSide - shape.bounds.Center().y);
  cairo_rotate(cairo, -shape.angle);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, w - r, h - r, r, 0, kPi / 2);
  cairo_arc(cairo, r - w, h - r, r, kPi / 2, kPi);
  cairo_arc(cairo, r - w, r - h, r, kPi, 3 * kPi / 2);
  cairo_arc(cairo, w - r, r - h, r, 3 * kPi / 2, k2Pi);
  cairo_close_path(cairo);
}

void DrawByHand(cairo_t* cairo, const std::vector<Shape>& shapes,
                const std::function<void(cairo_t*, const Shape&)>& paint) {
  for (const Shape& shape : shapes) {
    cairo_save(cairo);
    PathByHand(cairo, shape);
    paint(cairo, shape);
    cairo_restore(cairo);
  }
}

Canvas::Canvas()
    : surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide)), cairo(cairo_create(surface)) {}

Canvas::~Canvas() {
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}

bool PicturesAgree(const unsigned char* pixels, const Canvas& canvas, double tolerance) {
  const unsigned char* reference = cairo_image_surface_get_data(canvas.surface);
  double sum = 0;
  for (std::size_t i = 0; i < std::size_t{kSide} * kSide * 4; ++i) sum += std::abs(pixels[i] - reference[i]);
  return sum / (std::size_t{kSide} * kSide * 4) < tolerance;
}

}  // namespace scene
