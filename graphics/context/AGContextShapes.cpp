// The shapes and images of drawing contexts. A shape is a path that goes to the native bridge.
#include <cmath>

#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLow.h"

namespace {

// The rectangle with its smaller coordinates first; false when nothing of it would show.
bool TakeVisibleRect(AGContext const& context, AGRect const& rect, AGRect* normalized) {
  *normalized = rect;
  normalized->Normalize();
  return !normalized->IsEmpty() && context.WouldFillOrStroke();
}

void Draw(AGContext const& context, AGPath const& path, AGAffineTransform const& transform, AGDrawMode mode) {
  AGGraphicsLow::AGContextDrawPath(context, path, transform, mode);
}

}  // namespace

void AGContext::DrawRect(AGRect const& rect) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddRect(normalized, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawRoundedRect(AGRect const& rect, double curvature) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddRoundedRect(normalized, curvature, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawEllipseInRect(AGRect const& rect) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddEllipseInRect(normalized, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawSegment(AGPoint const& from, AGPoint const& to) const {
  if (!WouldStroke()) return;
  AGPath path;
  path.AddSegment(from, to);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeStrokeOnly);
}

void AGContext::DrawLines(AGPointArray const& points, bool close) const {
  DrawLines(points, kAGAffineTransformIdentity, close);
}

void AGContext::DrawLines(AGPointArray const& points, AGAffineTransform const& t, bool close) const {
  AGPath path;
  path.AddLines(points, close);
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawRects(AGRectArray const& rects) const { DrawRects(rects, kAGAffineTransformIdentity); }

void AGContext::DrawRects(AGRectArray const& rects, AGAffineTransform const& t) const {
  AGPath path;
  path.AddRects(rects, false);
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(AGPath const& path) const {
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(AGPath const& path, AGAffineTransform const& t) const {
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(AGPath const& path, AGRect const& rect, bool keepAspect) const {
  if (path.IsEmpty()) return;
  const AGAffineTransform fit = AGGraphicsLow::FitBox(path.GetBoundingBox(), rect, keepAspect);
  Draw(*this, path, fit, kAGDrawModeFillAndStroke);
}

void AGContext::DrawImage(AGImage const& image, AGPoint const& point, AGAffineTransform const& t,
                          AGImageQuality quality) const {
  AGGraphicsLow::AGContextDrawImage(*this, image, point, t, quality);
}

void AGContext::DrawImage(AGImage const& image, AGRect const& rect, bool keepAspect, AGImageQuality quality) const {
  if (image.IsEmpty()) return;
  const AGRect box{0, 0, static_cast<double>(image.Width()), static_cast<double>(image.Height())};
  AGGraphicsLow::AGContextDrawImage(*this, image, kAGNullPoint, AGGraphicsLow::FitBox(box, rect, keepAspect), quality);
}

void AGContext::DrawPicture(AGPicture const& picture, AGAffineTransform const& t, AGImageQuality quality) const {
  if (picture.Kind() == AGPicture::kKindImage) {
    AGGraphicsLow::AGContextDrawImage(*this, picture.Image(), kAGNullPoint, t, quality);
  } else if (picture.Kind() == AGPicture::kKindPath) {
    Draw(*this, picture.Path(), t, kAGDrawModeFillAndStroke);
  }
}

void AGContext::DrawPicture(AGPicture const& picture, AGRect const& rect, bool keepAspect,
                            AGImageQuality quality) const {
  if (picture.Kind() == AGPicture::kKindImage) {
    DrawImage(picture.Image(), rect, keepAspect, quality);
  } else if (picture.Kind() == AGPicture::kKindPath) {
    DrawPath(picture.Path(), rect, keepAspect);
  }
}
