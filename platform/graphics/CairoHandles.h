// Owning handles of the cairo objects that the native layer uses.
#pragma once

#include <cairo.h>

#include <memory>

namespace platform {

struct CairoDeleter {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};

using CairoContext = std::unique_ptr<cairo_t, CairoDeleter>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoDeleter>;

/// The state that drawing begins with. cairo's own defaults happen to be these, or not to matter; they are stated so
/// that no release can change them, nor a host whose context it is.
inline void SetUpCairo(cairo_t* cairo) {
  cairo_set_miter_limit(cairo, 10.0);
  cairo_set_tolerance(cairo, 0.1);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  cairo_set_dash(cairo, nullptr, 0, 0);
  cairo_identity_matrix(cairo);
}

}  // namespace platform
