// Contexts over a cairo context of the program's own.
//
// The surface is asked what it is: on pages and recordings gradients, text and images stay what they are, elsewhere
// they become pixels, as many as the surface has.
#include <cairo-tee.h>

#include <algorithm>
#include <cmath>

#include "AKPlatform/AKVectorContext.h"
#include "platform/pages/Page.h"

namespace {

using platform::PixelBox;
using platform::SurfaceKind;

SurfaceKind KindOf(cairo_surface_t* surface) {
  switch (cairo_surface_get_type(surface)) {
    case CAIRO_SURFACE_TYPE_PDF:
      return SurfaceKind::kPDF;
    case CAIRO_SURFACE_TYPE_PS:
      return SurfaceKind::kPostScript;
    case CAIRO_SURFACE_TYPE_SVG:
      return SurfaceKind::kSVG;
    case CAIRO_SURFACE_TYPE_RECORDING:
    case CAIRO_SURFACE_TYPE_SCRIPT:
    case CAIRO_SURFACE_TYPE_XML:
      return SurfaceKind::kRecording;
    case CAIRO_SURFACE_TYPE_TEE:
      return KindOf(cairo_tee_surface_index(surface, 0));
    default:
      return SurfaceKind::kPixels;
  }
}

// A group over a page is a recording, but will be part of the page.
SurfaceKind KindOf(cairo_t* cairo) {
  const SurfaceKind whole = KindOf(cairo_get_target(cairo));
  return whole == SurfaceKind::kPixels ? KindOf(cairo_get_group_target(cairo)) : whole;
}

// Borrows the host's context: below everything of the kit's lie the host's clip and matrix, and at the end both are
// again as they were.
class ForeignTarget final : public platform::PlainTarget {
 public:
  explicit ForeignTarget(cairo_t* cairo)
      : cairo_(cairo_reference(cairo)),
        surface_(cairo_surface_reference(cairo_get_group_target(cairo))),
        kind_(KindOf(cairo)) {
    cairo_save(cairo);
    cairo_surface_get_device_scale(surface_.get(), &scaleX_, &scaleY_);
    // Device space counts the surface's own pixels, so that what is made of pixels has as many.
    if (kind_ == SurfaceKind::kPixels) cairo_surface_set_device_scale(surface_.get(), 1, 1);
    cairo_identity_matrix(cairo);
    bounds_ = ClipBounds(cairo);
    cairo_save(cairo);
  }
  ForeignTarget(const ForeignTarget&) = delete;
  ForeignTarget& operator=(const ForeignTarget&) = delete;
  ~ForeignTarget() override {
    cairo_new_path(cairo_.get());
    cairo_restore(cairo_.get());
    if (kind_ == SurfaceKind::kPixels) cairo_surface_set_device_scale(surface_.get(), scaleX_, scaleY_);
    cairo_restore(cairo_.get());
  }

  PixelBox Bounds() const override { return bounds_; }
  SurfaceKind Kind() const override { return kind_; }
  // cairo can only narrow a clip or drop it whole, the host's too.
  void ResetClip(cairo_t* cairo) const override {
    cairo_restore(cairo);
    cairo_save(cairo);
    platform::SetUpCairo(cairo);
  }

  /// From the host's device units to device space.
  CGAffineTransform UnitsToDevice() const {
    return kind_ == SurfaceKind::kPixels ? CGAffineTransform{scaleX_, 0, 0, scaleY_, 0, 0} : CGAffineTransformIdentity;
  }

 private:
  // A recording may have no bounds at all; cairo's numbers have.
  static PixelBox ClipBounds(cairo_t* cairo) {
    const double farthest = 60000;
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    cairo_clip_extents(cairo, &x0, &y0, &x1, &y1);
    const auto whole = [=](double value) { return static_cast<int>(std::clamp(value, -farthest, farthest)); };
    return {whole(std::floor(x0)), whole(std::floor(y0)), whole(std::ceil(x1)), whole(std::ceil(y1))};
  }

  platform::CairoContext cairo_;
  platform::CairoSurface surface_;
  SurfaceKind kind_;
  double scaleX_ = 1;
  double scaleY_ = 1;
  PixelBox bounds_;
};

}  // namespace

CGContextRef CGContextCreateOverCairo(struct _cairo* cairo, CGFloat width, CGFloat height) {
  if (cairo == nullptr || cairo_status(cairo) != CAIRO_STATUS_SUCCESS || !(width > 0) || !(height > 0)) return nullptr;
  cairo_matrix_t m;
  cairo_get_matrix(cairo, &m);
  auto target = std::make_unique<ForeignTarget>(cairo);
  const CGAffineTransform hostToDevice =
      CGAffineTransformConcat({m.xx, m.yx, m.xy, m.yy, m.x0, m.y0}, target->UnitsToDevice());
  return new CGContext(platform::CairoContext(cairo_reference(cairo)), std::move(target),
                       CGAffineTransformConcat({1, 0, 0, -1, 0, height}, hostToDevice));
}
