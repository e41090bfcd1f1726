#include "platform/text/TextEngine.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <cerrno>
#include <cstring>

namespace platform {
namespace {

// Pango warns where it can't make a scaled font, and draws without it. Who looks for the trace that refused memory
// leaves finds it: cairo keeps the failure, so that no allocation need have left one this time.
void NoteMissingFont(const char* domain, GLogLevelFlags level, const char* message, void* data) {
  g_log_default_handler(domain, level, message, data);
  if (std::strstr(message, "scaled font") != nullptr) errno = ENOMEM;
}

PangoContext* NewContext() {
  g_log_set_handler("Pango", G_LOG_LEVEL_WARNING, &NoteMissingFont, nullptr);
  PangoFontMap* map = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
  if (map == nullptr) return nullptr;
  PangoContext* context = pango_font_map_create_context(map);
  g_object_unref(map);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context, FALSE);
  return context;
}

}  // namespace

PangoContext* TextContext() {
  static PangoContext* const context = NewContext();
  return context;
}

}  // namespace platform
