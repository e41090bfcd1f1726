// Brushes and pens against the same picture drawn by hand with cairo on a bitmap.
#include <algorithm>
#include <cmath>

#include "bench/Ratio.h"
#include "bench/RectangleScene.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "kit/geometry/AGConstants.h"

namespace {

using scene::Shape;
using Shapes = std::vector<Shape>;
using KitPaint = void (*)(AGContext* context, const Shape& shape);
using HandPaint = void (*)(cairo_t* cairo, const Shape& shape);

void DrawWithKit(AGContext* context, const Shapes& shapes, KitPaint paint) {
  for (const Shape& shape : shapes) {
    AGPath path;
    path.AddRoundedRect(shape.bounds, scene::kCurvature, false);
    paint(context, shape);
    context->DrawPath(path, AGAffineTransformRotation(shape.angle, shape.bounds.Center()));
  }
}

void SetSource(cairo_t* cairo, AGColor color, double alpha) {
  cairo_set_source_rgba(cairo, color.Red() / 255.0, color.Green() / 255.0, color.Blue() / 255.0, alpha);
}

void KitSolid(AGContext* context, const Shape& shape) { context->brush.SetStyleSolid(shape.color); }
void HandSolid(cairo_t* cairo, const Shape& shape) {
  SetSource(cairo, shape.color, 1);
  cairo_fill(cairo);
}

void KitTranslucent(AGContext* context, const Shape& shape) {
  context->brush.SetStyleSolid(AGColor(shape.color.Red(), shape.color.Green(), shape.color.Blue(), 128));
}
void HandTranslucent(cairo_t* cairo, const Shape& shape) {
  SetSource(cairo, shape.color, 128 / 255.0);
  cairo_fill(cairo);
}

void KitStroked(AGContext* context, const Shape& shape) {
  context->brush.SetStyleSolid(shape.color);
  context->pen.SetStyleSolid(kAGColorBlack, 2, kAGPenSizeModeAbsolute);
}
void HandStroked(cairo_t* cairo, const Shape& shape) {
  SetSource(cairo, shape.color, 1);
  cairo_fill_preserve(cairo);
  SetSource(cairo, kAGColorBlack, 1);
  cairo_set_line_width(cairo, 2);
  cairo_stroke(cairo);
}

// By hand: cairo's own gradient of three stops from the left edge to the right one.
void KitLinear(AGContext* context, const Shape& shape) {
  context->brush.SetStyleLinearGradient(shape.color, kAGColorWhite, 0.4, 0);
}
void HandLinear(cairo_t* cairo, const Shape& shape) {
  const double half = shape.bounds.Width() / 2;
  cairo_pattern_t* gradient = cairo_pattern_create_linear(-half, 0, half, 0);
  const double color[] = {shape.color.Red() / 255.0, shape.color.Green() / 255.0, shape.color.Blue() / 255.0};
  cairo_pattern_add_color_stop_rgb(gradient, 0, color[0], color[1], color[2]);
  cairo_pattern_add_color_stop_rgb(gradient, 0.4, (color[0] + 1) / 2, (color[1] + 1) / 2, (color[2] + 1) / 2);
  cairo_pattern_add_color_stop_rgb(gradient, 1, 1, 1, 1);
  cairo_set_source(cairo, gradient);
  cairo_fill(cairo);
  cairo_pattern_destroy(gradient);
}

void KitRadial(AGContext* context, const Shape& shape) {
  context->brush.SetStyleRadialGradient(shape.color, kAGColorWhite, 0.6, 0.5, 0.5);
}
void HandRadial(cairo_t* cairo, const Shape& shape) {
  const double w = shape.bounds.Width();
  const double h = shape.bounds.Height();
  const double side = std::min(w, h);
  const double color[] = {shape.color.Red() / 255.0, shape.color.Green() / 255.0, shape.color.Blue() / 255.0};
  cairo_scale(cairo, w / side, h / side);
  cairo_pattern_t* gradient = cairo_pattern_create_radial(0, 0, 0, 0, 0, side * 0.707);
  cairo_pattern_add_color_stop_rgb(gradient, 0, color[0], color[1], color[2]);
  cairo_pattern_add_color_stop_rgb(gradient, 0.4, (color[0] + 1) / 2, (color[1] + 1) / 2, (color[2] + 1) / 2);
  cairo_pattern_add_color_stop_rgb(gradient, 1, 1, 1, 1);
  cairo_set_source(cairo, gradient);
  cairo_fill(cairo);
  cairo_pattern_destroy(gradient);
}

constexpr unsigned int kPattern = 12;

void KitPattern(AGContext* context, const Shape& shape) {
  context->brush.SetStylePattern(shape.color, kAGColorWhite, kPattern);
}
// By hand the cell is filled for each shape too, since each has its own colour.
void HandPattern(cairo_t* cairo, const Shape& shape) {
  cairo_surface_t* cell = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8);
  const std::uint32_t color = 0xFF000000U | static_cast<std::uint32_t>(shape.color.Red()) << 16 |
                              static_cast<std::uint32_t>(shape.color.Green()) << 8 | shape.color.Blue();
  for (unsigned int y = 0; y < 8; ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(
        cairo_image_surface_get_data(cell) + (7 - y) * static_cast<unsigned int>(cairo_image_surface_get_stride(cell)));
    for (unsigned int x = 0; x < 8; ++x) {
      row[x] = (AGGraphicsLow::kAGBrushPatterns[kPattern - 1][y] >> (7 - x) & 1) != 0 ? color : 0xFFFFFFFFU;
    }
  }
  cairo_surface_mark_dirty(cell);
  cairo_identity_matrix(cairo);
  cairo_set_source_surface(cairo, cell, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_REPEAT);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_fill(cairo);
  cairo_surface_destroy(cell);
}

