// Shadings on pages of vectors.
#include <cmath>
#include <vector>

#include "platform/graphics/ShadingRows.h"

namespace platform {
namespace {

constexpr int kSamples = 1024;

// One sample of a shading: its position and its colour.
struct Stop {
  double position;
  CGFloat color[4];
};

// True when the colours between two stops lie on the line between them, to half a step of 255.
bool IsStraight(const std::vector<Stop>& stops, std::size_t first, std::size_t last, std::size_t* worst) {
  constexpr double kTolerance = 0.5 / 255;
  double largest = kTolerance;
  bool straight = true;
  for (std::size_t i = first + 1; i < last; ++i) {
    const double t = static_cast<double>(i - first) / static_cast<double>(last - first);
    for (int c = 0; c < 4; ++c) {
      const double line = stops[first].color[c] + (stops[last].color[c] - stops[first].color[c]) * t;
      const double error = std::fabs(stops[i].color[c] - line);
      if (error <= largest) continue;
      largest = error;
      *worst = i;
      straight = false;
    }
  }
  return straight;
}

// Adds the stops behind `first` up to `last` that a gradient of straight pieces needs (the method of Douglas and
// Peucker, on colours).
void AddStops(cairo_pattern_t* gradient, const std::vector<Stop>& stops, std::size_t first, std::size_t last,
              double alpha) {
  std::size_t worst = first;
  if (!IsStraight(stops, first, last, &worst)) {
    AddStops(gradient, stops, first, worst, alpha);
    AddStops(gradient, stops, worst, last, alpha);
    return;
  }
  const Stop& stop = stops[last];
  cairo_pattern_add_color_stop_rgba(gradient, stop.position, stop.color[0], stop.color[1], stop.color[2],
                                    stop.color[3] * alpha);
}

}  // namespace

bool SetVectorSource(CGContext* context, const CGShading& shading) {
  const CGAffineTransform m = context->UserToDevice();
  if (!IsInvertible(m)) return false;
  std::vector<Stop> stops(kSamples + 1);
  const CGFunction& function = *shading.function.Get();
  for (std::size_t i = 0; i < stops.size(); ++i) {
    stops[i].position = static_cast<double>(i) / kSamples;
    function.callbacks.evaluate(function.info, &stops[i].position, stops[i].color);
  }
  const CairoPattern gradient(
      shading.radial ? cairo_pattern_create_radial(shading.start.x, shading.start.y, shading.startRadius, shading.end.x,
                                                   shading.end.y, shading.endRadius)
                     : cairo_pattern_create_linear(shading.start.x, shading.start.y, shading.end.x, shading.end.y));
  const double alpha = context->state.alpha;
  cairo_pattern_add_color_stop_rgba(gradient.get(), 0, stops[0].color[0], stops[0].color[1], stops[0].color[2],
                                    stops[0].color[3] * alpha);
  AddStops(gradient.get(), stops, 0, stops.size() - 1, alpha);
  cairo_pattern_set_extend(gradient.get(),
                           shading.extendStart && shading.extendEnd ? CAIRO_EXTEND_PAD : CAIRO_EXTEND_NONE);
  const CGAffineTransform inverse = InverseOf(m);
  const cairo_matrix_t matrix{inverse.a, inverse.b, inverse.c, inverse.d, inverse.tx, inverse.ty};
  cairo_pattern_set_matrix(gradient.get(), &matrix);
  cairo_set_source(context->cairo.get(), gradient.get());
  return true;
}

}  // namespace platform
