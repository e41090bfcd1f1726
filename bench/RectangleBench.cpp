// Drawing 10,000 turned rounded rectangles through the bundle's draw slot, against the same picture drawn by hand with
// cairo.
#include <cairo.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

#include "bench/Ratio.h"
#include "graphics/AGBitmap.h"
#include "graphics/AKDrawEvent.h"
#include "graphics/values/AGConstants.h"
#include "host/Bundle.h"
#include "host/Document.h"
#include "host/ObjectProperties.h"
#include "host/SlotCall.h"

namespace {

constexpr unsigned int kSide = 1000;
constexpr unsigned int kCount = 10000;
constexpr double kCurvature = 0.5;

struct Shape {
  AGRect bounds;
  double angle;
  AGColor color;
};

std::vector<Shape> MakeShapes() {
  std::mt19937 random(20);
  const auto number = [&random](double lo, double hi) { return std::uniform_real_distribution<>(lo, hi)(random); };
  std::vector<Shape> shapes;
  for (unsigned int i = 0; i < kCount; ++i) {
    const AGPoint corner{number(0, kSide - 60), number(0, kSide - 60)};
    shapes.push_back({{corner.x, corner.y, corner.x + number(15, 60), corner.y + number(15, 60)},
                      number(0, k2Pi),
                      AGColor(static_cast<unsigned char>(number(0, 255)), static_cast<unsigned char>(number(0, 255)),
                              static_cast<unsigned char>(number(0, 255)))});
  }
  return shapes;
}

std::vector<Shape> const& Shapes() {
  static const std::vector<Shape> shapes = MakeShapes();
  return shapes;
}

// The bundle and one of its rectangles, which draws itself into any bounds.
struct Plugin {
  std::unique_ptr<host::Bundle> bundle;
  std::unique_ptr<host::Document> document;
  host::DocumentObject* object = nullptr;
};

Plugin& ThePlugin() {
  static Plugin plugin = [] {
    Plugin made;
    std::string error;
    made.bundle = host::Bundle::Load(AK_BUNDLE, &error);
    if (made.bundle == nullptr) {
      std::fprintf(stderr, "%s\n", error.c_str());
      std::exit(1);
    }
    made.document = std::make_unique<host::Document>(AGSize{1, 1});
    made.object = made.document->Add(AKClassID("stdRect"), "-default", &error);
    return made;
  }();
  return plugin;
}

void DrawWithBundle(AGContext const& context, bool stroke) {
  host::DocumentObject const& object = *ThePlugin().object;
  AKClass const& cls = *object.instance->Class();
  AGBrush brush;
  AGPen pen;
  if (stroke) pen.SetStyleSolid(kAGColorBlack, 2, kAGPenSizeModeAbsolute);
  AKDrawEvent event;
  event.recommendedBrush = &brush;
  event.recommendedPen = &pen;
  for (Shape const& shape : Shapes()) {
    brush.SetStyleSolid(shape.color);
    event.bounds = shape.bounds;
    event.angle = shape.angle;
    host::CallSlot<int, AGContext const&, AKDrawEvent const&>(cls, kAKMethodDraw, object.instance.get(), context,
                                                              event);
  }
}

void DrawByHand(cairo_t* cairo, bool stroke) {
  for (Shape const& shape : Shapes()) {
    const double w = shape.bounds.Width() / 2;
    const double h = shape.bounds.Height() / 2;
    const double r = std::min(w, h) * kCurvature;
    cairo_save(cairo);
    cairo_translate(cairo, shape.bounds.Center().x, kSide - shape.bounds.Center().y);
    cairo_rotate(cairo, -shape.angle);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, w - r, h - r, r, 0, kPi / 2);
    cairo_arc(cairo, r - w, h - r, r, kPi / 2, kPi);
    cairo_arc(cairo, r - w, r - h, r, kPi, 3 * kPi / 2);
    cairo_arc(cairo, w - r, r - h, r, 3 * kPi / 2, k2Pi);
    cairo_close_path(cairo);
    cairo_set_source_rgb(cairo, shape.color.Red() / 255.0, shape.color.Green() / 255.0, shape.color.Blue() / 255.0);
    if (stroke) {
      cairo_fill_preserve(cairo);
      cairo_set_source_rgb(cairo, 0, 0, 0);
      cairo_set_line_width(cairo, 2);
      cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
      cairo_stroke(cairo);
    } else {
      cairo_fill(cairo);
    }
    cairo_restore(cairo);
  }
}

// Both ways must paint the same picture, or the comparison means nothing: the mean difference of a channel stays below
// one part in 255 (antialiasing of edges leaves some).
bool PicturesAgree(AGBitmap const& bitmap, cairo_surface_t* surface) {
  const unsigned char* reference = cairo_image_surface_get_data(surface);
  double sum = 0;
  for (std::size_t i = 0; i < bitmap.ByteCount(); ++i) sum += std::abs(bitmap.Pixels()[i] - reference[i]);
  return sum / bitmap.ByteCount() < 1;
}

void AddPair(const char* name, bool stroke) {
  ratio::Pair(
      name, 1.10,
      [stroke](benchmark::State& state) {
        AGBitmap bitmap(kSide, kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
        const AGContext context = bitmap.GetContextOfBitmap();
        for (auto _ : state) DrawWithBundle(context, stroke);
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
        cairo_t* cairo = cairo_create(surface);
        DrawByHand(cairo, stroke);
        cairo_destroy(cairo);
        if (!PicturesAgree(bitmap, surface)) state.SkipWithError("the pictures differ");
        cairo_surface_destroy(surface);
      },
      [stroke](benchmark::State& state) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
        cairo_t* cairo = cairo_create(surface);
        for (auto _ : state) DrawByHand(cairo, stroke);
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
      });
}

const bool kRegistered = [] {
  AddPair("10,000 rounded rectangles, fill", false);
  AddPair("10,000 rounded rectangles, fill and 2-unit stroke", true);
  return true;
}();

}  // namespace
