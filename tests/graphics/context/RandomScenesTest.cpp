// Random scenes drawn through the kit, and once more by hand with cairo: same shapes, but each made of the other side's
// own operations, matrices and state.
#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "kit/geometry/AGConstants.h"

namespace {

constexpr unsigned int kWidth = 160;
constexpr unsigned int kHeight = 120;

enum class Kind { kRect, kPolygon, kLine, kRoundedRect, kEllipse };

struct Shape {
  Kind kind;
  AGRect rect;
  double curvature;
  std::vector<AGPoint> points;
  AGAffineTransform transform;
  AGColor fill;  // without alpha: none
  AGColor ink;
  double alpha;
  double width;
  bool relative;
  unsigned int cap, join;  // as the pen counts them
  bool winding;
  bool clipped;
  AGRect clip;
};

class Random {
 public:
  explicit Random(unsigned int seed) : engine_(seed) {}
  double Number(double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(engine_); }
  unsigned int Index(unsigned int count) { return static_cast<unsigned int>(engine_() % count); }
  template <typename T>
  T Of(const std::vector<T>& values) {
    return values[Index(static_cast<unsigned int>(values.size()))];
  }
  AGColor Color() {
    const auto byte = [this] { return static_cast<unsigned char>(Index(256)); };
    return Index(5) == 0 ? kAGNullColor : AGColor(byte(), byte(), byte(), Index(2) == 0 ? 255 : byte());
  }
  AGPoint Point() { return {Number(-20, kWidth + 20), Number(-20, kHeight + 20)}; }
  AGRect Rect() {
    const AGPoint p = Point();
    return {p.x, p.y, p.x + Number(2, 90), p.y + Number(2, 70)};
  }
  // A turn and a stretch about the middle of the picture, or nothing.
  AGAffineTransform Transform() {
    if (Index(3) == 0) return kAGAffineTransformIdentity;
    const double angle = Number(0, k2Pi), sx = Number(0.4, 1.8), sy = Number(0.4, 1.8), shear = Number(-0.5, 0.5);
    AGAffineTransform t{sx * std::cos(angle),
                        sx * std::sin(angle),
                        sy * (shear * std::cos(angle) - std::sin(angle)),
                        sy * (shear * std::sin(angle) + std::cos(angle)),
                        0,
                        0};
    const AGPoint middle{kWidth / 2.0, kHeight / 2.0};
    const AGPoint moved = t.Apply(middle);
    t.tx = middle.x - moved.x;
    t.ty = middle.y - moved.y;
    return t;
  }

