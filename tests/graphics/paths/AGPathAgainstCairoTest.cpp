// Random paths, built a second time with cairo: its extents and its in-fill test answer for both.
//
// cairo keeps coordinates in steps of 1/256, so the paths are millions of units large; and it may flatten by up to its
// tolerance, one unit here, which is far less than the strip along the edges where no point is compared.
#include <cairo/cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <random>

#include "graphics/paths/AGPath.h"
#include "kit/geometry/AGConstants.h"

namespace {

constexpr unsigned int kSeed = 31337;
constexpr double kSize = 3.5e6;

// Adds the same shapes to a path and to cairo, each by its own means.
class Twins {
 public:
  explicit Twins(unsigned int seed) : random_(seed) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
    cairo_.reset(cairo_create(surface));
    cairo_surface_destroy(surface);
    cairo_set_tolerance(cairo_.get(), 1);
    cairo_set_line_width(cairo_.get(), 2e-3 * kSize);
  }

  AGPath path;
  cairo_t* Cairo() const { return cairo_.get(); }
  AGPoint Point() { return {value_(random_), value_(random_)}; }
  unsigned int Below(std::size_t n) { return static_cast<unsigned int>(random_() % n); }

  // Shapes of lines and polynomial curves, on which the two agree to rounding.
  void AddPolynomial() {
    const AGPoint a = Point(), b = Point(), c = Point();
    AGPoint from;
    cairo_get_current_point(Cairo(), &from.x, &from.y);
    const std::function<void()> shapes[] = {
        [&] { Move(a), Line(b); },
        [&] { Line(a); },
        [&] { path.AddCubicBezier(a, b, c), Cubic(a, b, c); },
        [&] { path.AddQuadBezier(a, b), Cubic(from + (a - from) * (2.0 / 3), b + (a - b) * (2.0 / 3), b); },
        [&] {
          path.AddRect({a.x, a.y, b.x, b.y}, false);
          cairo_rectangle(Cairo(), std::min(a.x, b.x), std::min(a.y, b.y), std::fabs(b.x - a.x), std::fabs(b.y - a.y));
        },
        [&] {
          Spline({a, b, c, Point()}, 0.2 + 0.2 * Below(5), Below(2) == 1);
        },
        [&] {
          ClosedLines({a, b, c});
        },
        [&] { Transform(); },
    };
    shapes[Below(std::size(shapes))]();
  }

