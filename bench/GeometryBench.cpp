// Paths, hit tests and searches against cairo's and Qt's own, against memcpy, and against trying all pairs.
#include <cairo.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#ifdef AK_BENCH_QT
#include <QtGui/QPainterPath>
#endif

#include "bench/Ratio.h"
#include "graphics/geometry/AGGeometry.h"
#include "graphics/native/AGGraphicsLowPath.h"
#include "graphics/paths/AGPath.h"

namespace {

constexpr unsigned int kCurves = 10000;
constexpr double kSide = 1000;

struct Cubic {
  AGPoint c1, c2, end;
};

// A chain of curves of a tenth of the picture's size each, all over it.
const std::vector<Cubic>& Curves() {
  static const std::vector<Cubic> curves = [] {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(0, kSide), step(-kSide / 10, kSide / 10);
    const auto near = [&](const AGPoint& p) { return AGPoint{p.x + step(random), p.y + step(random)}; };
    std::vector<Cubic> made(kCurves);
    for (Cubic& curve : made) {
      curve.end = {place(random), place(random)};
      curve.c1 = near(curve.end);
      curve.c2 = near(curve.end);
    }
    return made;
  }();
  return curves;
}

void AddCurves(AGPath* path) {
  path->StartSubPath({0, 0});
  for (const Cubic& c : Curves()) path->AddCubicBezier(c.c1, c.c2, c.end);
}

void AddCurves(cairo_t* cairo) {
  cairo_move_to(cairo, 0, 0);
  for (const Cubic& c : Curves()) cairo_curve_to(cairo, c.c1.x, c.c1.y, c.c2.x, c.c2.y, c.end.x, c.end.y);
}

const AGPath& CurvePath() {
  static const AGPath path = [] {
    AGPath made;
    AddCurves(&made);
    return made;
  }();
  return path;
}

cairo_t* NewCairo() {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
  cairo_t* cairo = cairo_create(surface);
  cairo_surface_destroy(surface);
  return cairo;
}

cairo_t* CairoCurves() {
  static cairo_t* const cairo = [] {
    cairo_t* made = NewCairo();
    AddCurves(made);
    return made;
  }();
  return cairo;
}

AGPoint Probe(unsigned int i) { return {kSide * (i % 8 + 0.5) / 8, kSide * (i / 8 % 8 + 0.5) / 8}; }

const bool kRoundedRect = ratio::Pair(
    "build a rounded rectangle path, against cairo", 1.5,
    [](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) {
        AGPath path;
        path.AddRoundedRect({10, 20, 110, 70}, 0.5, false);
        benchmark::DoNotOptimize(path);
      }
    },
    [](benchmark::State& state) {
      cairo_t* cairo = NewCairo();
      for ([[maybe_unused]] auto _ : state) {
        cairo_new_path(cairo);
        cairo_arc(cairo, 97.5, 57.5, 12.5, 0, M_PI / 2);
        cairo_arc(cairo, 22.5, 57.5, 12.5, M_PI / 2, M_PI);
        cairo_arc(cairo, 22.5, 32.5, 12.5, M_PI, 3 * M_PI / 2);
        cairo_arc(cairo, 97.5, 32.5, 12.5, 3 * M_PI / 2, 2 * M_PI);
        cairo_close_path(cairo);
      }
      cairo_destroy(cairo);
    });

void KitBounds(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(AGGraphicsLow::AGPathGetBoundingBox(CurvePath(), true));
  }
}

void KitInside(benchmark::State& state) {
  unsigned int i = 0;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(CurvePath().IsPointInPath(Probe(i++), kAGBrushFillEvenOdd));
  }
}

double CairoBounds(cairo_t* cairo) {
  double x0, y0, x1, y1;
  cairo_path_extents(cairo, &x0, &y0, &x1, &y1);
  return x0 + y0 + x1 + y1;
}

// cairo widens its box while a path is built; the kit measures when it is asked, and then keeps the answer.
const bool kBoundsCairo = ratio::Pair(
    "build 10,000 cubics, exact bounds, against cairo", 1,
    [](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) {
        AGPath path;
        AddCurves(&path);
        benchmark::DoNotOptimize(path.GetFlattenedBoundingBox());
      }
    },
    [](benchmark::State& state) {
      cairo_t* cairo = NewCairo();
      for ([[maybe_unused]] auto _ : state) {
        cairo_new_path(cairo);
        AddCurves(cairo);
        benchmark::DoNotOptimize(CairoBounds(cairo));
      }
      cairo_destroy(cairo);
    });

