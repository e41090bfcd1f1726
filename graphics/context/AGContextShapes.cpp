// The shapes and images of drawing contexts. A shape is a path that goes to the native bridge.
#include <cmath>

#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLow.h"

namespace {

// The rectangle with its smaller coordinates first; false when nothing of it would show.
bool TakeVisibleRect(const AGContext& context, const AGRect& rect, AGRect* normalized) {
  *normalized = rect;
  normalized->Normalize();
  return !normalized->IsEmpty() && context.WouldFillOrStroke();
}

void Draw(const AGContext& context, const AGPath& path, const AGAffineTransform& transform, AGDrawMode mode) {
  AGGraphicsLow::AGContextDrawPath(context, path, transform, mode);
}

}  // namespace

void AGContext::DrawRect(const AGRect& rect) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddRect(normalized, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawRoundedRect(const AGRect& rect, double curvature) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddRoundedRect(normalized, curvature, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawEllipseInRect(const AGRect& rect) const {
  AGRect normalized;
  if (!TakeVisibleRect(*this, rect, &normalized)) return;
  AGPath path;
  path.AddEllipseInRect(normalized, false);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawSegment(const AGPoint& from, const AGPoint& to) const {
  if (!WouldStroke()) return;
  AGPath path;
  path.AddSegment(from, to);
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeStrokeOnly);
}

void AGContext::DrawLines(const AGPointArray& points, bool close) const {
  DrawLines(points, kAGAffineTransformIdentity, close);
}

void AGContext::DrawLines(const AGPointArray& points, const AGAffineTransform& t, bool close) const {
  AGPath path;
  path.AddLines(points, close);
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawRects(const AGRectArray& rects) const { DrawRects(rects, kAGAffineTransformIdentity); }

void AGContext::DrawRects(const AGRectArray& rects, const AGAffineTransform& t) const {
  AGPath path;
  path.AddRects(rects, false);
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(const AGPath& path) const {
  Draw(*this, path, kAGAffineTransformIdentity, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(const AGPath& path, const AGAffineTransform& t) const {
  Draw(*this, path, t, kAGDrawModeFillAndStroke);
}

void AGContext::DrawPath(const AGPath& path, const AGRect& rect, bool keepAspect) const {
  if (path.IsEmpty()) return;
  const AGAffineTransform fit = AGGraphicsLow::FitBox(path.GetBoundingBox(), rect, keepAspect);
  Draw(*this, path, fit, kAGDrawModeFillAndStroke);
}

void AGContext::DrawImage(const AGImage& image, const AGPoint& point, const AGAffineTransform& t,
                          AGImageQuality quality) const {
  AGGraphicsLow::AGContextDrawImage(*this, image, point, t, quality);
}

void AGContext::DrawImage(const AGImage& image, const AGRect& rect, bool keepAspect, AGImageQuality quality) const {
  if (image.IsEmpty()) return;
  const AGRect box{0, 0, static_cast<double>(image.Width()), static_cast<double>(image.Height())};
  AGGraphicsLow::AGContextDrawImage(*this, image, kAGNullPoint, AGGraphicsLow::FitBox(box, rect, keepAspect), quality);
}

void AGContext::DrawPicture(const AGPicture& picture, const AGAffineTransform& t, AGImageQuality quality) const {
  if (picture.Kind() == AGPicture::kKindImage) {
    AGGraphicsLow::AGContextDrawImage(*this, picture.Image(), kAGNullPoint, t, quality);
  } else if (picture.Kind() == AGPicture::kKindPath) {
    Draw(*this, picture.Path(), t, kAGDrawModeFillAndStroke);
  }
}

void AGContext::DrawPicture(const AGPicture& picture, const AGRect& rect, bool keepAspect,
                            AGImageQuality quality) const {
  if (picture.Kind() == AGPicture::kKindImage) {
    DrawImage(picture.Image(), rect, keepAspect, quality);
  } else if (picture.Kind() == AGPicture::kKindPath) {
    DrawPath(picture.Path(), rect, keepAspect);
  }
}
