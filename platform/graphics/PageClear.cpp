// Clearing pages.
#include <algorithm>
#include <cmath>

#include "platform/graphics/Page.h"

namespace platform {
namespace {

// Whole units stand for a page of a fractional size: up to one of them may lie between the edges.
constexpr double kSlack = 1;

bool CoversTarget(const CGContext& context, CGRect rect) {
  const CGAffineTransform m = context.UserToDevice();
  if (m.b != 0 || m.c != 0) return false;
  const CGPoint p = CGPointApplyAffineTransform(rect.origin, m);
  const CGPoint q{p.x + m.a * rect.size.width, p.y + m.d * rect.size.height};
  const PixelBox bounds = context.target->Bounds();
  return std::min(p.x, q.x) <= bounds.x0 + kSlack && std::max(p.x, q.x) >= bounds.x1 - kSlack &&
         std::min(p.y, q.y) <= bounds.y0 + kSlack && std::max(p.y, q.y) >= bounds.y1 - kSlack;
}

}  // namespace

// cairo forgets what was drawn before it is asked to clear everything. Any other clearing makes it turn the page into
// pixels.
bool ClearPage(CGContext* context, CGRect rect) {
  const bool isClipped = context->state.clip != nullptr || context->state.textClip != nullptr;
  if (isClipped || !CoversTarget(*context, rect)) return false;
  cairo_t* cairo = context->cairo.get();
  ApplyClip(context);
  cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
  cairo_paint(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  return true;
}

}  // namespace platform
