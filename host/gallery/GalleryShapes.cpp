// Shapes of the gallery, and what is drawn without antialiasing or not at all.
#include "graphics/paths/AGPath.h"
#include "host/gallery/Gallery.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

constexpr AGRect kBox{6, 8, 58, 40};
constexpr AGPoint kZigzag[] = {{6, 10}, {18, 40}, {30, 12}, {42, 42}, {58, 8}};

void UseBoth(AGContext& context) {
  context.brush.SetStyleSolid(AGColor(170, 220, 170));
  context.pen.SetStyleSolid(AGColor(0, 80, 40), 2, kAGPenSizeModeAbsolute);
}

void Rounded(AGContext& context, double curvature) {
  UseBoth(context);
  context.DrawRoundedRect(kBox, curvature);
}

void Spline(AGContext& context, double tension, bool close) {
  UseBoth(context);
  AGPath path;
  path.AddSplineCurves(kZigzag, 5, tension, close);
  context.DrawPath(path);
}

// Green where something is drawn as it should be, so that an empty picture means something.
void DrawMark(AGContext context) {
  context = AGContext(context.NativePort(), context.Size());
  context.brush.SetStyleSolid(kAGColorGreen);
  context.DrawRect({0, 0, 4, 4});
}

std::vector<GalleryItem> RectangleItems() {
  return {
      {"rounded-2", [](AGContext& context) { Rounded(context, 0.02); }},
      {"rounded-25", [](AGContext& context) { Rounded(context, 0.25); }},
      {"rounded-50", [](AGContext& context) { Rounded(context, 0.5); }},
      {"rounded-100", [](AGContext& context) { Rounded(context, 1); }},
      {"rounded-turned",
       [](AGContext& context) {
         context.transform = {0.866, 0.5, -0.5, 0.866, 16.29, -12.78};
         Rounded(context, 0.6);
       }},
      {"rects-crossing",
       [](AGContext& context) {
         UseBoth(context);
         AGRectArray rects;
         rects.Append({6, 6, 40, 30});
         rects.Append({58, 42, 24, 18});
         context.DrawRects(rects);
       }},
      {"lines-closed",
       [](AGContext& context) {
         UseBoth(context);
         AGPointArray points;
         for (const AGPoint& point : kZigzag) points.Append(point);
         context.DrawLines(points, true);
       }},
      {"fit-aspect",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.AddEllipseInRect({0, 0, 10, 20}, false);
         context.DrawPath(path, {4, 4, 60, 44}, true);
       }},
      {"fit-stretched",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.AddEllipseInRect({0, 0, 10, 20}, false);
         context.DrawPath(path, {4, 4, 60, 44}, false);
       }},
  };
}

std::vector<GalleryItem> CurveItems() {
  return {
      {"ellipse",
       [](AGContext& context) {
         UseBoth(context);
         context.DrawEllipseInRect(kBox);
       }},
      {"arc-circle",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.AddArc({32, 24}, 18, 30 * kDegToRad, 300 * kDegToRad);
         context.DrawPath(path);
       }},
      {"arc-backwards",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.StartSubPath({32, 24});
         path.AddArc({32, 24}, 18, 30 * kDegToRad, -90 * kDegToRad);
         context.DrawPath(path);
       }},
      {"arc-elliptical",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.AddArc(kBox, 45 * kDegToRad, 225 * kDegToRad);
         context.DrawPath(path);
       }},
      {"arc-tangent",
       [](AGContext& context) {
         UseBoth(context);
         AGPath path;
         path.StartSubPath({8, 8});
         path.AddArc({56, 8}, {56, 44}, 16);
         path.AddLine({56, 44});
         context.DrawPath(path);
       }},
      {"spline-open", [](AGContext& context) { Spline(context, 1, false); }},
      {"spline-closed", [](AGContext& context) { Spline(context, 1, true); }},
      {"spline-tight", [](AGContext& context) { Spline(context, 0.4, false); }},
      {"spline-straight", [](AGContext& context) { Spline(context, 0.05, false); }},
      {"bezier-quadratic",
       [](AGContext& context) {
         UseBoth(context);
         const AGPoint points[] = {{6, 8}, {32, 72}, {58, 8}};
         AGPath path;
         path.AddQuadBeziers(points, 3, false);
         context.DrawPath(path);
       }},
      {"bezier-cubic-loop",
       [](AGContext& context) {
         UseBoth(context);
         const AGPoint points[] = {{6, 8}, {80, 60}, {-16, 60}, {58, 8}};
         AGPath path;
         path.AddCubicBeziers(points, 4, true);
         context.DrawPath(path);
       }},
  };
}

std::vector<GalleryItem> EdgeItems() {
  return {
      {"aliased",
       [](AGContext& context) {
         context.antialias = false;
         UseBoth(context);
         context.DrawEllipseInRect(kBox);
       }},
      {"aliased-line",
       [](AGContext& context) {
         context.antialias = false;
         UseBoth(context);
         context.DrawSegment({4, 6}, {60, 42});
       }},
      {"fit-of-a-flat-path",
       [](AGContext& context) {
         DrawMark(context);
         UseBoth(context);
         AGPath path;
         path.AddSegment({0, 5}, {10, 5});
         context.DrawPath(path, {4, 4, 60, 44}, true);
       }},
      {"invisible",
       [](AGContext& context) {
         DrawMark(context);
         context.brush.SetStyle(kAGBrushStyleSolid);  // in a colour without alpha
         context.pen.SetStyleSolid(kAGColorRed, 0);
         context.DrawRect(kBox);
         UseBoth(context);
         context.DrawRect({20, 20, 20, 40});
         context.DrawRoundedRect({20, 20, 40, 20}, 0.5);
         context.alpha = 0.0039;
         context.DrawEllipseInRect(kBox);
         context.alpha = 1;
         context.pen.SetStyleNone();
         context.DrawSegment({0, 0}, {64, 48});
         context.DrawPath(AGPath());
       }},
      {"clear-rect",
       [](AGContext& context) {
         context.ClearPixelsRect(AGColor(0, 120, 200, 0), {9.6, 7.4, 90, 30.5});
       }},
  };
}

}  // namespace

std::vector<GalleryItem> GalleryShapes() {
  std::vector<GalleryItem> items = RectangleItems();
  for (auto part : {&CurveItems, &EdgeItems}) {
    const std::vector<GalleryItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

}  // namespace host
