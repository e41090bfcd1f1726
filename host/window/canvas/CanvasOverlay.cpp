#include "host/window/canvas/CanvasOverlay.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr AGColor kAccent(38, 110, 220);
constexpr AGColor kFaintAccent(38, 110, 220, 150);
constexpr AGColor kGroupColor(200, 90, 200);
constexpr AGColor kSnapColor(230, 60, 110);
constexpr AGColor kTakenColor(220, 50, 40);
constexpr double kMargin = 3;
constexpr double kTakenHandle = 6;  // half the side, in pixels
constexpr double kEnteredGap = 5;   // pixels around a group that was entered

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

AGPointArray Corners(const SelectionFrame& frame, const ViewTransform& view) {
  AGPointArray points;
  for (Handle handle : {Handle::kLowerLeft, Handle::kLowerRight, Handle::kUpperRight, Handle::kUpperLeft}) {
    points.Append(Crisp(frame.PositionOf(handle, view)));
  }
  return points;
}

AGPointArray Corners(const ObjectPlacement& placement, const ViewTransform& view) {
  AGPoint corners[4];
  GetTurnedCorners(placement, corners);
  for (AGPoint& corner : corners) corner = Crisp(view.ToView(corner));
  return {corners, 4};
}

void DrawHandle(AGContext* context, Handle handle, const AGPoint& place, bool isTaken) {
  const AGPoint p = Crisp(place);
  const double h = isTaken ? kTakenHandle : SelectionFrame::kHalfHandle;
  const AGRect box{p.x - h, p.y - h, p.x + h, p.y + h};
  const bool isProperty = PropertyOfHandle(handle) != nullptr;
  const AGColor color = isProperty                    ? AGColor(255, 190, 60)
                        : handle == Handle::kGradient ? AGColor(120, 220, 130)
                                                      : kAGColorWhite;
  context->brush.SetStyleSolid(isTaken ? kTakenColor : color);
  context->pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
  if (handle == Handle::kRotate || isProperty || handle == Handle::kGradient) {
    context->DrawEllipseInRect(box);
  } else {
    context->DrawRect(box);
  }
}

}  // namespace

bool GetOverlayBounds(const Overlay& overlay, const ViewTransform& view, AGRect* bounds) {
  if (overlay.frame.IsEmpty() && overlay.hovered.empty() && !overlay.entered && !overlay.band) return false;
  AGRect box{1e9, 1e9, -1e9, -1e9};
  if (!overlay.frame.IsEmpty()) {
    constexpr double kReach = kTakenHandle + kMargin;
    for (const AGPoint& corner : Corners(overlay.frame, view)) Include(corner, kReach, &box);
    Include(overlay.frame.PositionOf(Handle::kRotate, view), kReach, &box);
  }
  for (const ObjectPlacement& placement : overlay.hovered) {
    for (const AGPoint& corner : Corners(placement, view)) Include(corner, kMargin, &box);
  }
  for (const std::optional<AGRect>& part : {overlay.entered, overlay.band}) {
    if (!part) continue;
    const AGRect shown = ToView(*part, view);
    Include({shown.x0, shown.y0}, kEnteredGap + kMargin, &box);
    Include({shown.x1, shown.y1}, kEnteredGap + kMargin, &box);
  }
  for (const SnapLine& line : overlay.snapLines) {
    Include(view.ToView(line.from), kMargin, &box);
    Include(view.ToView(line.to), kMargin, &box);
  }
  *bounds = box;
  return true;
}

void DrawOverlay(const AGContext& context, const Overlay& overlay, const ViewTransform& view) {
  const SelectionFrame& frame = overlay.frame;
  AGContext copy(context);
  copy.brush.SetStyleNone();
  copy.pen.SetStyleSolid(kFaintAccent, 1, kAGPenSizeModeAbsolute);
  for (const ObjectPlacement& placement : overlay.outlines) copy.DrawLines(Corners(placement, view), true);
  copy.pen.SetStyleSolid(kFaintAccent, 3, kAGPenSizeModeAbsolute);
  for (const ObjectPlacement& placement : overlay.hovered) copy.DrawLines(Corners(placement, view), true);
  if (overlay.entered) {
    const AGRect box = ToView(*overlay.entered, view);
    const AGPoint a = Crisp({box.x0 - kEnteredGap, box.y0 - kEnteredGap});
    const AGPoint b = Crisp({box.x1 + kEnteredGap, box.y1 + kEnteredGap});
    copy.pen.SetStyleSolid(kGroupColor, 1, kAGPenSizeModeAbsolute);
    copy.DrawRect({a.x, a.y, b.x, b.y});
  }
  if (!frame.IsEmpty()) {
    copy.pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
    copy.DrawLines(Corners(frame, view), true);
    copy.DrawSegment(Crisp(frame.PositionOf(Handle::kTop, view)), Crisp(frame.PositionOf(Handle::kRotate, view)));
    for (Handle handle : frame.Handles(view))
      DrawHandle(&copy, handle, frame.PositionOf(handle, view), handle == overlay.taken);
  }
  copy.pen.SetStyleSolid(kSnapColor, 1, kAGPenSizeModeAbsolute);
  for (const SnapLine& line : overlay.snapLines) {
    copy.DrawSegment(Crisp(view.ToView(line.from)), Crisp(view.ToView(line.to)));
  }
  if (overlay.band) {
    const AGRect box = ToView(*overlay.band, view);
    const AGPoint a = Crisp({box.x0, box.y0});
    const AGPoint b = Crisp({box.x1, box.y1});
    copy.brush.SetStyleSolid(AGColor(38, 110, 220, 40));
    copy.pen.SetStyleSolid(kAccent, 1, kAGPenSizeModeAbsolute);
    copy.DrawRect({a.x, a.y, b.x, b.y});
  }
}

}  // namespace host
