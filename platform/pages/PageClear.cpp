// Clearing pages.
//
// cairo forgets what was drawn before it is asked to clear everything. Any other clearing makes it turn what is there
// into pixels, of an SVG page all; so it is not asked where there is nothing to clear.
#include <algorithm>
#include <cmath>

#include "platform/pages/Page.h"

namespace platform {
namespace {

// Whole units stand for a page of a fractional size: up to one of them may lie between the edges.
constexpr int kSlack = 1;

// The pixels that an upright rectangle touches, cut to the target; false for one that is turned.
bool GetBox(const CGContext& context, CGRect rect, PixelBox* box) {
  const CGAffineTransform m = context.UserToDevice();
  if (m.b != 0 || m.c != 0 || !IsInvertible(m)) return false;
  const CGPoint p = CGPointApplyAffineTransform(rect.origin, m);
  const CGPoint q{p.x + m.a * rect.size.width, p.y + m.d * rect.size.height};
  const PixelBox bounds = context.target->Bounds();
  const auto inside = [](double value, int low, int high) {
    return static_cast<int>(std::clamp(value, static_cast<double>(low), static_cast<double>(high)));
  };
  *box = {inside(std::floor(std::min(p.x, q.x)), bounds.x0, bounds.x1),
          inside(std::floor(std::min(p.y, q.y)), bounds.y0, bounds.y1),
          inside(std::ceil(std::max(p.x, q.x)), bounds.x0, bounds.x1),
          inside(std::ceil(std::max(p.y, q.y)), bounds.y0, bounds.y1)};
  return true;
}

bool CoversTarget(const PixelBox& box, const PixelBox& bounds) {
  return box.x0 <= bounds.x0 + kSlack && box.x1 >= bounds.x1 - kSlack && box.y0 <= bounds.y0 + kSlack &&
         box.y1 >= bounds.y1 - kSlack;
}

bool IsBlank(const CGContext& context, const PixelBox& box) {
  if (box.IsEmpty()) return true;
  const CairoSurface backdrop = BackdropOf(context, box, 1);
  if (backdrop == nullptr) return false;
  cairo_surface_flush(backdrop.get());
  const unsigned char* bytes = cairo_image_surface_get_data(backdrop.get());
  const std::size_t count = static_cast<std::size_t>(cairo_image_surface_get_stride(backdrop.get())) *
                            static_cast<std::size_t>(cairo_image_surface_get_height(backdrop.get()));
  return std::all_of(bytes, bytes + count, [](unsigned char byte) { return byte == 0; });
}

}  // namespace

bool ClearPage(CGContext* context, CGRect rect) {
  PixelBox box;
  if (!GetBox(*context, rect, &box)) return false;
  const bool isClipped = context->state.clip != nullptr || context->state.textClip != nullptr;
  if (isClipped || !CoversTarget(box, context->target->Bounds())) return IsBlank(*context, box);
  cairo_t* cairo = context->cairo.get();
  ApplyClip(context);
  cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
  cairo_paint(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  return true;
}

}  // namespace platform
