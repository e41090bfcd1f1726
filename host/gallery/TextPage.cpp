#include "host/gallery/TextPage.h"

#include <cmath>
#include <string_view>

#include "CoreGraphics/CGContext.h"
#include "host/pictures/MemoryWatch.h"

namespace host {
namespace {

constexpr unsigned int kColumns = 4;
constexpr double kMargin = 12;
constexpr double kLabelHeight = 14;
constexpr const char* kFamily = "DejaVu Sans";
constexpr AGColor kInk{20, 60, 120};
constexpr AGColor kPen{190, 40, 30};
constexpr AGPoint kMiddle{kTextItemWidth / 2, 40};

AKUniChars Utf16(std::u16string_view text) {
  AKUniChars units;
  for (const char16_t unit : text) units.Append(unit);
  return units;
}

AGFont Font(double size, AGFontStyle style = kAGFontStyleRegular) { return {kFamily, size, style}; }

// A line where the point of the text is.
void DrawGuide(AGContext context, double x) {
  context.pen.SetStyleSolid(AGColor(160, 200, 160), 1, kAGPenSizeModeAbsolute);
  context.DrawSegment({x, 4}, {x, 80});
}

void Aligned(AGContext& context, const char* text, AGTextAlignment alignment) {
  const double x = alignment == kAGTextAlignmentLeft ? 30 : alignment == kAGTextAlignmentRight ? 210 : 120;
  DrawGuide(context, x);
  context.brush.SetStyleSolid(kInk);
  context.DrawText(text, Font(20), AGPoint{x, 50}, kAGAffineTransformIdentity, alignment);
}

void Centered(AGContext& context, const AKUniChars& text, const AGFont& font) {
  context.brush.SetStyleSolid(kInk);
  context.DrawUText(text, font, kMiddle, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
}

std::vector<TextItem> AlignmentItems() {
  return {
      {"left", [](AGContext& c) { Aligned(c, "One line", kAGTextAlignmentLeft); }},
      {"centre", [](AGContext& c) { Aligned(c, "One line", kAGTextAlignmentCenter); }},
      {"right", [](AGContext& c) { Aligned(c, "One line", kAGTextAlignmentRight); }},
      {"in a rectangle: all nine",
       [](AGContext& c) {
         const AGRect box{30, 6, 210, 76};
         c.pen.SetStyleSolid(AGColor(160, 200, 160), 1, kAGPenSizeModeAbsolute);
         c.DrawRect(box);
         c.pen.SetStyleNone();
         c.brush.SetStyleSolid(kInk);
         for (int h = -1; h <= 1; ++h) {
           for (int v = -1; v <= 1; ++v) c.DrawText("Apg", Font(14), box, h, v);
         }
       }},
      {"frame, left", [](AGContext& c) { Aligned(c, "First line\nsecond\nand third", kAGTextAlignmentLeft); }},
      {"frame, centre", [](AGContext& c) { Aligned(c, "First line\nsecond\nand third", kAGTextAlignmentCenter); }},
      {"frame, right", [](AGContext& c) { Aligned(c, "First line\nsecond\nand third", kAGTextAlignmentRight); }},
      {"strings at points of their own",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         c.DrawStrings({AKString("one"), AKString("two"), AKString("three")}, Font(16),
                       {{60, 60}, {120, 40}, {180, 20}}, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
       }},
  };
}

std::vector<TextItem> ScriptItems() {
  return {
      {"right to left", [](AGContext& c) { Centered(c, Utf16(u"שלום עולם (2026)"), Font(20)); }},
      {"joined letters", [](AGContext& c) { Centered(c, Utf16(u"مرحبا بالعالم"), Font(20)); }},
      {"mixed directions", [](AGContext& c) { Centered(c, Utf16(u"The word שלום means peace"), Font(15)); }},
      {"combining marks", [](AGContext& c) { Centered(c, Utf16(u"e\u0301 a\u030A n\u0303 x\u0323\u0302"), Font(24)); }},
      {"surrogate pairs", [](AGContext& c) { Centered(c, Utf16(u"𝔸𝕓𝕔 𝟙𝟚𝟛 𝛼 and 😀"), Font(20)); }},
      {"ligatures", [](AGContext& c) { Centered(c, Utf16(u"office fluffy file"), Font(22)); }},
      {"glyphs of other fonts",
       [](AGContext& c) { Centered(c, Utf16(u"Serif שלום ∰ 日本"), AGFont("DejaVu Serif", 18, 0)); }},
      {"8-bit Roman text",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         c.DrawText(
             "\x8E"
             "clair \xA9 \xDB 5 \xB1 1",
             Font(20), kMiddle, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
       }},
  };
}

void SetPaint(AGContext& context, bool fills, bool strokes) {
  if (fills) context.brush.SetStyleSolid(AGColor(240, 190, 60));
  if (strokes) context.pen.SetStyleSolid(kPen, 1.5, kAGPenSizeModeAbsolute);
}

void Painted(AGContext& context, bool fills, bool strokes) {
  SetPaint(context, fills, strokes);
  context.DrawText("Paint", Font(56, kAGFontStyleBold), AGPoint{kMiddle.x, 24}, kAGAffineTransformIdentity,
                   kAGTextAlignmentCenter);
}

std::vector<TextItem> PaintItems() {
  return {
      {"filled", [](AGContext& c) { Painted(c, true, false); }},
      {"outlined", [](AGContext& c) { Painted(c, false, true); }},
      {"both", [](AGContext& c) { Painted(c, true, true); }},
      {"both, clipped",
       [](AGContext& c) {
         AGPath clip;
         clip.AddEllipseInRect({40, 8, 200, 76}, false);
         c.SetClipPath(clip);
         Painted(c, true, true);
       }},
      {"styles",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         c.DrawText("Bold", Font(18, kAGFontStyleBold), AGPoint{20, 52}, kAGAffineTransformIdentity, 1);
         c.DrawText("italic", Font(18, kAGFontStyleItalic), AGPoint{100, 52}, kAGAffineTransformIdentity, 1);
         c.DrawText("both", Font(18, kAGFontStyleBold | kAGFontStyleItalic), AGPoint{170, 52},
                    kAGAffineTransformIdentity, 1);
         c.DrawText("underlined", Font(18, kAGFontStyleUnderline), AGPoint{20, 20}, kAGAffineTransformIdentity, 1);
         SetPaint(c, false, true);
         c.brush.SetStyleNone();
         c.pen.SetSize(0.5);
         c.DrawText("outlined", Font(18, kAGFontStyleUnderline), AGPoint{140, 20}, kAGAffineTransformIdentity, 1);
       }},
      {"outlines as a path, gradient",
       [](AGContext& c) {
         AGPath path;
         path.AddText("Path", Font(56, kAGFontStyleBold), {kMiddle.x, 24}, kAGTextAlignmentCenter);
         c.brush.SetStyleLinearGradient(kAGColorYellow, kPen, 0.5, 1.2);
         c.pen.SetStyleSolid(kInk, 1, kAGPenSizeModeAbsolute);
         c.DrawPath(path);
       }},
  };
}

// Text on a port whose y axis points down, through a transform that turns it up again.
void DrawOnPortWithYDown(AGContext& context) {
  CGContextRef port = context.NativePort();
  CGContextSaveGState(port);
  const AGAffineTransform& t = context.transform;
  CGContextConcatCTM(port, {1, 0, 0, -1, 0, 2 * t.ty});
  context.transform = {t.a, t.b, t.c, -t.d, t.tx, t.ty};
  context.brush.SetStyleSolid(kInk);
  context.DrawText("Upright", Font(28), kMiddle, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
  CGContextRestoreGState(port);
}

std::vector<TextItem> PlaceItems() {
  return {
      {"y axis of the port up",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         c.DrawText("Upright", Font(28), kMiddle, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
       }},
      {"y axis of the port down", &DrawOnPortWithYDown},
      {"turned",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         for (const double angle : {-0.3, 0.0, 0.3}) {
           const AGAffineTransform turn =
               AGAffineTransformConcat(AGAffineTransformRotation(angle), AGAffineTransformTranslation(20, 40));
           c.DrawText("turned about a point", Font(11), AGPoint{40, -4}, turn, kAGTextAlignmentLeft);
         }
       }},
      {"sizes",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kInk);
         double y = 76;
         for (const double size : {6, 8, 10, 12, 14}) {
           y -= size * 1.3;
           c.DrawText("Hamburgefonstiv 0123456789", Font(size), AGPoint{8, y}, kAGAffineTransformIdentity, 1);
         }
       }},
  };
}

}  // namespace