constexpr unsigned int kBlueFirst = AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill;

void RunKit(benchmark::State& state, const Shapes& shapes, KitPaint paint, HandPaint check) {
  AGBitmap bitmap(scene::kSide, scene::kSide, kBlueFirst);
  AGContext context = bitmap.GetContextOfBitmap();
  context.antialias = true;
  for (auto _ : state) DrawWithKit(&context, shapes, paint);

  AGBitmap fresh(scene::kSide, scene::kSide, kBlueFirst);
  AGContext once = fresh.GetContextOfBitmap();
  DrawWithKit(&once, shapes, paint);
  const scene::Canvas canvas;
  scene::DrawByHand(canvas.cairo, shapes, check);
  if (!scene::PicturesAgree(fresh.Pixels(), canvas, 3)) state.SkipWithError("the pictures differ");
}

void AddPair(const char* name, double target, const Shapes& shapes, KitPaint kit, HandPaint hand) {
  ratio::Pair(
      name, target, [&shapes, kit, hand](benchmark::State& state) { RunKit(state, shapes, kit, hand); },
      [&shapes, hand](benchmark::State& state) {
        const scene::Canvas canvas;
        for (auto _ : state) scene::DrawByHand(canvas.cairo, shapes, hand);
      });
}

// The same kit drawing on a bitmap with the alpha first, against one with the blue first.
void AddByteOrderPair(const char* name, const Shapes& shapes, KitPaint paint) {
  const auto body = [&shapes, paint](unsigned int flags) {
    return [&shapes, paint, flags](benchmark::State& state) {
      AGBitmap bitmap(scene::kSide, scene::kSide, flags);
      AGContext context = bitmap.GetContextOfBitmap();
      for (auto _ : state) DrawWithKit(&context, shapes, paint);
    };
  };
  ratio::Pair(name, 1.02, body(AGBitmap::kFlagZeroFill), body(kBlueFirst));
}

// An outline of 1,600 corners around most of the bitmap.
AGPath ManyCorners() {
  constexpr int kCorners = 1600;
  AGPointArray corners;
  for (int i = 0; i < kCorners; ++i) {
    const double angle = i * 2 * kPi / kCorners;
    const double radius = scene::kSide * (i % 2 == 0 ? 0.48 : 0.46);
    corners.Append({scene::kSide / 2.0 + radius * std::cos(angle), scene::kSide / 2.0 + radius * std::sin(angle)});
  }
  AGPath path;
  path.AddLines(corners, true);
  return path;
}

// The same kit drawing under a clip of many corners, against none.
void AddClipPair(const char* name, const Shapes& shapes, KitPaint paint) {
  const auto body = [&shapes, paint](bool isClipped) {
    return [&shapes, paint, isClipped](benchmark::State& state) {
      AGBitmap bitmap(scene::kSide, scene::kSide, kBlueFirst);
      AGContext context = bitmap.GetContextOfBitmap();
      if (isClipped) context.SetClipPath(ManyCorners());
      for (auto _ : state) DrawWithKit(&context, shapes, paint);
    };
  };
  ratio::Pair(name, 1.3, body(true), body(false));
}

const bool kRegistered = [] {
  static const Shapes usual = scene::MakeShapes(10000, 20, 200);
  static const Shapes small = scene::MakeShapes(10000, 15, 60);
  static const Shapes large = scene::MakeShapes(2000, 500, 900);
  static const Shapes tiny = scene::MakeShapes(20000, 8, 8);
  AddPair("10,000 rectangles, solid", 0.40, usual, &KitSolid, &HandSolid);
  AddPair("10,000 rectangles, translucent", 0.32, usual, &KitTranslucent, &HandTranslucent);
  AddPair("10,000 rectangles, fill and stroke", 0.32, usual, &KitStroked, &HandStroked);
  AddPair("10,000 rectangles, linear gradient", 0.20, usual, &KitLinear, &HandLinear);
  AddPair("10,000 rectangles, radial gradient", 0.15, usual, &KitRadial, &HandRadial);
  AddPair("10,000 rectangles, pattern", 0.22, usual, &KitPattern, &HandPattern);
  AddPair("2,000 large rectangles", 0.65, large, &KitSolid, &HandSolid);
  AddPair("20,000 tiny rectangles", 0.45, tiny, &KitSolid, &HandSolid);
  AddPair("10,000 small rectangles, solid", 0, small, &KitSolid, &HandSolid);
  AddPair("10,000 small rectangles, linear gradient", 0, small, &KitLinear, &HandLinear);
  AddByteOrderPair("alpha first against blue first, solid", usual, &KitSolid);
  AddByteOrderPair("alpha first against blue first, tiny", tiny, &KitSolid);
  AddByteOrderPair("alpha first against blue first, linear gradient", usual, &KitLinear);
  AddByteOrderPair("alpha first against blue first, pattern", usual, &KitPattern);
  AddClipPair("under a clip of 1,600 corners against none", usual, &KitSolid);
  return true;
}();

}  // namespace
