// Drawing shadings.
//
// The usual call is "clip to a path, draw the shading". It is drawn as one fill of that path: the innermost clip
// becomes the path, the shading the source, and only the clips around it stay clips. The source is a scratch image of
// the pixels that the path touches, filled from a table of premultiplied colours; that is several times faster than
// cairo's own gradients of many stops.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "CoreGraphics/CGContext.h"
#include "platform/CGContextState.h"
#include "platform/CGShadingValue.h"

namespace {

using platform::PixelBox;

constexpr int kMaxSteps = 1024;
constexpr int kStepsPerPixel = 2;

double Unit(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

// A shading's colours at equal steps from its start to its end as pixels, with one more at either side for what lies
// beyond.
class PixelTable {
 public:
  /// `reach` is how many pixels the shading is drawn over.
  PixelTable(const CGShading& shading, double alpha, int reach)
      : last_(std::clamp(reach, 1, kMaxSteps / kStepsPerPixel) * kStepsPerPixel) {
    const CGFunction& function = *shading.function.Get();
    for (int i = 0; i <= last_; ++i) {
      const CGFloat input = static_cast<double>(i) / last_;
      CGFloat color[4] = {0, 0, 0, 0};
      function.callbacks.evaluate(function.info, &input, color);
      pixels_[static_cast<std::size_t>(i) + 1] = Premultiplied(color, alpha);
    }
    pixels_[0] = shading.extendStart ? pixels_[1] : 0;
    pixels_[static_cast<std::size_t>(last_) + 2] = shading.extendEnd ? pixels_[static_cast<std::size_t>(last_) + 1] : 0;
    const std::uint32_t* end = pixels_.data() + last_ + 3;
    isOpaque_ =
        std::all_of<const std::uint32_t*>(pixels_.data(), end, [](std::uint32_t pixel) { return pixel >> 24 == 255; });
  }

  /// The position of the shading's end; its start is at 0.
  int Last() const { return last_; }

  bool IsOpaque() const { return isOpaque_; }

  /// The pixel for Entry(position).
  std::uint32_t operator[](int entry) const { return pixels_[static_cast<std::size_t>(entry)]; }

  /// The table's entry for a position anywhere; a position that is no number counts as before the start.
  template <typename Real>
  int Entry(Real position) const {
    const Real top = static_cast<Real>(last_) + Real(2);
    Real entry = position + Real(1.5);
    entry = entry > Real(0) ? entry : Real(0);
    entry = entry < top ? entry : top;
    return static_cast<int>(entry);
  }

 private:
  static std::uint32_t Premultiplied(const CGFloat* color, double contextAlpha) {
    const double alpha = Unit(color[3]) * contextAlpha * 255;
    const auto channel = [alpha](double value) { return static_cast<std::uint32_t>(Unit(value) * alpha + 0.5); };
    return static_cast<std::uint32_t>(alpha + 0.5) << 24 | channel(color[0]) << 16 | channel(color[1]) << 8 |
           channel(color[2]);
  }

  int last_;
  bool isOpaque_ = false;
  std::array<std::uint32_t, kMaxSteps + 3> pixels_;
};

CGAffineTransform Inverse(const CGAffineTransform& m) {
  const double k = 1 / (m.a * m.d - m.b * m.c);
  return {m.d * k, -m.b * k, -m.c * k, m.a * k, (m.c * m.ty - m.d * m.tx) * k, (m.b * m.tx - m.a * m.ty) * k};
}

// Pixels are written in stretches: first the table's entries, in a loop that the compiler can vectorise, then the
// look-ups, which it cannot.
constexpr int kStretch = 256;

template <typename EntryAt>
void FillRow(const PixelTable& table, int width, std::uint32_t* pixels, EntryAt entryAt) {
  int entries[kStretch];
  for (int start = 0; start < width; start += kStretch) {
    const int count = std::min(kStretch, width - start);
    for (int i = 0; i < count; ++i) entries[i] = entryAt(start + i);
    for (int i = 0; i < count; ++i) pixels[start + i] = table[entries[i]];
  }
}

// Writes the pixels of `box` to rows of `stride` pixels. Positions are taken at the pixels' centres.
void FillAxial(const CGShading& shading, const PixelTable& table, const CGAffineTransform& deviceToUser,
               const PixelBox& box, std::uint32_t* pixels, std::size_t stride) {
  const double dx = shading.end.x - shading.start.x;
  const double dy = shading.end.y - shading.start.y;
  const double factor = table.Last() / (dx * dx + dy * dy);
  // The position is linear in device space: its steps along x and y, and its value at the origin.
  const double stepX = (deviceToUser.a * dx + deviceToUser.b * dy) * factor;
  const double stepY = (deviceToUser.c * dx + deviceToUser.d * dy) * factor;
  const double origin = ((deviceToUser.tx - shading.start.x) * dx + (deviceToUser.ty - shading.start.y) * dy) * factor;
  for (int y = box.y0; y < box.y1; ++y, pixels += stride) {
    const double row = origin + stepY * (y + 0.5) + stepX * (box.x0 + 0.5);
    FillRow(table, box.x1 - box.x0, pixels, [&table, row, stepX](int x) { return table.Entry(row + stepX * x); });
  }
}

// Single precision holds the distance from the centre to a thousandth of a pixel over the largest bitmap.
void FillRadial(const CGShading& shading, const PixelTable& table, const CGAffineTransform& deviceToUser,
                const PixelBox& box, std::uint32_t* pixels, std::size_t stride) {
  const double scale = table.Last() / (shading.endRadius - shading.startRadius);
  const auto factor = static_cast<float>(scale);
  const auto offset = static_cast<float>(-shading.startRadius * scale);
  const auto stepX = static_cast<float>(deviceToUser.a);
  const auto stepY = static_cast<float>(deviceToUser.b);
  for (int y = box.y0; y < box.y1; ++y, pixels += stride) {
    const CGPoint first = CGPointApplyAffineTransform({box.x0 + 0.5, y + 0.5}, deviceToUser);
    const auto px = static_cast<float>(first.x - shading.start.x);
    const auto py = static_cast<float>(first.y - shading.start.y);
    FillRow(table, box.x1 - box.x0, pixels, [=, &table](int x) {
      const float ux = px + stepX * static_cast<float>(x);
      const float uy = py + stepY * static_cast<float>(x);
      return table.Entry(std::sqrt(ux * ux + uy * uy) * factor + offset);
    });
  }
}

// The context's scratch image with room for a width and a height; null when there is none.
cairo_surface_t* TakeScratch(CGContext* context, int width, int height) {
  platform::CairoSurface& scratch = context->scratch;
  if (scratch == nullptr || cairo_image_surface_get_width(scratch.get()) < width ||
      cairo_image_surface_get_height(scratch.get()) < height) {
    scratch.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
  }
  return cairo_surface_status(scratch.get()) == CAIRO_STATUS_SUCCESS ? scratch.get() : nullptr;
}

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

// A gradient of cairo's own for pages, with as few stops as tell its colours.
bool SetVectorSource(CGContext* context, const CGShading& shading) {
  const CGAffineTransform m = context->UserToDevice();
  if (!platform::IsInvertible(m)) return false;
  std::vector<Stop> stops(kMaxSteps + 1);
  const CGFunction& function = *shading.function.Get();
  for (std::size_t i = 0; i < stops.size(); ++i) {
    stops[i].position = static_cast<double>(i) / kMaxSteps;
    function.callbacks.evaluate(function.info, &stops[i].position, stops[i].color);
  }
  const platform::CairoPattern gradient(
      shading.radial ? cairo_pattern_create_radial(shading.start.x, shading.start.y, shading.startRadius, shading.end.x,
                                                   shading.end.y, shading.endRadius)
                     : cairo_pattern_create_linear(shading.start.x, shading.start.y, shading.end.x, shading.end.y));
  const double alpha = context->state.alpha;
  cairo_pattern_add_color_stop_rgba(gradient.get(), 0, stops[0].color[0], stops[0].color[1], stops[0].color[2],
                                    stops[0].color[3] * alpha);
  AddStops(gradient.get(), stops, 0, stops.size() - 1, alpha);
  cairo_pattern_set_extend(gradient.get(),
                           shading.extendStart && shading.extendEnd ? CAIRO_EXTEND_PAD : CAIRO_EXTEND_NONE);
  const CGAffineTransform inverse = Inverse(m);
  const cairo_matrix_t matrix{inverse.a, inverse.b, inverse.c, inverse.d, inverse.tx, inverse.ty};
  cairo_pattern_set_matrix(gradient.get(), &matrix);
  cairo_set_source(context->cairo.get(), gradient.get());
  return true;
}

bool SetShadingSource(CGContext* context, const CGShading& shading, const PixelBox& box) {
  if (context->target->IsVector()) return SetVectorSource(context, shading);
  const CGAffineTransform userToDevice = context->UserToDevice();
  cairo_surface_t* scratch = TakeScratch(context, box.x1 - box.x0, box.y1 - box.y0);
  if (scratch == nullptr || !platform::IsInvertible(userToDevice)) return false;
  const CGAffineTransform deviceToUser = Inverse(userToDevice);
  const int width = box.x1 - box.x0;
  const int height = box.y1 - box.y0;
  const PixelTable table(shading, context->state.alpha, static_cast<int>(std::hypot(width, height)));
  cairo_surface_flush(scratch);
  auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(scratch));
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(scratch)) / sizeof(std::uint32_t);
  (shading.radial ? FillRadial : FillAxial)(shading, table, deviceToUser, box, pixels, stride);
  cairo_surface_mark_dirty(scratch);
  // The part that was filled, and whether it is opaque: cairo copies opaque pixels where it would have to mix others.
  const platform::CairoSurface part(cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(pixels), table.IsOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width,
      height, cairo_image_surface_get_stride(scratch)));
  cairo_set_source_surface(context->cairo.get(), part.get(), box.x0, box.y0);
  cairo_pattern_set_filter(cairo_get_source(context->cairo.get()), CAIRO_FILTER_NEAREST);
  return true;
}

