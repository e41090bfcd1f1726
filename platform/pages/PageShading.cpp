// Shadings on pages of vectors.
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/graphics/ShadingRows.h"
#include "platform/pages/Page.h"

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

// A stretch of a shading, in parts of the whole.
struct Stretch {
  double start = 0;
  double end = 1;
};

// A gradient without stops, for device space, and the stretch of the shading that it shows.
struct Frame {
  CairoPattern gradient;
  Stretch stretch;
};

CairoPattern MapToDevice(CairoPattern gradient, const CGAffineTransform& m) {
  const CGAffineTransform inverse = InverseOf(m);
  const cairo_matrix_t matrix{inverse.a, inverse.b, inverse.c, inverse.d, inverse.tx, inverse.ty};
  cairo_pattern_set_matrix(gradient.get(), &matrix);
  return gradient;
}

// Pages write six digits behind the point, and readers count in single precision: what is far away has to be brought
// near. The position along an axial shading is linear in device space, so that any two points near the target that are
// as far apart as the shading's ends, square to its stripes, tell the same.
Frame MakeAxial(const CGShading& shading, const CGAffineTransform& m, const PixelBox& target) {
  constexpr double kLongAxis = 20000;  // longer ones are cut to what is seen of them
  const CGAffineTransform inverse = InverseOf(m);
  const double dx = shading.end.x - shading.start.x;
  const double dy = shading.end.y - shading.start.y;
  const double k = 1 / (dx * dx + dy * dy);
  const CGPoint middle{(target.x0 + target.x1) * 0.5, (target.y0 + target.y1) * 0.5};
  const CGPoint at = CGPointApplyAffineTransform(middle, inverse);
  const double position = ((at.x - shading.start.x) * dx + (at.y - shading.start.y) * dy) * k;
  // The slope of the position in device space.
  const double slopeX = (inverse.a * dx + inverse.b * dy) * k;
  const double slopeY = (inverse.c * dx + inverse.d * dy) * k;
  const double slope = std::hypot(slopeX, slopeY);
  Stretch stretch;
  if (1 / slope > kLongAxis) {
    const double seen = std::hypot(target.x1 - target.x0, target.y1 - target.y0) * slope;
    stretch.start = std::clamp(position - seen, 0.0, 1.0);
    stretch.end = std::clamp(position + seen, 0.0, 1.0);
  }
  const auto pointOf = [&](double where) {
    const double distance = std::clamp((where - position) / slope, -1e6, 1e6);
    return CGPoint{middle.x + slopeX / slope * distance, middle.y + slopeY / slope * distance};
  };
  const CGPoint start = pointOf(stretch.start);
  const CGPoint end = pointOf(stretch.end);
  return {CairoPattern(cairo_pattern_create_linear(start.x, start.y, end.x, end.y)), stretch};
}

// Circles are as many units wide as pixels.
Frame MakeRadial(const CGShading& shading, const CGAffineTransform& m) {
  const double scale = std::sqrt(std::fabs(m.a * m.d - m.b * m.c));
  const CGPoint center = CGPointApplyAffineTransform(shading.start, m);
  const CGAffineTransform toDevice{m.a / scale, m.b / scale, m.c / scale, m.d / scale, center.x, center.y};
  return {MapToDevice(CairoPattern(cairo_pattern_create_radial(0, 0, shading.startRadius * scale, 0, 0,
                                                               shading.endRadius * scale)),
                      toDevice),
          {}};
}

std::vector<Stop> SamplesOf(const CGShading& shading, const Stretch& stretch) {
  std::vector<Stop> stops(kSamples + 1);
  const CGFunction& function = *shading.function.Get();
  for (std::size_t i = 0; i < stops.size(); ++i) {
    stops[i].position = static_cast<double>(i) / kSamples;
    const CGFloat input = stretch.start + (stretch.end - stretch.start) * stops[i].position;
    function.callbacks.evaluate(function.info, &input, stops[i].color);
  }
  return stops;
}

}  // namespace

bool SetVectorSource(CGContext* context, const CGShading& shading) {
  const CGAffineTransform m = context->UserToDevice();
  if (!IsInvertible(m)) return false;
  const Frame frame = shading.radial ? MakeRadial(shading, m) : MakeAxial(shading, m, context->target->Bounds());
  cairo_pattern_t* const gradient = frame.gradient.get();
  const std::vector<Stop> stops = SamplesOf(shading, frame.stretch);
  const double alpha = context->state.alpha;
  cairo_pattern_add_color_stop_rgba(gradient, 0, stops[0].color[0], stops[0].color[1], stops[0].color[2],
                                    stops[0].color[3] * alpha);
  AddStops(gradient, stops, 0, stops.size() - 1, alpha);
  cairo_pattern_set_extend(gradient, shading.extendStart && shading.extendEnd ? CAIRO_EXTEND_PAD : CAIRO_EXTEND_NONE);
  cairo_set_source(context->cairo.get(), gradient);
  return true;
}

}  // namespace platform