 private:
  std::mt19937 engine_;
};

// `ends` are the caps and joins to choose from.
Shape MakeShape(Random& random, const std::vector<Kind>& kinds, const std::vector<unsigned int>& ends) {
  Shape shape{};
  shape.kind = random.Of(kinds);
  shape.rect = random.Rect();
  shape.curvature = random.Number(-0.2, 1.2);
  for (unsigned int i = 0; i < 5; ++i) shape.points.push_back(random.Point());
  shape.transform = random.Transform();
  shape.fill = random.Color();
  shape.ink = random.Color();
  shape.alpha = random.Index(2) == 0 ? 1 : random.Number(0.05, 1);
  shape.width = random.Number(0.2, 16);
  shape.relative = random.Index(2) == 0;
  shape.cap = random.Of(ends);
  shape.join = random.Of(ends);
  shape.winding = random.Index(2) == 0;
  shape.clipped = random.Index(3) == 0;
  shape.clip = random.Rect();
  return shape;
}

void DrawThroughKit(AGContext context, const Shape& shape) {
  context.alpha = shape.alpha;
  context.transform = shape.transform;
  context.brush.SetStyleSolid(shape.fill);
  context.brush.SetFillMode(shape.winding ? kAGBrushFillWinding : kAGBrushFillEvenOdd);
  context.pen.SetStyleSolid(shape.ink, shape.width, shape.relative ? kAGPenSizeModeRelative : kAGPenSizeModeAbsolute);
  context.pen.SetLineCap(static_cast<AGPenLineCap>(shape.cap));
  context.pen.SetLineJoin(static_cast<AGPenLineJoin>(shape.join));
  if (shape.clipped) context.SetClipRect(shape.clip);
  AGPointArray points;
  for (const AGPoint& point : shape.points) points.Append(point);
  switch (shape.kind) {
    case Kind::kRect:
      return context.DrawRect(shape.rect);
    case Kind::kPolygon:
      return context.DrawLines(points, true);
    case Kind::kLine:
      return context.DrawSegment(shape.points[0], shape.points[1]);
    case Kind::kRoundedRect:
      return context.DrawRoundedRect(shape.rect, shape.curvature);
    case Kind::kEllipse:
      return context.DrawEllipseInRect(shape.rect);
  }
}

struct SurfaceCloser {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct ContextCloser {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};

// A quarter circle at each corner, the corners taken from (x1, y1) on; the current matrix decides where that is.
void AddRoundedRect(cairo_t* cairo, const AGRect& r, double curvature) {
  if (!(curvature > 0.02)) {
    cairo_rectangle(cairo, r.x0, r.y0, r.Width(), r.Height());
    return;
  }
  const double radius = std::min(r.Width(), r.Height()) * std::min(curvature, 1.0) / 2;
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, r.x1 - radius, r.y1 - radius, radius, 0, kPi / 2);
  cairo_arc(cairo, r.x0 + radius, r.y1 - radius, radius, kPi / 2, kPi);
  cairo_arc(cairo, r.x0 + radius, r.y0 + radius, radius, kPi, 1.5 * kPi);
  cairo_arc(cairo, r.x1 - radius, r.y0 + radius, radius, 1.5 * kPi, 2 * kPi);
  cairo_close_path(cairo);
}

void AddOutline(cairo_t* cairo, const Shape& shape) {
  const AGRect& r = shape.rect;
  const std::vector<AGPoint>& p = shape.points;
  switch (shape.kind) {
    case Kind::kRect:
      cairo_rectangle(cairo, r.x0, r.y0, r.Width(), r.Height());
      break;
    case Kind::kPolygon:
      for (const AGPoint& point : p) cairo_line_to(cairo, point.x, point.y);
      cairo_close_path(cairo);
      break;
    case Kind::kLine:
      cairo_move_to(cairo, p[0].x, p[0].y);
      cairo_line_to(cairo, p[1].x, p[1].y);
      break;
    case Kind::kRoundedRect:
      AddRoundedRect(cairo, r, shape.curvature);
      break;
    case Kind::kEllipse:
      cairo_save(cairo);
      cairo_translate(cairo, r.Center().x, r.Center().y);
      cairo_scale(cairo, r.Width() / 2, r.Height() / 2);
      cairo_arc(cairo, 0, 0, 1, 0, 2 * kPi);
      cairo_restore(cairo);
      cairo_close_path(cairo);
      break;
  }
}

void SetSource(cairo_t* cairo, AGColor color, double alpha) {
  cairo_set_source_rgba(cairo, color.Red() / 255.0, color.Green() / 255.0, color.Blue() / 255.0,
                        color.Alpha() / 255.0 * alpha);
}

void DrawByHand(cairo_t* cairo, const Shape& shape) {
  constexpr cairo_line_cap_t kCaps[] = {CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_SQUARE, CAIRO_LINE_CAP_ROUND};
  constexpr cairo_line_join_t kJoins[] = {CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_BEVEL, CAIRO_LINE_JOIN_ROUND};
  const AGAffineTransform& t = shape.transform;
  const cairo_matrix_t matrix{t.a, t.b, t.c, t.d, t.tx, t.ty};
  cairo_save(cairo);
  // Only the outlines go through the matrix; the pen is as wide in every direction.
  if (shape.clipped) {
    cairo_save(cairo);
    cairo_transform(cairo, &matrix);
    cairo_rectangle(cairo, shape.clip.x0, shape.clip.y0, shape.clip.Width(), shape.clip.Height());
    cairo_restore(cairo);
    cairo_clip(cairo);
  }
  cairo_save(cairo);
  cairo_transform(cairo, &matrix);
  AddOutline(cairo, shape);
  cairo_restore(cairo);
  if (shape.kind != Kind::kLine && shape.fill.Alpha() != 0) {
    cairo_set_fill_rule(cairo, shape.winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
    SetSource(cairo, shape.fill, shape.alpha);
    cairo_fill_preserve(cairo);
  }
  if (shape.ink.Alpha() != 0) {
    const double scale = std::sqrt((t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d) / 2);
    cairo_set_line_width(cairo, shape.relative ? shape.width * scale : shape.width);
    cairo_set_line_cap(cairo, kCaps[shape.cap]);
    cairo_set_line_join(cairo, kJoins[shape.join]);
    SetSource(cairo, shape.ink, shape.alpha);
    cairo_stroke_preserve(cairo);
  }
  cairo_new_path(cairo);
  cairo_restore(cairo);
}

struct Difference {
  int farOff = 0;  // pixels of which a channel is more than kFarOff away
  double mean = 0;
};
constexpr int kFarOff = 40;

Difference DrawAndCompare(const std::vector<Shape>& shapes) {
  AGBitmap bitmap(kWidth, kHeight, 0);
  AGContext context = bitmap.GetContextOfBitmap();
  context.ClearPixels(kAGColorWhite);
  const std::unique_ptr<cairo_surface_t, SurfaceCloser> surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight));
  const std::unique_ptr<cairo_t, ContextCloser> cairo(cairo_create(surface.get()));
  cairo_set_source_rgb(cairo.get(), 1, 1, 1);
  cairo_paint(cairo.get());
  cairo_translate(cairo.get(), 0, kHeight);
  cairo_scale(cairo.get(), 1, -1);
  for (const Shape& shape : shapes) {
    DrawThroughKit(context, shape);
    DrawByHand(cairo.get(), shape);
  }
  cairo_surface_flush(surface.get());
  const unsigned char* rows = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  Difference result;
  for (unsigned int row = 0; row < kHeight; ++row) {
    for (unsigned int x = 0; x < kWidth; ++x) {
      const unsigned char* expected = rows + static_cast<std::size_t>(row) * static_cast<std::size_t>(stride) + 4 * x;
      const AGColor color = bitmap.GetPixelColor(x, kHeight - 1 - row);
      const int channels[] = {color.Blue() - expected[0], color.Green() - expected[1], color.Red() - expected[2]};
      int greatest = 0;
      for (const int channel : channels) {
        greatest = std::max(greatest, std::abs(channel));
        result.mean += std::abs(channel) / (3.0 * kWidth * kHeight);
      }
      result.farOff += greatest > kFarOff ? 1 : 0;
    }
  }
  return result;
}

