// Drawing 10,000 turned rounded rectangles through the bundle's draw slot, against the same picture drawn by hand with
// cairo.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/Ratio.h"
#include "bench/RectangleScene.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/bundles/Bundle.h"
#include "host/model/Document.h"
#include "host/tables/SlotCall.h"

namespace {

const std::vector<scene::Shape>& Shapes() {
  static const std::vector<scene::Shape> shapes = scene::MakeShapes(10000, 15, 60);
  return shapes;
}

// The bundle and one of its rectangles, which draws itself into any bounds.
struct Plugin {
  std::unique_ptr<host::Bundle> bundle;
  std::unique_ptr<host::DocumentObject> object;
};

Plugin& ThePlugin() {
  static Plugin plugin = [] {
    Plugin made;
    auto bundle = host::Bundle::Load(AK_BUNDLE);
    if (!bundle) {
      std::fprintf(stderr, "%s\n", bundle.Why().English().c_str());
      std::exit(1);
    }
    made.bundle = std::move(*bundle);
    made.object = std::move(*host::Document::NewObject(AKClassID("stdRect"), "-default"));
    return made;
  }();
  return plugin;
}

void DrawWithBundle(const AGContext& context, bool stroke) {
  const host::DocumentObject& object = *ThePlugin().object;
  const AKClass& cls = *object.instance->Class();
  AGBrush brush;
  AGPen pen;
  if (stroke) pen.SetStyleSolid(kAGColorBlack, 2, kAGPenSizeModeAbsolute);
  AKDrawEvent event;
  event.recommendedBrush = &brush;
  event.recommendedPen = &pen;
  for (const scene::Shape& shape : Shapes()) {
    brush.SetStyleSolid(shape.color);
    event.bounds = shape.bounds;
    event.angle = shape.angle;
    host::CallSlot<int, const AGContext&, const AKDrawEvent&>(cls, kAKMethodDraw, object.instance.get(), context,
                                                              event);
  }
}

void PaintByHand(cairo_t* cairo, const scene::Shape& shape, bool stroke) {
  cairo_set_source_rgb(cairo, shape.color.Red() / 255.0, shape.color.Green() / 255.0, shape.color.Blue() / 255.0);
  if (!stroke) {
    cairo_fill(cairo);
    return;
  }
  cairo_fill_preserve(cairo);
  cairo_set_source_rgb(cairo, 0, 0, 0);
  cairo_set_line_width(cairo, 2);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cairo);
}

void DrawByHand(cairo_t* cairo, bool stroke) {
  scene::DrawByHand(cairo, Shapes(),
                    [stroke](cairo_t* c, const scene::Shape& shape) { PaintByHand(c, shape, stroke); });
}

void AddPair(const char* name, bool stroke) {
  ratio::Pair(
      name, 1.10,
      [stroke](benchmark::State& state) {
        AGBitmap bitmap(scene::kSide, scene::kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
        const AGContext context = bitmap.GetContextOfBitmap();
        for (auto _ : state) DrawWithBundle(context, stroke);
        const scene::Canvas canvas;
        DrawByHand(canvas.cairo, stroke);
        if (!scene::PicturesAgree(bitmap.Pixels(), canvas, 1)) state.SkipWithError("the pictures differ");
      },
      [stroke](benchmark::State& state) {
        const scene::Canvas canvas;
        for (auto _ : state) DrawByHand(canvas.cairo, stroke);
      });
}

const bool kRegistered = [] {
  AddPair("10,000 rounded rectangles, fill", false);
  AddPair("10,000 rounded rectangles, fill and 2-unit stroke", true);
  return true;
}();

}  // namespace
