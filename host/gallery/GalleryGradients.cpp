// Gradients of the gallery.
#include "host/gallery/Gallery.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

constexpr AGRect kBox{4, 4, 60, 44};
constexpr AGColor kFrom{255, 60, 0};
constexpr AGColor kTo{0, 60, 255};

void Linear(AGContext& context, double blend, double degrees) {
  context.brush.SetStyleLinearGradient(kFrom, kTo, blend, degrees * kDegToRad);
  context.DrawRect(kBox);
}

void Radial(AGContext& context, double blend, double x, double y, const AGRect& box = kBox) {
  context.brush.SetStyleRadialGradient(kFrom, kTo, blend, x, y);
  context.DrawRect(box);
}

ATBrushCustomGradient<double> Stops(const std::vector<double>& factors, const std::vector<double>& positions) {
  ATBrushCustomGradient<double> gradient;
  gradient.SetFactors(factors.data(), positions.data(), static_cast<unsigned int>(factors.size()));
  return gradient;
}

void CustomLinear(AGContext& context, const ATBrushCustomGradient<double>& gradient) {
  context.brush.SetStyleLinearGradient(kFrom, kTo, gradient, 0);
  context.DrawRect(kBox);
}

std::vector<GalleryItem> LinearItems() {
  return {
      {"linear-0", [](AGContext& context) { Linear(context, 0.5, 0); }},
      {"linear-45", [](AGContext& context) { Linear(context, 0.5, 45); }},
      {"linear-90", [](AGContext& context) { Linear(context, 0.5, 90); }},
      {"linear-180", [](AGContext& context) { Linear(context, 0.5, 180); }},
      {"linear-290", [](AGContext& context) { Linear(context, 0.5, 290); }},
      {"linear-blend-15", [](AGContext& context) { Linear(context, 0.15, 0); }},
      {"linear-blend-85", [](AGContext& context) { Linear(context, 0.85, 0); }},
      {"linear-to-clear",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kAGColorBlack);
         context.DrawRect({0, 18, 64, 30});
         context.brush.SetStyleLinearGradient(kFrom, AGColor(0, 60, 255, 0), 0.5, 0);
         context.DrawRect(kBox);
       }},
      {"linear-alpha",
       [](AGContext& context) {
         context.alpha = 0.3;
         Linear(context, 0.5, 0);
       }},
      {"linear-factor",
       [](AGContext& context) {
         context.colorFactor = 0.4;
         Linear(context, 0.5, 0);
       }},
      {"linear-turned",
       [](AGContext& context) {
         context.transform = {0.6, 0.6, -0.6, 0.6, 27.2, -9.6};
         Linear(context, 0.5, 0);
       }},
      {"linear-rounded",
       [](AGContext& context) {
         context.brush.SetStyleLinearGradient(kFrom, kTo, 0.5, 60 * kDegToRad);
         context.DrawRoundedRect(kBox, 0.8);
       }},
  };
}

std::vector<GalleryItem> RadialItems() {
  return {
      {"radial", [](AGContext& context) { Radial(context, 0.5, 0.5, 0.5); }},
      {"radial-top-left", [](AGContext& context) { Radial(context, 0.5, 0.2, 0.2); }},
      {"radial-corner", [](AGContext& context) { Radial(context, 0.5, 1, 1); }},
      {"radial-blend-15", [](AGContext& context) { Radial(context, 0.15, 0.5, 0.5); }},
      {"radial-blend-85", [](AGContext& context) { Radial(context, 0.85, 0.5, 0.5); }},
      {"radial-wide",
       [](AGContext& context) {
         Radial(context, 0.5, 0.5, 0.5, {2, 18, 62, 30});
       }},
      {"radial-tall",
       [](AGContext& context) {
         Radial(context, 0.5, 0.5, 0.5, {26, 2, 38, 46});
       }},
      {"radial-ellipse",
       [](AGContext& context) {
         context.brush.SetStyleRadialGradient(kAGColorWhite, kTo, 0.5, 0.35, 0.3);
         context.DrawEllipseInRect(kBox);
       }},
      {"radial-turned",
       [](AGContext& context) {
         context.transform = {0.6, 0.6, -0.6, 0.6, 27.2, -9.6};
         Radial(context, 0.5, 0.5, 0.5, {4, 14, 60, 34});
       }},
      {"radial-to-clear",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kAGColorBlack);
         context.DrawRect({0, 18, 64, 30});
         context.brush.SetStyleRadialGradient(kFrom, AGColor(255, 60, 0, 0), 0.5, 0.5, 0.5);
         context.DrawRect(kBox);
       }},
  };
}

std::vector<GalleryItem> CustomItems() {
  return {
      {"custom-waves",
       [](AGContext& context) {
         CustomLinear(context, Stops({0, 1, 0, 1, 0}, {0, 0.25, 0.5, 0.75, 1}));
       }},
      {"custom-gap",
       [](AGContext& context) {
         CustomLinear(context, Stops({1, 1}, {0.2, 0.6}));
       }},
      {"custom-out-of-order",
       [](AGContext& context) {
         CustomLinear(context, Stops({1, 1, 0.5, 0.5}, {0.6, 0.9, 0.1, 0.4}));
       }},
      {"custom-one-stop", [](AGContext& context) { CustomLinear(context, Stops({1}, {0.2})); }},
      {"custom-bounds",
       [](AGContext& context) {
         // The middle half of the box: colour 1 to the left of it, colour 2 to the right.
         ATBrushCustomGradient<double> gradient = Stops({0, 1}, {0, 1});
         gradient.SetBounds({18, 4, 46, 44});
         CustomLinear(context, gradient);
       }},
      {"custom-radial",
       [](AGContext& context) {
         context.brush.SetStyleRadialGradient(kFrom, kTo, Stops({0, 1, 0, 1}, {0, 0.3, 0.6, 1}), 0.5, 0.5);
         context.DrawRect(kBox);
       }},
  };
}

}  // namespace

std::vector<GalleryItem> GalleryGradients() {
  std::vector<GalleryItem> items = LinearItems();
  for (auto part : {&RadialItems, &CustomItems}) {
    const std::vector<GalleryItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

}  // namespace host