// cairo samples a pixel's coverage in 15 rows, an exact area has none; curves are flattened from other pieces, to
// within a tenth of a pixel. That is a few levels in every pixel of an edge. Where edges of one shape run through the
// same pixel, areas that overlap there are added up, which cairo tells apart, while it sometimes leaves a pixel of a
// corner or the middle of a thick ring out: a few pixels, or a row of them where the stroke of something thin runs
// beside itself, are far off. What differs in shape, width, place or colour raises either figure at once: over 4,000
// scenes each the means were below 0.46, and at most 124 of 19,200 pixels were far off.
void ExpectScenesAgree(const std::vector<Kind>& kinds, const std::vector<unsigned int>& ends) {
  constexpr unsigned int base = 20261;
  for (unsigned int seed = base; seed != base + 100; ++seed) {
    Random random(seed);
    std::vector<Shape> shapes;
    for (unsigned int i = 0; i < 8; ++i) shapes.push_back(MakeShape(random, kinds, ends));
    const Difference difference = DrawAndCompare(shapes);
    ASSERT_LE(difference.farOff, 150) << "seed " << seed;
    ASSERT_LE(difference.mean, 0.5) << "seed " << seed;
  }
}

TEST(RandomScenesTest, StraightEdges_AgreeWithCairo) {
  ExpectScenesAgree({Kind::kRect, Kind::kPolygon, Kind::kLine}, {0, 1});
}

TEST(RandomScenesTest, Curves_AgreeWithCairo) {
  ExpectScenesAgree({Kind::kRect, Kind::kPolygon, Kind::kLine, Kind::kRoundedRect, Kind::kEllipse}, {0, 1, 2});
}

}  // namespace