// Puts what the shading covers into cairo: the path of the innermost clip, or the whole target.
bool PrepareArea(CGContext* context, const platform::ClipNode* innermost, PixelBox* box) {
  cairo_t* cairo = context->cairo.get();
  const PixelBox bounds = context->target->Bounds();
  cairo_new_path(cairo);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  if (innermost == nullptr) {
    cairo_rectangle(cairo, bounds.x0, bounds.y0, bounds.x1 - bounds.x0, bounds.y1 - bounds.y0);
    *box = bounds;
    return true;
  }
  cairo_set_antialias(cairo, innermost->antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  if (!platform::EmitPath(cairo, *innermost->path, box)) return false;
  *box = platform::WidenBox(*box, 0, bounds);
  return !box->IsEmpty();
}

}  // namespace

void CGContextDrawShading(CGContextRef context, CGShadingRef shading) {
  if (context == nullptr || shading == nullptr) return;
  const platform::Clip whole = context->state.clip;
  context->state.clip = whole != nullptr ? whole->parent : nullptr;
  platform::ApplyClip(context);
  PixelBox box;
  if (PrepareArea(context, whole.get(), &box) && SetShadingSource(context, *shading, box)) {
    context->target->WillDraw(box);
    cairo_fill(context->cairo.get());
    context->target->DidDraw(box);
  }
  context->state.clip = whole;
}
