#include "host/pictures/DocumentDrawing.h"

#include "AKPlatform/AKDashes.h"
#include "AKPlatform/AKGroup.h"
#include "CoreGraphics/CGContext.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/labels/LabelDrawing.h"
#include "host/pictures/MemoryWatch.h"
#include "host/tables/SlotCall.h"

namespace host {
namespace {

constexpr std::size_t kProgressStep = 256;  // objects

// A box with its diagonals, so that nobody takes it for a drawn rectangle.
void DrawPlaceholder(const DocumentObject& object, const AGContext& context) {
  AGContext copy(context);
  copy.brush.SetStyleNone();
  copy.pen.SetStyleSolid(AGColor(128, 128, 128), 1.0, kAGPenSizeModeAbsolute);
  AGPoint corners[4];
  GetTurnedCorners(object.Placement(), corners);
  copy.DrawLines(AGPointArray(corners, 4), true);
  copy.DrawSegment(corners[0], corners[2]);
  copy.DrawSegment(corners[1], corners[3]);
}

// Mirrors what is drawn in a scope about a point.
class FlipScope {
 public:
  FlipScope(const AGContext& context, const ObjectLook& look, const AGPoint& middle)
      : port_(look.IsFlipped() ? context.NativePort() : nullptr) {
    CGContextSaveGState(port_);
    const double sx = look.flippedX ? -1 : 1;
    const double sy = look.flippedY ? -1 : 1;
    CGContextConcatCTM(port_, {sx, 0, 0, sy, middle.x * (1 - sx), middle.y * (1 - sy)});
  }
  FlipScope(const FlipScope&) = delete;
  FlipScope& operator=(const FlipScope&) = delete;
  ~FlipScope() { CGContextRestoreGState(port_); }

 private:
  CGContextRef port_;  // null: nothing is mirrored
};

int DrawDashed(const DocumentObject& object, const AGContext& context) {
  const std::vector<double>& dashes = object.marks.look.dashes;
  if (dashes.empty()) return DrawObject(object, context, object.brush, object.pen);
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  CGContextSetDashes(port, dashes.data(), dashes.size());
  const int status = DrawObject(object, context, object.brush, object.pen);
  CGContextRestoreGState(port);
  return status;
}

// What the class draws, and the label above it.
int DrawWhole(const DocumentObject& object, const AGContext& context) {
  const int status = DrawDashed(object, context);
  if (object.marks.label != nullptr) DrawLabel(object, context);
  return status;
}

template <typename Draw>
void DrawScaled(const AGContext& context, double scale, Draw draw) {
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  CGContextConcatCTM(port, {scale, 0, 0, scale, 0, 0});
  draw();
  CGContextRestoreGState(port);
}

}  // namespace

int DrawObject(const DocumentObject& object, const AGContext& context, const AGBrush& brush, const AGPen& pen) {
  if (object.IsPlaceholder()) {
    DrawPlaceholder(object, context);
    return 0;
  }
  const AKClass& cls = *object.instance->Class();
  if (!HasSlot(cls, kAKMethodDraw)) return 0;
  const ObjectLook& look = object.marks.look;
  AKDrawEvent event;
  event.bounds = object.bounds;
  event.angle = look.flippedX == look.flippedY ? object.angle : -object.angle;
  event.recommendedBrush = &brush;
  event.recommendedPen = &pen;
  const FlipScope flip(context, look, object.bounds.Center());
  return CallSlot<int, const AGContext&, const AKDrawEvent&>(cls, kAKMethodDraw, object.instance.get(), context, event);
}

int DrawObject(const DocumentObject& object, const AGContext& context) {
  const ObjectLook& look = object.marks.look;
  if (look.opacity == 1) return DrawWhole(object, context);
  const AGRect box = PaintedBox(object);
  const CGRect extent = CGRectMake(box.x0, box.y0, box.x1 - box.x0, box.y1 - box.y0);
  const bool isGroup = look.opacity > 0 && CGContextBeginGroup(context.NativePort(), extent);
  if (!isGroup) return 0;
  const int status = DrawWhole(object, context);
  CGContextEndGroup(context.NativePort(), look.opacity);
  return status;
}

bool DrawObjects(const Document& document, const AGContext& context, double scale, Progress* progress,
                 UndrawnObject* undrawn, const DrawnObjects& drawn) {
  std::size_t count = 0;
  bool goesOn = true;
  DrawScaled(context, scale, [&] {
    for (const Layer* layer : document.Layers()) {
      if (!layer->settings.visible) continue;
      layer->objects.ForEach([&](const DocumentObject& object) {
        if (!goesOn || object.marks.hidden || (drawn && !drawn(object))) return;
        const int status = DrawObject(object, context);
        MemoryWatch::Look();
        if (status != 0 && undrawn != nullptr && undrawn->status == 0) *undrawn = {object.id, status};
        if (progress == nullptr || ++count % kProgressStep != 0) return;
        goesOn = progress->Step(static_cast<double>(count) / static_cast<double>(document.ObjectCount()));
      });
    }
  });
  return goesOn;
}

void DrawObjects(const Document& document, const AGContext& context, double scale, const AGRect& area,
                 const DrawnObjects& drawn) {
  DrawScaled(context, scale, [&] {
    for (const Layer* layer : document.Layers()) {
      if (!layer->settings.visible) continue;
      layer->objects.ForEachIn(area, [&](const DocumentObject& object) {
        if (!object.marks.hidden && (!drawn || drawn(object))) DrawObject(object, context);
      });
    }
  });
}

std::size_t CountObjects(const Document& document, const AGRect& area) {
  std::size_t count = 0;
  for (const Layer* layer : document.Layers()) {
    if (layer->settings.visible) layer->objects.ForEachIn(area, [&count](const DocumentObject&) { ++count; });
  }
  return count;
}

}  // namespace host
