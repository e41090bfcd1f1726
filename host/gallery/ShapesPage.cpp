#include "host/gallery/ShapesPage.h"

#include <cmath>

#include "graphics/context/AGContext.h"
#include "host/gallery/StrokeFont.h"
#include "host/pictures/MemoryWatch.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

constexpr unsigned int kColumns = 7;
constexpr unsigned int kCellWidth = 180;
constexpr unsigned int kCellHeight = 170;
constexpr double kScale = 1.4;
constexpr double kMargin = 20;
constexpr double kLabelHeight = 8;

const AGPointArray kWave = {{10, 20}, {30, 70}, {55, 15}, {70, 65}, {90, 30}, {95, 60}, {80, 10}};

void AddTurned(AGPath& path, double angle) {
  AGPath leaf;
  leaf.AddArc(AGRect{-30, -8, 30, 8}, 0, k2Pi);
  path.AddPath(leaf, AGAffineTransformConcat(AGAffineTransformRotation(angle), AGAffineTransformTranslation(50, 40)));
}

std::vector<ShapeItem> LineItems() {
  return {
      {"start-add line",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddLine({50, 70});
         p.AddLine({90, 20});
       }},
      {"add segment",
       [](AGPath& p) {
         p.AddSegment({10, 10}, {90, 70});
         p.AddSegment({10, 70}, {90, 10});
       }},
      {"add lines open", [](AGPath& p) { p.AddLines(kWave, false); }},
      {"add lines closed", [](AGPath& p) { p.AddLines(kWave, true); }},
      {"quad bezier",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddQuadBezier({50, 80}, {90, 10});
       }},
      {"cubic bezier",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddCubicBezier({100, 80}, {0, 80}, {90, 10});
       }},
      {"quad beziers", [](AGPath& p) { p.AddQuadBeziers(kWave, false); }},
      {"cubic beziers", [](AGPath& p) { p.AddCubicBeziers(kWave, true); }},
      {"spline 5 percent", [](AGPath& p) { p.AddSplineCurves(kWave, 0.05, false); }},
      {"spline 50 percent", [](AGPath& p) { p.AddSplineCurves(kWave, 0.5, false); }},
      {"spline closed", [](AGPath& p) { p.AddSplineCurves(kWave, 0.8, true); }},
  };
}

std::vector<ShapeItem> ArcItems() {
  return {
      {"tangent arc",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddArc(AGPoint{50, 75}, AGPoint{90, 10}, 14);
         p.AddLine({90, 10});
       }},
      {"tangent arc-no fit",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddArc(AGPoint{50, 40}, AGPoint{90, 70}, 14);
         p.AddLine({90, 10});
       }},
      {"arc anticlockwise",
       [](AGPath& p) {
         p.AddArc(AGPoint{50, 40}, 35, kPi / 3, kPi * 4 / 3);
       }},
      {"arc clockwise",
       [](AGPath& p) {
         p.AddArc(AGPoint{50, 40}, 35, kPi / 3, -kPi / 2);
       }},
      {"arc joined",
       [](AGPath& p) {
         p.StartSubPath({10, 10});
         p.AddArc(AGPoint{60, 40}, 30, kPi, -kPi);
       }},
      {"arc 540 degrees",
       [](AGPath& p) {
         p.AddArc(AGPoint{50, 40}, 35, 0, 3 * kPi);
       }},
      {"elliptical arc",
       [](AGPath& p) {
         p.AddArc(AGPoint{50, 40}, AGSize{40, 20}, 0.5, 4.5);
       }},
      {"arc in rect",
       [](AGPath& p) {
         p.AddArc(AGRect{5, 20, 95, 60}, kPi / 2, kPi);
       }},
  };
}

std::vector<ShapeItem> ShapeAndPathItems() {
  return {
      {"rect",
       [](AGPath& p) {
         p.AddRect({10, 10, 90, 70}, false);
       }},
      {"rect mirrored",
       [](AGPath& p) {
         p.AddRect({90, 70, 10, 10}, false);
       }},
      {"rects",
       [](AGPath& p) {
         p.AddRects({{10, 10, 70, 50}, {30, 30, 90, 70}}, true);
       }},
      {"rounded rect half",
       [](AGPath& p) {
         p.AddRoundedRect({10, 15, 90, 65}, 0.5, false);
       }},
      {"rounded rect full",
       [](AGPath& p) {
         p.AddRoundedRect({10, 15, 90, 65}, 1, false);
       }},
      {"ellipse in rect",
       [](AGPath& p) {
         p.AddEllipseInRect({10, 15, 90, 65}, false);
       }},
      {"path with map",
       [](AGPath& p) {
         for (int i = 0; i < 3; ++i) AddTurned(p, i * kPi / 3);
       }},
      {"apply transform",
       [](AGPath& p) {
         p.AddRoundedRect({0, 0, 60, 30}, 0.5, false);
         p.ApplyTransform({0.9, 0.5, -0.5, 0.9, 30, 10});
       }},
      {"put in bounds",
       [](AGPath& p) {
         p.AddCubicBeziers(kWave, false);
         p.PutInBounds({10, 10, 90, 70}, true);
       }},
  };
}

void StrokeBox(AGContext& context, const AGRect& box, AGColor color) {
  context.pen.SetStyleSolid(color, 0.8, kAGPenSizeModeAbsolute);
  context.DrawRect(box);
}

void DrawItem(AGContext context, const ShapeItem& item, double left, double bottom) {
  AGPath path;
  item.build(path);
  context.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
  DrawStrokeText(context, item.name, {left, bottom - 1.5 * kLabelHeight}, kLabelHeight);
  context.transform = {kScale, 0, 0, kScale, left, bottom};
  context.brush.SetStyleSolid(AGColor(205, 228, 205));
  context.pen.SetStyleSolid(AGColor(0, 90, 45), 1.5, kAGPenSizeModeAbsolute);
  context.DrawPath(path);
  context.brush.SetStyleNone();
  StrokeBox(context, path.GetBoundingBox(), AGColor(60, 90, 230));
  StrokeBox(context, path.GetFlattenedBoundingBox(), AGColor(220, 50, 50));
  context.pen.SetStyleNone();
  context.brush.SetStyleSolid(kAGColorBlack);
  const AGPoint& origin = path.Origin();
  context.DrawEllipseInRect({origin.x - 2, origin.y - 2, origin.x + 2, origin.y + 2});
}

}  // namespace

std::vector<ShapeItem> ShapeItems() {
  std::vector<ShapeItem> items;
  for (auto part : {&LineItems, &ArcItems, &ShapeAndPathItems}) {
    const std::vector<ShapeItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

std::unique_ptr<AGBitmap> DrawShapesPage() {
  const std::vector<ShapeItem> items = ShapeItems();
  const unsigned int rows = (static_cast<unsigned int>(items.size()) + kColumns - 1) / kColumns;
  auto page = std::make_unique<AGBitmap>(kColumns * kCellWidth, rows * kCellHeight, 0U);
  if (!page->IsOpen()) return page;
  AGContext context = page->GetContextOfBitmap();
  context.ClearPixels(kAGColorWhite);
  for (unsigned int i = 0; i < items.size(); ++i) {
    const unsigned int column = i % kColumns, row = i / kColumns;
    const double bottom = page->Height() - (row + 1.0) * kCellHeight + kMargin + kLabelHeight;
    DrawItem(context, items[i], column * kCellWidth + kMargin, bottom);
    MemoryWatch::Look();
  }
  return page;
}

}  // namespace host
