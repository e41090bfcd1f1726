// The cairo context of a native context, made when it is first drawn with: a pattern's cell, which is filled with
// pixels, and a bitmap that is only read and written never need one.
#pragma once

#include "platform/graphics/CairoHandles.h"

namespace platform {

/// The state that drawing begins with. cairo's own defaults happen to be these, or not to matter; they are stated so
/// that no release can change them, nor a host whose context it is.
inline void SetUpCairo(cairo_t* cairo) {
  cairo_set_miter_limit(cairo, 10.0);
  cairo_set_tolerance(cairo, 0.1);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  cairo_set_dash(cairo, nullptr, 0, 0);
  cairo_identity_matrix(cairo);
}

class LazyCairo {
 public:
  /// Takes over a context that exists.
  explicit LazyCairo(CairoContext cairo) : cairo_(std::move(cairo)) { SetUpCairo(cairo_.get()); }
  /// Will draw into a surface, which lives longer.
  explicit LazyCairo(cairo_surface_t* surface) : surface_(surface) {}

  cairo_t* get() const {
    if (cairo_ == nullptr) Make();
    return cairo_.get();
  }

 private:
  void Make() const {
    cairo_ = CairoContext(cairo_create(surface_));
    SetUpCairo(cairo_.get());
  }

  cairo_surface_t* surface_ = nullptr;
  mutable CairoContext cairo_;
};

}  // namespace platform