  // Shapes with arcs, which each library approaches in its own way.
  void AddRound() {
    const AGPoint a = Point(), b = Point();
    const double angle = 6 * value_(random_) / kSize, sweep = 12 * value_(random_) / kSize;
    const AGRect r = {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    const std::function<void()> shapes[] = {
        [&] { path.AddArc(r, angle, sweep), EllipticArc(r, angle, sweep); },
        [&] { Ellipse(r); },
        [&] { TangentArc(a, b, 0.2 * kSize * (1 + Below(2))); },
        [&] { RoundedRect(r, 0.25 * (1 + Below(4))); },
    };
    shapes[Below(std::size(shapes))]();
  }

  void Move(const AGPoint& p) { path.StartSubPath(p), cairo_move_to(Cairo(), p.x, p.y); }
  void Line(const AGPoint& p) { path.AddLine(p), cairo_line_to(Cairo(), p.x, p.y); }

 private:
  void Cubic(const AGPoint& a, const AGPoint& b, const AGPoint& c) {
    cairo_curve_to(Cairo(), a.x, a.y, b.x, b.y, c.x, c.y);
  }

  void ClosedLines(const AGPointArray& p) {
    path.AddLines(p, true);
    cairo_line_to(Cairo(), p[0].x, p[0].y), cairo_move_to(Cairo(), p[0].x, p[0].y);
    for (unsigned int i = 1; i < p.Count(); ++i) cairo_line_to(Cairo(), p[i].x, p[i].y);
    cairo_close_path(Cairo());
  }

  // The cardinal spline from its textbook form: the Hermite tangents are tension · (next - previous).
  void Spline(const AGPointArray& p, double tension, bool close) {
    path.AddSplineCurves(p, tension, close);
    const unsigned int n = p.Count();
    const auto tangent = [&](unsigned int i) {
      const AGPoint& previous = i > 0 ? p[i - 1] : close ? p[n - 1] : p[0];
      const AGPoint& next = i + 1 < n ? p[i + 1] : close ? p[0] : p[n - 1];
      return (next - previous) * tension;
    };
    cairo_line_to(Cairo(), p[0].x, p[0].y);
    for (unsigned int i = 0; i + (close ? 0 : 1) < n; ++i) {
      const unsigned int to = (i + 1) % n;
      Cubic(p[i] + tangent(i) * (1.0 / 3), p[to] - tangent(to) * (1.0 / 3), p[to]);
    }
    if (close) cairo_close_path(Cairo());
  }

  // A rotation, once: cairo would round the points again each time, and none may leave its range of 2^23.
  void Transform() {
    if (turned_) return;
    turned_ = true;
    const double angle = Below(100);
    const AGAffineTransform t = {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
    path.ApplyTransform(t);
    const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> old(cairo_copy_path(Cairo()),
                                                                           cairo_path_destroy);
    cairo_new_path(Cairo());
    const cairo_matrix_t map = {t.a, t.b, t.c, t.d, t.tx, t.ty};
    cairo_set_matrix(Cairo(), &map);
    cairo_append_path(Cairo(), old.get());
    cairo_identity_matrix(Cairo());
  }

  void EllipticArc(const AGRect& r, double angle, double sweep) {
    cairo_save(Cairo());
    cairo_translate(Cairo(), r.Center().x, r.Center().y);
    cairo_scale(Cairo(), r.Width() / 2, r.Height() / 2);
    (sweep < 0 ? cairo_arc_negative : cairo_arc)(Cairo(), 0, 0, 1, angle, angle + sweep);
    cairo_restore(Cairo());
  }

  void Ellipse(const AGRect& r) {
    path.AddEllipseInRect(r, true);
    cairo_new_sub_path(Cairo()), EllipticArc(r, 0, k2Pi), cairo_close_path(Cairo());
  }

  // The circle lies on the bisector of the corner, at `reach` from it.
  void TangentArc(const AGPoint& corner, const AGPoint& end, double reach) {
    AGPoint from;
    cairo_get_current_point(Cairo(), &from.x, &from.y);
    const double in = std::atan2(from.y - corner.y, from.x - corner.x);
    const double out = std::atan2(end.y - corner.y, end.x - corner.x);
    const double half = std::remainder(out - in, k2Pi) / 2;
    const double radius = reach * std::sin(std::fabs(half));
    path.AddArc(corner, end, radius);
    const AGPoint center = {corner.x + reach * std::cos(in + half), corner.y + reach * std::sin(in + half)};
    if (half > 0) {
      cairo_arc_negative(Cairo(), center.x, center.y, radius, in - kPi / 2, out + kPi / 2);
    } else {
      cairo_arc(Cairo(), center.x, center.y, radius, in + kPi / 2, out - kPi / 2);
    }
  }

  void RoundedRect(const AGRect& r, double curvature) {
    path.AddRoundedRect(r, curvature, false);
    const double radius = std::min(r.Width(), r.Height()) * curvature / 2;
    cairo_move_to(Cairo(), r.x1, r.Center().y);
    cairo_arc(Cairo(), r.x1 - radius, r.y1 - radius, radius, 0, kPi / 2);
    cairo_arc(Cairo(), r.x0 + radius, r.y1 - radius, radius, kPi / 2, kPi);
    cairo_arc(Cairo(), r.x0 + radius, r.y0 + radius, radius, kPi, 3 * kPi / 2);
    cairo_arc(Cairo(), r.x1 - radius, r.y0 + radius, radius, 3 * kPi / 2, k2Pi);
    cairo_close_path(Cairo());
  }

  std::mt19937_64 random_;
  bool turned_ = false;
  std::uniform_real_distribution<double> value_{-kSize, kSize};
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo_{nullptr, cairo_destroy};
};

// `tolerance` is relative to the extent of the coordinates. Returns how many points were away from every edge.
int Compare(Twins& twins, double tolerance) {
  double x0, y0, x1, y1;
  cairo_path_extents(twins.Cairo(), &x0, &y0, &x1, &y1);
  const AGRect box = twins.path.GetFlattenedBoundingBox();
  const double slack = tolerance * 2 * kSize;
  EXPECT_NEAR(box.x0, x0, slack);
  EXPECT_NEAR(box.y0, y0, slack);
  EXPECT_NEAR(box.x1, x1, slack);
  EXPECT_NEAR(box.y1, y1, slack);
  int away = 0;
  for (int i = 0; i < 25; ++i) {
    const AGPoint p = twins.Point();
    if (cairo_in_stroke(twins.Cairo(), p.x, p.y)) continue;
    ++away;
    for (const AGBrushFillMode mode : {kAGBrushFillEvenOdd, kAGBrushFillWinding}) {
      cairo_set_fill_rule(twins.Cairo(),
                          mode == kAGBrushFillWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
      EXPECT_EQ(twins.path.IsPointInPath(p, mode), cairo_in_fill(twins.Cairo(), p.x, p.y) != 0) << p.x << "," << p.y;
    }
  }
  return away;
}

void CompareRandomPaths(void (Twins::*add)(), double tolerance) {
  int away = 0;
  for (unsigned int round = 0; round < 200; ++round) {
    SCOPED_TRACE(testing::Message() << "seed " << kSeed + round);
    Twins twins(kSeed + round);
    twins.Move(twins.Point());
    twins.Line(twins.Point());
    for (unsigned int step = 0; step < 1 + round % 8; ++step) (twins.*add)();
    away += Compare(twins, tolerance);
    if (testing::Test::HasFailure()) break;
  }
  EXPECT_GT(away, 2000);
}

TEST(AGPathAgainstCairo, PolynomialShapes_RandomPaths_AgreeToRounding) {
  CompareRandomPaths(&Twins::AddPolynomial, 1e-9);
}

TEST(AGPathAgainstCairo, RoundShapes_RandomPaths_AgreeToTheErrorOfAQuarterCircle) {
  CompareRandomPaths(&Twins::AddRound, 2.8e-4);
}

}  // namespace