std::vector<TextItem> TextItems() {
  std::vector<TextItem> items;
  for (auto part : {&AlignmentItems, &ScriptItems, &PaintItems, &PlaceItems}) {
    const std::vector<TextItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

AGSize TextPageSize() {
  const auto count = static_cast<unsigned int>(TextItems().size());
  const unsigned int rows = (count + kColumns - 1) / kColumns;
  return {kMargin + kColumns * (kTextItemWidth + kMargin), kMargin + rows * (kTextItemHeight + kMargin)};
}

void DrawTextPage(AGContext context) {
  const std::vector<TextItem> items = TextItems();
  const AGSize size = TextPageSize();
  context.brush.SetStyleSolid(kAGColorWhite);
  context.DrawRect({0, 0, size.width, size.height});
  for (unsigned int i = 0; i < items.size(); ++i) {
    AGContext cell(context);
    const unsigned int column = i % kColumns;
    const unsigned int row = i / kColumns;
    const double left = kMargin + column * (kTextItemWidth + kMargin);
    const double bottom = size.height - (row + 1) * (kTextItemHeight + kMargin);
    cell.transform = AGAffineTransformConcat(AGAffineTransformTranslation(left, bottom), context.transform);
    cell.brush.SetStyleSolid(AGColor(242, 242, 242));
    cell.DrawRect({0, 0, kTextItemWidth, kTextItemHeight});
    cell.brush.SetStyleSolid(AGColor(110, 110, 110));
    cell.DrawText(items[i].name, Font(9), AGPoint{4, kTextItemHeight - kLabelHeight + 4}, kAGAffineTransformIdentity,
                  1);
    cell.brush.SetStyleNone();
    items[i].draw(cell);
    MemoryWatch::Look();
  }
}

}  // namespace host
