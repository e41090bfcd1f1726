#include "host/document/DocumentDrawing.h"

#include <cstdio>

#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGVectorContext.h"
#include "graphics/AKDrawEvent.h"
#include "graphics/native/AGGraphicsLow.h"
#include "host/document/BitmapPNG.h"
#include "host/document/InstanceCall.h"
#include "host/tables/SlotCall.h"

namespace host {
namespace {

// A box with its diagonals, so that nobody takes it for a drawn rectangle.
void DrawPlaceholder(DocumentObject const& object, AGContext const& context) {
  AGContext copy(context);
  copy.brush.SetStyleNone();
  copy.pen.SetStyleSolid(AGColor(128, 128, 128), 1.0, kAGPenSizeModeAbsolute);
  AGPoint corners[4];
  GetTurnedCorners(object.Placement(), corners);
  copy.DrawLines(ATNumberArray<AGPoint, double, 0>(corners, 4), true);
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

std::string NoPicture(AGSize const& size) {
  char text[128];
  std::snprintf(text, sizeof(text), "can't make a picture of %.6g by %.6g", size.width, size.height);
  return text;
}

bool AppendBytes(void* info, void const* bytes, std::size_t count) {
  auto* file = static_cast<std::vector<unsigned char>*>(info);
  auto const* first = static_cast<unsigned char const*>(bytes);
  file->insert(file->end(), first, first + count);
  return true;
}

bool RenderPage(Document const& document, PictureKind kind, double scale, std::vector<unsigned char>* file,
                std::string* error) {
  const AGSize size{document.Page().width * scale, document.Page().height * scale};
  const auto create = kind == PictureKind::kPDF ? &CGVectorContextCreatePDF : &CGVectorContextCreateSVG;
  CGContextRef page = create(size.width, size.height, &AppendBytes, file);
  if (page == nullptr) {
    *error = NoPicture(size);
    return false;
  }
  const AGContext context(page, size);
  AGGraphicsLow::AGContextClearPixels(context, document.Background(), {0, 0, size.width, size.height});
  DrawObjects(document, context, scale);
  const bool finished = CGVectorContextFinish(page);
  CGContextRelease(page);
  if (!finished) *error = "can't encode the picture";
  return finished;
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

void DrawObjects(Document const& document, AGContext const& context, double scale) {
  DrawScaled(context, scale, [&] {
    for (auto const& layer : document.Layers()) {
      if (!layer->settings.visible) continue;
      layer->objects.ForEach(
          [&context](DocumentObject const& object) { DrawObject(object, context, object.brush, object.pen); });
    }
  });
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

bool PictureKindOf(std::string const& path, PictureKind* kind) {
  const struct {
    const char* extension;
    PictureKind kind;
  } kinds[] = {{".png", PictureKind::kPNG}, {".pdf", PictureKind::kPDF}, {".svg", PictureKind::kSVG}};
  for (auto const& entry : kinds) {
    if (!path.ends_with(entry.extension)) continue;
    *kind = entry.kind;
    return true;
  }
  return false;
}

bool RenderPicture(Document const& document, PictureKind kind, double scale, std::vector<unsigned char>* file,
                   std::string* error) {
  return kind == PictureKind::kPNG ? RenderPNG(document, scale, file, error)
                                   : RenderPage(document, kind, scale, file, error);
}

bool RenderPNG(Document const& document, double scale, std::vector<unsigned char>* png, std::string* error) {
  const AGSize size{document.Page().width * scale, document.Page().height * scale};
  AGBitmap bitmap(size, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  if (!bitmap.IsOpen()) {
    *error = NoPicture(size);
    return false;
  }
  AGContext context = bitmap.GetContextOfBitmap();
  context.ClearPixels(document.Background());
  DrawObjects(document, context, scale);

  if (EncodePNG(bitmap, png)) return true;
  *error = "can't encode the picture";
  return false;
}

}  // namespace host
