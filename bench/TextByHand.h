// pango and cairo used by hand, as the benchmarks of text compare with.
#pragma once

#include <pango/pangocairo.h>

#include <memory>

namespace by_hand {

struct Deleter {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
};
using Cairo = std::unique_ptr<cairo_t, Deleter>;
using Layout = std::unique_ptr<PangoLayout, Deleter>;

/// A bitmap of `side` pixels square, for text without hints.
inline Cairo NewCairo(int side) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side);
  Cairo cairo(cairo_create(surface));
  cairo_surface_destroy(surface);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(cairo.get(), options);
  cairo_font_options_destroy(options);
  return cairo;
}

inline Layout NewLayout(cairo_t* cairo, const char* family, double size) {
  Layout layout(pango_cairo_create_layout(cairo));
  PangoFontDescription* font = pango_font_description_from_string(family);
  pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
  pango_layout_set_font_description(layout.get(), font);
  pango_font_description_free(font);
  return layout;
}

}  // namespace by_hand
