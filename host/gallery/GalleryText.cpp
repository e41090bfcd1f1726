// Text of the gallery.
#include <cmath>
#include <string_view>

#include "host/gallery/Gallery.h"

namespace host {
namespace {

constexpr AGColor kInk{20, 100, 140};
constexpr AGColor kPen{190, 40, 30};
constexpr AGPoint kMiddle{32, 20};

AGFont Font(double size, AGFontStyle style = kAGFontStyleRegular) { return {"DejaVu Sans", size, style}; }

void Draw(AGContext& context, const char* text, const AGFont& font, const AGPoint& point, AGTextAlignment alignment) {
  context.DrawText(text, font, point, kAGAffineTransformIdentity, alignment);
}

// A single line beside a line through its point.
void Aligned(AGContext& context, const char* text, AGTextAlignment alignment) {
  context.pen.SetStyleSolid(AGColor(150, 150, 150), 1, kAGPenSizeModeAbsolute);
  context.DrawSegment({32.5, 0}, {32.5, 48});
  context.pen.SetStyleNone();
  context.brush.SetStyleSolid(kInk);
  Draw(context, text, Font(10), {32.5, 24}, alignment);
}

void Utf16(AGContext& context, std::u16string_view text, double size) {
  AKUniChars units;
  for (const char16_t unit : text) units.Append(unit);
  context.brush.SetStyleSolid(kInk);
  context.DrawUText(units, Font(size), kMiddle, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
}

void Letter(AGContext& context, bool fills, bool strokes) {
  if (fills) context.brush.SetStyleSolid(kInk);
  if (strokes) context.pen.SetStyleSolid(kPen, 1.5, kAGPenSizeModeAbsolute);
  Draw(context, "Ag", Font(36, kAGFontStyleBold), {32, 14}, kAGTextAlignmentCenter);
}

std::vector<GalleryItem> LayoutItems() {
  return {
      {"text-label",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         Draw(context, "Label", Font(18), {6, 18}, kAGTextAlignmentLeft);
       }},
      {"text-left", [](AGContext& context) { Aligned(context, "line", kAGTextAlignmentLeft); }},
      {"text-center", [](AGContext& context) { Aligned(context, "line", kAGTextAlignmentCenter); }},
      {"text-right", [](AGContext& context) { Aligned(context, "line", kAGTextAlignmentRight); }},
      {"text-lines-left", [](AGContext& context) { Aligned(context, "two\nlines", kAGTextAlignmentLeft); }},
      {"text-lines-center", [](AGContext& context) { Aligned(context, "two\nlines", kAGTextAlignmentCenter); }},
      {"text-lines-right", [](AGContext& context) { Aligned(context, "two\nlines", kAGTextAlignmentRight); }},
      {"text-in-rect",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         for (int side = -1; side <= 1; ++side) context.DrawText("ag", Font(11), AGRect{4, 4, 60, 44}, side, side);
       }},
      {"text-strings",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         context.DrawStrings({AKString("one"), AKString("two")}, Font(11), {{20, 30}, {40, 12}},
                             kAGAffineTransformIdentity, kAGTextAlignmentCenter);
       }},
      {"text-right-to-left", [](AGContext& context) { Utf16(context, u"שלום", 18); }},
      {"text-joined", [](AGContext& context) { Utf16(context, u"مرحبا", 18); }},
      {"text-mixed", [](AGContext& context) { Utf16(context, u"a שלום b", 12); }},
      {"text-marks", [](AGContext& context) { Utf16(context, u"e\u0301 a\u030A x\u0323", 18); }},
      {"text-surrogates", [](AGContext& context) { Utf16(context, u"𝔸𝕓 😀", 16); }},
      {"text-ligatures", [](AGContext& context) { Utf16(context, u"flffi", 22); }},
      {"text-turned",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         const AGAffineTransform turn{0.866, 0.5, -0.5, 0.866, 10, 6};
         context.DrawText("turned", Font(13), AGPoint{2, 0}, turn, kAGTextAlignmentLeft);
       }},
  };
}

std::vector<GalleryItem> PaintItems() {
  return {
      {"text-filled", [](AGContext& context) { Letter(context, true, false); }},
      {"text-outlined", [](AGContext& context) { Letter(context, false, true); }},
      {"text-both", [](AGContext& context) { Letter(context, true, true); }},
      {"text-clipped",
       [](AGContext& context) {
         AGPath clip;
         clip.AddEllipseInRect({12, 6, 52, 42}, false);
         context.SetClipPath(clip);
         Letter(context, true, true);
       }},
      {"text-factor-and-alpha",
       [](AGContext& context) {
         context.colorFactor = 1.5;
         context.alpha = 0.5;
         Letter(context, true, true);
       }},
      {"text-aliased",
       [](AGContext& context) {
         context.antialias = false;
         context.brush.SetStyleSolid(kInk);
         Draw(context, "aliased", Font(14), kMiddle, kAGTextAlignmentCenter);
       }},
      {"text-first-colour",
       [](AGContext& context) {
         context.brush.SetStyleLinearGradient(kPen, kAGColorYellow, 0.5, 0);
         Draw(context, "Ag", Font(36), {32, 14}, kAGTextAlignmentCenter);
       }},
      {"text-path-gradient",
       [](AGContext& context) {
         AGPath path;
         path.AddText("Ag", Font(36, kAGFontStyleBold), {32, 14}, kAGTextAlignmentCenter);
         context.brush.SetStyleLinearGradient(kPen, kAGColorYellow, 0.5, 0);
         context.DrawPath(path);
       }},
      {"text-bold",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         Draw(context, "bold", Font(16, kAGFontStyleBold), kMiddle, kAGTextAlignmentCenter);
       }},
      {"text-italic",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         Draw(context, "italic", Font(16, kAGFontStyleItalic), kMiddle, kAGTextAlignmentCenter);
       }},
      {"text-bold-italic",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         Draw(context, "both", Font(16, kAGFontStyleBold | kAGFontStyleItalic), kMiddle, kAGTextAlignmentCenter);
       }},
      {"text-underlined",
       [](AGContext& context) {
         context.brush.SetStyleSolid(kInk);
         Draw(context, "lying", Font(18, kAGFontStyleUnderline), kMiddle, kAGTextAlignmentCenter);
       }},
  };
}

}  // namespace

std::vector<GalleryItem> GalleryText() {
  std::vector<GalleryItem> items = LayoutItems();
  const std::vector<GalleryItem> paints = PaintItems();
  items.insert(items.end(), paints.begin(), paints.end());
  return items;
}

}  // namespace host
