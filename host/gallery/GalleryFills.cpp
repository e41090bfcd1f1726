// Solid fills, fill rules and patterns of the gallery.
#include "graphics/paths/AGPath.h"
#include "host/gallery/Gallery.h"

namespace host {
namespace {

constexpr AGRect kBox{6, 6, 58, 42};
constexpr AGColor kInk{20, 40, 120};
constexpr AGColor kPaper{255, 230, 120};

// Something below, for what is translucent.
void DrawBar(AGContext context) {
  context.alpha = 1;
  context.colorFactor = 1;
  context.transform = kAGAffineTransformIdentity;
  context.brush.SetStyleSolid(kAGColorBlack);
  context.DrawRect({0, 18, 64, 30});
}

// Five corners joined across: a star whose middle is wound twice.
AGPath Star() {
  const AGPoint corners[] = {{32, 46}, {45.5, 4.6}, {10.3, 30.2}, {53.7, 30.2}, {18.5, 4.6}};
  AGPath path;
  path.AddLines(corners, 5, true);
  return path;
}

void FillPattern(AGContext& context, unsigned int index) {
  context.brush.SetStylePattern(kInk, kPaper, index);
  context.DrawRect(kBox);
}

void SolidFactor(AGContext& context, double factor) {
  context.brush.SetStyleSolid(AGColor(200, 120, 40));
  context.DrawRect({6, 6, 32, 42});
  context.colorFactor = factor;
  context.DrawRect({32, 6, 58, 42});
}

}  // namespace

std::vector<GalleryItem> GalleryFills() {
  return {
      {"solid",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kAGColorRed);
         context.DrawRect(kBox);
       }},
      {"solid-translucent",
       [](AGContext& context) {
         DrawBar(context);
         context.brush.SetStyleSolid(AGColor(0, 160, 255, 128));
         context.DrawRect(kBox);
       }},
      {"solid-context-alpha",
       [](AGContext& context) {
         DrawBar(context);
         context.alpha = 0.25;
         context.brush.SetStyleSolid(AGColor(0, 160, 255));
         context.DrawRect(kBox);
       }},
      {"solid-between-pixels",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kAGColorBlack);
         context.DrawRect({6.5, 6.25, 58.5, 42.75});
       }},
      {"solid-factor-half", [](AGContext& context) { SolidFactor(context, 0.5); }},
      {"solid-factor-double", [](AGContext& context) { SolidFactor(context, 2); }},
      {"rule-even-odd",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         context.DrawPath(Star());
       }},
      {"rule-winding",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         context.brush.SetFillMode(kAGBrushFillWinding);
         context.DrawPath(Star());
       }},
      {"pattern-3", [](AGContext& context) { FillPattern(context, 3); }},
      {"pattern-13", [](AGContext& context) { FillPattern(context, 13); }},
      {"pattern-24", [](AGContext& context) { FillPattern(context, 24); }},
      {"pattern-36", [](AGContext& context) { FillPattern(context, 36); }},
      {"pattern-41", [](AGContext& context) { FillPattern(context, 41); }},
      {"pattern-48", [](AGContext& context) { FillPattern(context, 48); }},
      {"pattern-53", [](AGContext& context) { FillPattern(context, 53); }},
      {"pattern-53-phase",
       [](AGContext& context) {
         context.patternOrigin = {3, 5};
         FillPattern(context, 53);
       }},
      {"pattern-turned",
       [](AGContext& context) {
         context.transform = {0.8, 0.6, -0.6, 0.8, 20.8, -14.4};
         FillPattern(context, 5);
       }},
      {"pattern-scaled",
       [](AGContext& context) {
         context.transform = {0.5, 0, 0, 2, 16, -24};
         FillPattern(context, 5);
       }},
      {"pattern-clear-paper",
       [](AGContext& context) {
         DrawBar(context);
         context.brush.SetStylePattern(AGColor(255, 0, 0, 160), kAGNullColor, 51);
         context.DrawRect(kBox);
       }},
      {"pattern-alpha",
       [](AGContext& context) {
         DrawBar(context);
         context.alpha = 0.5;
         FillPattern(context, 51);
       }},
      {"pattern-factor",
       [](AGContext& context) {
         context.colorFactor = 0.6;
         FillPattern(context, 51);
       }},
      {"pattern-ellipse",
       [](AGContext& context) {
         context.brush.SetStylePattern(kInk, kPaper, 49);
         context.DrawEllipseInRect(kBox);
       }},
  };
}

}  // namespace host
