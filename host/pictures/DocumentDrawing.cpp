#include "host/pictures/DocumentDrawing.h"

#include "CoreGraphics/CGContext.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/model/InstanceCall.h"
#include "host/tables/SlotCall.h"

namespace host {
namespace {

constexpr std::size_t kProgressStep = 256;  // objects

// A box with its diagonals, so that nobody takes it for a drawn rectangle.
void DrawPlaceholder(DocumentObject const& object, AGContext const& context) {
  AGContext copy(context);
  copy.brush.SetStyleNone();
  copy.pen.SetStyleSolid(AGColor(128, 128, 128), 1.0, kAGPenSizeModeAbsolute);
  AGPoint corners[4];
  GetTurnedCorners(object.Placement(), corners);
  copy.DrawLines(AGPointArray(corners, 4), true);
  copy.DrawSegment(corners[0], corners[2]);
  copy.DrawSegment(corners[1], corners[3]);
}

template <typename Draw>
void DrawScaled(AGContext const& context, double scale, Draw draw) {
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  CGContextConcatCTM(port, {scale, 0, 0, scale, 0, 0});
  draw();
  CGContextRestoreGState(port);
}

}  // namespace

void DrawObject(DocumentObject const& object, AGContext const& context, AGBrush const& brush, AGPen const& pen) {
  const InstanceCall call(InstanceCall::Kind::kDraw);
  if (object.IsPlaceholder()) {
    DrawPlaceholder(object, context);
    return;
  }
  AKClass const& cls = *object.instance->Class();
  if (!HasSlot(cls, kAKMethodDraw)) return;
  AKDrawEvent event;
  event.bounds = object.bounds;
  event.angle = object.angle;
  event.recommendedBrush = &brush;
  event.recommendedPen = &pen;
  CallSlot<int, AGContext const&, AKDrawEvent const&>(cls, kAKMethodDraw, object.instance.get(), context, event);
}

bool DrawObjects(Document const& document, AGContext const& context, double scale, Progress* progress) {
  std::size_t count = 0;
  bool goesOn = true;
  DrawScaled(context, scale, [&] {
    for (auto const& layer : document.Layers()) {
      if (!layer->settings.visible) continue;
      layer->objects.ForEach([&](DocumentObject const& object) {
        if (!goesOn) return;
        DrawObject(object, context, object.brush, object.pen);
        if (progress == nullptr || ++count % kProgressStep != 0) return;
        goesOn = progress->Step(static_cast<double>(count) / static_cast<double>(document.ObjectCount()));
      });
    }
  });
  return goesOn;
}

void DrawObjects(Document const& document, AGContext const& context, double scale, AGRect const& area) {
  DrawScaled(context, scale, [&] {
    for (auto const& layer : document.Layers()) {
      if (!layer->settings.visible) continue;
      layer->objects.ForEachIn(
          area, [&context](DocumentObject const& object) { DrawObject(object, context, object.brush, object.pen); });
    }
  });
}

}  // namespace host
