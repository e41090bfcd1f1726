// Pens of the gallery.
#include "graphics/paths/AGPath.h"
#include "host/gallery/Gallery.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

constexpr AGColor kInk{120, 20, 60};

void UsePen(AGContext& context, double size) { context.pen.SetStyleSolid(kInk, size, kAGPenSizeModeAbsolute); }

// A broad line, its ends marked by a thin one through the same points.
void Cap(AGContext& context, AGPenLineCap cap) {
  UsePen(context, 14);
  context.pen.SetLineCap(cap);
  context.DrawSegment({16, 24}, {48, 24});
  context.pen.SetStyleSolid(kAGColorWhite, 1);
  context.pen.SetLineCap(kAGPenLineCapButt);
  context.DrawSegment({16, 24}, {48, 24});
}

void Corner(AGContext& context, AGPenLineJoin join, const AGPoint& tip) {
  UsePen(context, 10);
  context.pen.SetLineJoin(join);
  const AGPoint points[] = {{10, 8}, tip, {tip.x + (tip.x - 10), 8}};
  AGPath path;
  path.AddLines(points, 3, false);
  context.DrawPath(path);
}

void Scaled(AGContext& context, AGPenSizeMode mode, const AGAffineTransform& transform) {
  UsePen(context, 3);
  context.pen.SetSizeMode(mode);
  context.transform = transform;
  context.DrawRect({4, 4, 16, 12});
}

void Nib(AGContext& context, double ratio, double degrees) {
  UsePen(context, 10);
  context.pen.SetRatio(ratio);
  context.pen.SetAngle(degrees * kDegToRad);
  context.DrawEllipseInRect({12, 10, 52, 38});
}

std::vector<GalleryItem> LineItems() {
  return {
      {"cap-butt", [](AGContext& context) { Cap(context, kAGPenLineCapButt); }},
      {"cap-square", [](AGContext& context) { Cap(context, kAGPenLineCapSquare); }},
      {"cap-round", [](AGContext& context) { Cap(context, kAGPenLineCapRound); }},
      {"join-miter",
       [](AGContext& context) {
         Corner(context, kAGPenLineJoinMiter, {32, 34});
       }},
      {"join-bevel",
       [](AGContext& context) {
         Corner(context, kAGPenLineJoinBevel, {32, 34});
       }},
      {"join-round",
       [](AGContext& context) {
         Corner(context, kAGPenLineJoinRound, {32, 34});
       }},
      {"join-miter-limit",
       [](AGContext& context) {
         // The mitre of the left corner is 8 times the width, that of the right one 12 times: only one is drawn.
         UsePen(context, 3);
         context.pen.SetLineJoin(kAGPenLineJoinMiter);
         for (const auto& [x, half] : {std::pair(16.0, 3.78), std::pair(48.0, 2.51)}) {
           const AGPoint points[] = {{x - half, 3}, {x, 33}, {x + half, 3}};
           AGPath path;
           path.AddLines(points, 3, false);
           context.DrawPath(path);
         }
       }},
      {"width-hairline",
       [](AGContext& context) {
         UsePen(context, 0.3);
         context.DrawSegment({4, 4}, {60, 44});
         context.DrawSegment({4, 24.5}, {60, 24.5});
       }},
      {"width-widest",
       [](AGContext& context) {
         UsePen(context, 300);
         context.pen.SetLineCap(kAGPenLineCapRound);
         context.DrawSegment({-30, 24}, {-20, 24});
       }},
      {"width-absolute",
       [](AGContext& context) {
         Scaled(context, kAGPenSizeModeAbsolute, {3, 0, 0, 3, 2, 0});
       }},
      {"width-relative",
       [](AGContext& context) {
         Scaled(context, kAGPenSizeModeRelative, {3, 0, 0, 3, 2, 0});
       }},
      {"width-stretched",
       [](AGContext& context) {
         Scaled(context, kAGPenSizeModeRelative, {3.5, 0, 0, 1, -3, 16});
       }},
  };
}

std::vector<GalleryItem> NibItems() {
  return {
      {"nib-round", [](AGContext& context) { Nib(context, 0.99, 0); }},
      {"nib-0", [](AGContext& context) { Nib(context, 0.2, 0); }},
      {"nib-45", [](AGContext& context) { Nib(context, 0.2, 45); }},
      {"nib-90", [](AGContext& context) { Nib(context, 0.2, 90); }},
      {"nib-150", [](AGContext& context) { Nib(context, 0.4, 150); }},
      {"nib-flat", [](AGContext& context) { Nib(context, 0, 30); }},
      {"nib-turned",
       [](AGContext& context) {
         context.transform = {0.7071, 0.7071, -0.7071, 0.7071, 26.4, -15.6};
         Nib(context, 0.2, 0);
       }},
      {"nib-joins",
       [](AGContext& context) {
         UsePen(context, 8);
         context.pen.SetRatio(0.3);
         context.pen.SetAngle(20 * kDegToRad);
         context.pen.SetLineJoin(kAGPenLineJoinRound);
         context.pen.SetLineCap(kAGPenLineCapRound);
         const AGPoint points[] = {{8, 10}, {22, 38}, {36, 10}, {56, 38}};
         AGPath path;
         path.AddLines(points, 4, false);
         context.DrawPath(path);
       }},
  };
}

std::vector<GalleryItem> PaintItems() {
  return {
      {"pen-pattern",
       [](AGContext& context) {
         UsePen(context, 12);
         AGBrush brush;
         brush.SetStylePattern(kInk, AGColor(255, 220, 160), 50);
         context.pen.SetBrush(brush);
         context.DrawEllipseInRect({12, 10, 52, 38});
       }},
      {"pen-pattern-nib",
       [](AGContext& context) {
         UsePen(context, 16);
         context.pen.SetRatio(0.3);
         AGBrush brush;
         brush.SetStylePattern(kInk, AGColor(255, 220, 160), 50);
         context.pen.SetBrush(brush);
         context.DrawEllipseInRect({12, 10, 52, 38});
       }},
      {"pen-gradient",
       [](AGContext& context) {
         UsePen(context, 8);
         AGBrush brush;
         brush.SetStyleLinearGradient(AGColor(0, 140, 0), kAGColorRed, 0.5, 0);
         context.pen.SetBrush(brush);
         context.DrawRoundedRect({10, 10, 54, 38}, 0.5);
       }},
      {"pen-translucent",
       [](AGContext& context) {
         context.brush.SetStyleSolid(AGColor(255, 200, 0));
         context.pen.SetStyleSolid(AGColor(0, 0, 200, 128), 10, kAGPenSizeModeAbsolute);
         context.DrawRect({12, 12, 52, 36});
       }},
      {"pen-and-brush-alpha",
       [](AGContext& context) {
         context.alpha = 0.5;
         context.brush.SetStyleSolid(AGColor(255, 200, 0));
         UsePen(context, 10);
         context.DrawRect({12, 12, 52, 36});
       }},
      {"pen-factor",
       [](AGContext& context) {
         context.colorFactor = 2;
         UsePen(context, 10);
         context.DrawRect({12, 12, 52, 36});
       }},
  };
}

}  // namespace

std::vector<GalleryItem> GalleryStrokes() {
  std::vector<GalleryItem> items = LineItems();
  for (auto part : {&NibItems, &PaintItems}) {
    const std::vector<GalleryItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

}  // namespace host
