// Text in many sizes and at many angles, large text and text with emoji, beside pango and cairo used by hand, on
// bitmaps of the same kind and with the same fonts.
//
// A round draws 2,000 labels, 50 texts in turn. By hand a program keeps a layout a size, sets its text and shows it.
#include <cmath>
#include <string>
#include <vector>

#include "bench/Ratio.h"
#include "bench/TextByHand.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "host/Fonts.h"

namespace {

constexpr int kLabels = 2000;
constexpr int kTexts = 50;
constexpr int kSide = 1000;
constexpr const char* kFamily = "DejaVu Sans";

struct Case {
  double firstSize;  // a quarter more from one to the next
  int sizes;
  int angles;
  bool withEmoji;

  double Size(int i) const { return firstSize + 0.25 * (i % sizes); }
  double Angle(int i) const { return 2 * M_PI * (i % angles) / angles; }
  std::u16string Text(int i) const {
    static const std::u16string_view kEmoji[] = {u"😀", u"🎉", u"🚀", u"🍎", u"🐱", u"🌍",
                                                 u"🎸", u"⚽", u"🚲", u"🏠", u"💡", u"📦"};
    std::u16string text = withEmoji ? u"Sale " : u"Point ";
    for (const char digit : std::to_string(100000 + i)) text += static_cast<char16_t>(digit);
    for (int k = 0; withEmoji && k < 6; ++k) text += kEmoji[(i + k) % 12];
    return text;
  }
};

AGPoint PlaceOf(int i) { return {(i * 37) % 700 + 150.0, (i * 71) % 700 + 150.0}; }

void DrawWithKit(benchmark::State& state, const Case& c) {
  const host::Fonts kit;
  const AGBitmap bitmap(kSide, kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  AGContext context = bitmap.GetContextOfBitmap();
  context.brush.SetStyleSolid(kAGColorBlack);
  std::vector<AGFont> fonts;
  for (int i = 0; i < c.sizes; ++i) fonts.emplace_back(kFamily, c.Size(i), kAGFontStyleRegular);
  std::vector<AKUniChars> texts(kTexts);
  for (int i = 0; i < kTexts; ++i) {
    for (const char16_t unit : c.Text(i)) texts[std::size_t(i)].Append(unit);
  }
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      const AGPoint place = PlaceOf(i);
      const AGAffineTransform placed = AGAffineTransformConcat(AGAffineTransformRotation(c.Angle(i)),
                                                               AGAffineTransformTranslation(place.x, place.y));
      context.DrawUText(texts[std::size_t(i % kTexts)], fonts[std::size_t(i % c.sizes)], AGPoint{0, 0}, placed,
                        kAGTextAlignmentLeft);
    }
  }
}

void DrawByHand(benchmark::State& state, const Case& c) {
  const by_hand::Cairo cairo = by_hand::NewCairo(kSide);
  std::vector<by_hand::Layout> layouts;
  for (int i = 0; i < c.sizes; ++i) layouts.push_back(by_hand::NewLayout(cairo.get(), kFamily, c.Size(i)));
  std::vector<std::string> texts;
  for (int i = 0; i < kTexts; ++i) {
    const std::u16string text = c.Text(i);
    gchar* utf8 = g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(text.data()), static_cast<glong>(text.size()),
                                  nullptr, nullptr, nullptr);
    texts.emplace_back(utf8);
    g_free(utf8);
  }
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      PangoLayout* layout = layouts[std::size_t(i % c.sizes)].get();
      const std::string& text = texts[std::size_t(i % kTexts)];
      cairo_save(cairo.get());
      cairo_translate(cairo.get(), PlaceOf(i).x, PlaceOf(i).y);
      if (c.angles > 1) cairo_rotate(cairo.get(), c.Angle(i));
      pango_cairo_update_layout(cairo.get(), layout);
      pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
      pango_cairo_show_layout(cairo.get(), layout);
      cairo_restore(cairo.get());
    }
  }
}

bool Pair(const char* name, double target, const Case& c) {
  return ratio::Pair(
      name, target, [=](benchmark::State& state) { DrawWithKit(state, c); },
      [=](benchmark::State& state) { DrawByHand(state, c); });
}

[[maybe_unused]] const bool registered[] = {
    Pair("2,000 labels in 1 size", 0.5, {12, 1, 1, false}),
    Pair("2,000 labels in 8 sizes in turn", 0.5, {10, 8, 1, false}),
    Pair("2,000 labels in 64 sizes in turn", 1.5, {8, 64, 1, false}),
    Pair("2,000 labels at 360 angles in turn", 1.5, {12, 1, 360, false}),
    Pair("2,000 labels of 200 pixels", 1.5, {200, 1, 1, false}),
    Pair("2,000 labels with six emoji", 2, {12, 1, 1, true}),
    Pair("2,000 labels with six emoji in 16 sizes in turn", 2, {12, 16, 1, true}),
};

}  // namespace