const bool kBoundsAgain = ratio::Pair(
    "exact bounds of 10,000 cubics again, against cairo", 1,
    [](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(CurvePath().GetFlattenedBoundingBox());
    },
    [](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(CairoBounds(CairoCurves()));
    });

const bool kInsideCairo = ratio::Pair("point in 10,000 cubics, against cairo", 1, KitInside, [](auto& state) {
  unsigned int i = 0;
  cairo_set_fill_rule(CairoCurves(), CAIRO_FILL_RULE_EVEN_ODD);
  for ([[maybe_unused]] auto _ : state) {
    const AGPoint p = Probe(i++);
    benchmark::DoNotOptimize(cairo_in_fill(CairoCurves(), p.x, p.y));
  }
});

#ifdef AK_BENCH_QT
QPainterPath& QtCurves() {
  static QPainterPath path = [] {
    QPainterPath made;
    for (const Cubic& c : Curves()) made.cubicTo(c.c1.x, c.c1.y, c.c2.x, c.c2.y, c.end.x, c.end.y);
    return made;
  }();
  return path;
}

const bool kBoundsQt = ratio::Pair("exact bounds of 10,000 cubics, against Qt", 1, KitBounds, [](auto& state) {
  for ([[maybe_unused]] auto _ : state) {
    QtCurves().setElementPositionAt(0, 0, 0);  // Qt keeps the bounds until the path changes
    benchmark::DoNotOptimize(QtCurves().boundingRect());
  }
});

const bool kInsideQt = ratio::Pair("point in 10,000 cubics, against Qt", 1, KitInside, [](auto& state) {
  unsigned int i = 0;
  for ([[maybe_unused]] auto _ : state) {
    const AGPoint p = Probe(i++);
    benchmark::DoNotOptimize(QtCurves().contains(QPointF(p.x, p.y)));
  }
});
#endif

constexpr unsigned int kPoints = 1000000;

const AGPointArray& Walk() {
  static const AGPointArray walk = [] {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> step(-1, 1);
    AGPointArray points;
    AGPoint at = {0, 0};
    for (unsigned int i = 0; i < kPoints; ++i) points.Append(at = {at.x + step(random), at.y + step(random)});
    return points;
  }();
  return walk;
}

const bool kNearest = ratio::Pair(
    "nearest of 1,000,000 segments, against memcpy", 0,
    [](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) {
        unsigned int index;
        benchmark::DoNotOptimize(AGGeometry::FindNearestSegment(Walk(), false, {50, 50}, 0, nullptr, &index, nullptr));
      }
    },
    [](benchmark::State& state) {
      std::vector<AGPoint> copy(kPoints);
      for ([[maybe_unused]] auto _ : state) {
        std::memcpy(copy.data(), Walk().Data(), kPoints * sizeof(AGPoint));
        benchmark::ClobberMemory();
      }
    },
    kPoints * sizeof(AGPoint));

// A ring of teeth; a smaller copy lies inside without touching it.
AGPointArray Gear(double scale) {
  AGPointArray points;
  for (unsigned int i = 0; i < 10000; ++i) {
    const double angle = 2 * M_PI * i / 10000, radius = scale * (i % 2 ? 100 : 90);
    points.Append({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return points;
}

const bool kPolygons = ratio::Pair(
    "two polygons of 10,000 points, against all pairs", 0.05,
    [](benchmark::State& state) {
      const AGPointArray outer = Gear(1), inner = Gear(0.89);
      for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(AGGeometry::IsPolygonSect(outer, inner));
    },
    [](benchmark::State& state) {
      const AGPointArray outer = Gear(1), inner = Gear(0.89);
      const unsigned int count = outer.Count();
      for ([[maybe_unused]] auto _ : state) {
        bool meets = false;
        for (unsigned int i = 0; i < count && !meets; ++i) {
          for (unsigned int j = 0; j < count && !meets; ++j) {
            meets = AGGeometry::GetIntersectionOfSegments(outer[i], outer[(i + 1) % count], inner[j],
                                                          inner[(j + 1) % count], nullptr);
          }
        }
        benchmark::DoNotOptimize(meets);
      }
    });

}  // namespace
