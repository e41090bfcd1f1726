#include "host/window/canvas/CanvasOverlay.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr AGColor kAccent(38, 110, 220);
constexpr double kMargin = 3;

AGPointArray Corners(const SelectionFrame& frame, const ViewTransform& view) {
  AGPointArray points;
  for (Handle handle : {Handle::kLowerLeft, Handle::kLowerRight, Handle::kUpperRight, Handle::kUpperLeft}) {
    points.Append(frame.PositionOf(handle, view));
  }
  return points;
}

AGRect ToView(const AGRect& map, const ViewTransform& view) {
  const AGPoint a = view.ToView({map.x0, map.y0});
  const AGPoint b = view.ToView({map.x1, map.y1});
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

void Include(const AGPoint& point, double reach, AGRect* box) {
  box->x0 = std::min(box->x0, point.x - reach);
  box->y0 = std::min(box->y0, point.y - reach);
  box->x1 = std::max(box->x1, point.x + reach);
  box->y1 = std::max(box->y1, point.y + reach);
}

// Lines in the middle of pixels.
AGPoint Crisp(const AGPoint& point) { return {std::floor(point.x) + 0.5, std::floor(point.y) + 0.5}; }

void DrawHandle(AGContext* context, Handle handle, const AGPoint& place) {
  const AGPoint p = Crisp(place);
  const double h = SelectionFrame::kHalfHandle;
  const AGRect box{p.x - h, p.y - h, p.x + h, p.y + h};
  const bool isProperty = PropertyOfHandle(handle) != nullptr;
  const AGColor color = isProperty                    ? AGColor(255, 190, 60)
                        : handle == Handle::kGradient ? AGColor(120, 220, 130)
                                                      : kAGColorWhite;
  context->brush.SetStyleSolid(color);
  context->pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
  if (handle == Handle::kRotate || isProperty || handle == Handle::kGradient) {
    context->DrawEllipseInRect(box);
  } else {
    context->DrawRect(box);
  }
}

}  // namespace

bool GetOverlayBounds(const SelectionFrame& frame, const std::optional<AGRect>& band, const ViewTransform& view,
                      AGRect* bounds) {
  if (frame.IsEmpty() && !band) return false;
  AGRect box{1e9, 1e9, -1e9, -1e9};
  if (!frame.IsEmpty()) {
    for (const AGPoint& corner : Corners(frame, view)) Include(corner, SelectionFrame::kHalfHandle + kMargin, &box);
    Include(frame.PositionOf(Handle::kRotate, view), SelectionFrame::kHalfHandle + kMargin, &box);
  }
  if (band) {
    const AGRect part = ToView(*band, view);
    Include({part.x0, part.y0}, kMargin, &box);
    Include({part.x1, part.y1}, kMargin, &box);
  }
  *bounds = box;
  return true;
}

void DrawOverlay(const AGContext& context, const SelectionFrame& frame, const std::optional<AGRect>& band,
                 const ViewTransform& view) {
  AGContext copy(context);
  if (!frame.IsEmpty()) {
    AGPointArray corners = Corners(frame, view);
    for (unsigned int i = 0; i < corners.Count(); ++i) corners[i] = Crisp(corners[i]);
    copy.brush.SetStyleNone();
    copy.pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
    copy.DrawLines(corners, true);
    copy.DrawSegment(Crisp(frame.PositionOf(Handle::kTop, view)), Crisp(frame.PositionOf(Handle::kRotate, view)));
    for (Handle handle : frame.Handles(view)) DrawHandle(&copy, handle, frame.PositionOf(handle, view));
  }
  if (band) {
    const AGRect box = ToView(*band, view);
    const AGPoint a = Crisp({box.x0, box.y0});
    const AGPoint b = Crisp({box.x1, box.y1});
    copy.brush.SetStyleSolid(AGColor(38, 110, 220, 40));
    copy.pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
    copy.DrawRect({a.x, a.y, b.x, b.y});
  }
}

}  // namespace host
