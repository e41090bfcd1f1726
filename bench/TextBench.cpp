// Text beside pango and cairo used by hand, on bitmaps of the same kind and with the same font.
//
// A round draws 10,000 short labels. Distinct labels carry a number that never comes again in the process; repeated
// ones are 50 texts in turn. By hand a program keeps one layout, sets its text and shows it.
#include <string>

#include "bench/Ratio.h"
#include "bench/TextByHand.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "host/Fonts.h"

namespace {

using by_hand::Cairo;
using by_hand::Layout;

constexpr int kLabels = 10000;
constexpr int kSide = 1000;
constexpr double kSize = 12;
constexpr const char* kFamily = "DejaVu Sans";

Cairo NewCairo() { return by_hand::NewCairo(kSide); }
Layout NewLayout(cairo_t* cairo) { return by_hand::NewLayout(cairo, kFamily, kSize); }

// The text of label `i` of a round.
using Labels = std::string (*)(int i);

std::string Distinct(int) {
  static unsigned int number = 0;
  return "Point " + std::to_string(++number) + "a";
}

std::string Repeated(int i) { return "Point " + std::to_string(100000 + i % 50) + "b"; }

AGPoint PlaceOf(int i) { return {(i * 37) % 900 + 5.0, (i * 71) % 960 + 20.0}; }

void DrawWithKit(benchmark::State& state, Labels labels) {
  const host::Fonts fonts;
  const AGBitmap bitmap(kSide, kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  AGContext context = bitmap.GetContextOfBitmap();
  context.brush.SetStyleSolid(kAGColorBlack);
  const AGFont font(kFamily, kSize, kAGFontStyleRegular);
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      context.DrawText(AKString(labels(i)), font, PlaceOf(i), kAGAffineTransformIdentity, kAGTextAlignmentLeft);
    }
  }
}

void DrawByHand(benchmark::State& state, Labels labels) {
  const Cairo cairo = NewCairo();
  const Layout layout = NewLayout(cairo.get());
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      const std::string label = labels(i);
      const AGPoint place = PlaceOf(i);
      pango_layout_set_text(layout.get(), label.data(), static_cast<int>(label.size()));
      cairo_move_to(cairo.get(), place.x, place.y);
      pango_cairo_show_layout(cairo.get(), layout.get());
    }
  }
}

void OutlineWithKit(benchmark::State& state, Labels labels) {
  const host::Fonts fonts;
  const AGFont font(kFamily, kSize, kAGFontStyleRegular);
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      AGPath path;
      path.AddText(AKString(labels(i)), font, PlaceOf(i), kAGTextAlignmentLeft);
      benchmark::DoNotOptimize(path.IsEmpty());
    }
  }
}

void OutlineWithCairo(benchmark::State& state, Labels labels) {
  const Cairo cairo = NewCairo();
  cairo_select_font_face(cairo.get(), kFamily, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cairo.get(), kSize);
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      const AGPoint place = PlaceOf(i);
      cairo_new_path(cairo.get());
      cairo_move_to(cairo.get(), place.x, place.y);
      cairo_text_path(cairo.get(), labels(i).c_str());
    }
  }
}

void OutlineWithPango(benchmark::State& state, Labels labels) {
  const Cairo cairo = NewCairo();
  const Layout layout = NewLayout(cairo.get());
  for (auto _ : state) {
    for (int i = 0; i < kLabels; ++i) {
      const std::string label = labels(i);
      const AGPoint place = PlaceOf(i);
      cairo_new_path(cairo.get());
      cairo_move_to(cairo.get(), place.x, place.y);
      pango_layout_set_text(layout.get(), label.data(), static_cast<int>(label.size()));
      pango_cairo_layout_path(cairo.get(), layout.get());
    }
  }
}

ratio::Body With(void (*body)(benchmark::State&, Labels), Labels labels) {
  return [=](benchmark::State& state) { body(state, labels); };
}

[[maybe_unused]] const bool registered[] = {
    ratio::Pair("10,000 distinct labels", 1.1, With(&DrawWithKit, &Distinct), With(&DrawByHand, &Distinct)),
    ratio::Pair("10,000 repeated labels", 0.5, With(&DrawWithKit, &Repeated), With(&DrawByHand, &Repeated)),
    ratio::Pair("AddText of repeated labels, cairo's text path", 1.0, With(&OutlineWithKit, &Repeated),
                With(&OutlineWithCairo, &Repeated)),
    ratio::Pair("AddText of distinct labels, pango's layout path", 1.0, With(&OutlineWithKit, &Distinct),
                With(&OutlineWithPango, &Distinct)),
};

}  // namespace
