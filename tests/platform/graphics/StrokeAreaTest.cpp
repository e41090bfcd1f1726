// The areas of strokes against the strokes of another library.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "platform/graphics/StrokeArea.h"

namespace {

constexpr int kSide = 200;

class StrokeAreaTest : public testing::Test {
 protected:
  double Number(double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random_); }
  CGPoint Point() { return {Number(30, kSide - 30), Number(30, kSide - 30)}; }

  // A path of device space, both as the kit's and as cairo's.
  void AddAnything(bool hasCurves, CGPath* path, cairo_t* cairo) {
    CGPoint p = Point(), a = Point(), b = Point();
    CGPathMoveToPoint(path, nullptr, p.x, p.y);
    cairo_move_to(cairo, p.x, p.y);
    for (unsigned int i = 0, count = 1 + random_() % 3; i < count; ++i, p = Point(), a = Point(), b = Point()) {
      if (!hasCurves || random_() % 2 == 0) {
        CGPathAddLineToPoint(path, nullptr, p.x, p.y);
        cairo_line_to(cairo, p.x, p.y);
      } else {
        CGPathAddCurveToPoint(path, nullptr, a.x, a.y, b.x, b.y, p.x, p.y);
        cairo_curve_to(cairo, a.x, a.y, b.x, b.y, p.x, p.y);
      }
    }
    if (random_() % 2 == 0) return;
    CGPathCloseSubpath(path);
    cairo_close_path(cairo);
  }

  const unsigned int seed_ = std::random_device{}();
  std::mt19937 random_{seed_};
};

struct Page {
  Page() { cairo_set_tolerance(cairo, 0.02); }
  ~Page() {
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  }
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, kSide, kSide);
  cairo_t* cairo = cairo_create(surface);
};

void Fill(cairo_t* cairo, const CGPath& area) {
  const CGPoint* p = area.points.Data();
  for (const CGPath::Verb verb : area.verbs) {
    if (verb == kCGPathElementMoveToPoint) cairo_move_to(cairo, p->x, p->y);
    if (verb == kCGPathElementAddLineToPoint) cairo_line_to(cairo, p->x, p->y);
    if (verb == kCGPathElementAddCurveToPoint) cairo_curve_to(cairo, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
    if (verb == kCGPathElementCloseSubpath) cairo_close_path(cairo);
    p += CGPath::PointCount(verb);
  }
  cairo_fill(cairo);
}

TEST_F(StrokeAreaTest, AnyStroke_CoversWhatCairosDoes) {
  SCOPED_TRACE(testing::Message() << "seed " << seed_);
  int odd = 0;
  for (int round = 0; round < 200; ++round) {
    Page stroked, filled;
    CGPath path, area;
    const bool hasCurves = round % 2 == 0;
    AddAnything(hasCurves, &path, stroked.cairo);
    platform::GraphicsState state;
    state.lineWidth = Number(2, 25);
    state.lineCap = static_cast<CGLineCap>(random_() % 3);
    // Whether a curve's end has a mitre hangs on how exactly its direction is known: curves have none here.
    state.lineJoin = hasCurves ? kCGLineJoinRound : static_cast<CGLineJoin>(random_() % 3);
    const CGAffineTransform pen{Number(0.5, 1.2), Number(-0.5, 0.5), Number(-0.5, 0.5), Number(-1.2, -0.5), 70, -40};
    const cairo_matrix_t matrix{pen.a, pen.b, pen.c, pen.d, pen.tx, pen.ty};
    cairo_set_line_width(stroked.cairo, state.lineWidth);
    cairo_set_line_cap(stroked.cairo, static_cast<cairo_line_cap_t>(state.lineCap));
    cairo_set_line_join(stroked.cairo, static_cast<cairo_line_join_t>(state.lineJoin));
    cairo_set_matrix(stroked.cairo, &matrix);
    cairo_stroke(stroked.cairo);
    platform::AddStrokeArea(path, pen, state, {-1000, -1000, 1200, 1200}, &area);
    Fill(filled.cairo, area);

    const unsigned char* const a = cairo_image_surface_get_data(stroked.surface);
    const unsigned char* const b = cairo_image_surface_get_data(filled.surface);
    int different = 0;
    for (int i = 0; i < kSide * cairo_image_surface_get_stride(stroked.surface); ++i) {
      if (std::abs(a[i] - b[i]) > 96) ++different;
    }
    if (hasCurves) {
      odd += different > 60 ? 1 : 0;
    } else {
      EXPECT_LE(different, 8) << round << " cap " << state.lineCap << " join " << state.lineJoin;
    }
  }
  EXPECT_LE(odd, 5);  // of a hundred: cairo goes around a curve's cusp in its own way
}

// However large nib and curve are: with curves as exact as small ones have it would be a hundred times as many.
TEST_F(StrokeAreaTest, HugeNibs_TakeNoEndOfPoints) {
  const CGAffineTransform maps[] = {{1, 0, 0, 1, 0, 0}, {1e6, 0, 0, 1e-6, 0, 0}, {1e-9, 0, 0, 1, 0, 0}};
  for (const CGAffineTransform& pen : maps) {
    for (const double size : {200.0, 1e9, 1e12}) {
      for (const double width : {1e5, 1099511627776.0, 1e200}) {
        CGPath path, area;
        CGPathAddEllipseInRect(&path, nullptr, CGRectMake(-size / 2, -size / 2, size, size / 10));
        platform::GraphicsState state;
        state.lineWidth = width;
        const double reach = 10 * width * (pen.a + pen.d);
        platform::AddStrokeArea(path, pen, state, platform::CutBoxOf({0, 0, kSide, kSide}, reach), &area);
        EXPECT_GT(area.points.Count(), 8U);
        EXPECT_LT(area.points.Count(), 1000000U) << size << " by " << width << ", " << pen.a;
      }
    }
  }
}

}  // namespace
