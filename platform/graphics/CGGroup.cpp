// Groups that are drawn as one.
//
// On a bitmap a group has pixels of its own, as many as the bitmap, of which the memory is only taken where something
// is drawn; elsewhere it is a group of cairo's.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

#include "AKPlatform/AKGroup.h"
#include "AKPlatform/AKPixelOrder.h"
#include "platform/graphics/CGContextState.h"

namespace {

using platform::Group;
using platform::PixelBox;

constexpr std::size_t kPixelSize = 4;

PixelBox BoxOf(const CGContext& context, CGRect extent) {
  const PixelBox bounds = context.target->Bounds();
  const CGAffineTransform m = context.UserToDevice();
  const double x1 = extent.origin.x + extent.size.width;
  const double y1 = extent.origin.y + extent.size.height;
  double left = INFINITY, right = -INFINITY, top = INFINITY, bottom = -INFINITY;
  for (const CGPoint corner : {extent.origin, CGPoint{x1, extent.origin.y}, CGPoint{x1, y1}, {extent.origin.x, y1}}) {
    const CGPoint p = CGPointApplyAffineTransform(corner, m);
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  const auto whole = [](double value, int least, int most) {
    return static_cast<int>(std::clamp(value, static_cast<double>(least), static_cast<double>(most)));
  };
  return {whole(std::floor(left), bounds.x0, bounds.x1), whole(std::floor(top), bounds.y0, bounds.y1),
          whole(std::ceil(right), bounds.x0, bounds.x1), whole(std::ceil(bottom), bounds.y0, bounds.y1)};
}

void BeginOnBitmap(CGContext* context, CGRect extent) {
  const BitmapInfo& whole = *context->bitmap;
  auto group = std::make_unique<Group>();
  group->box = BoxOf(*context, extent);
  group->below = context->bitmap;
  group->pixels.reset(static_cast<unsigned char*>(std::calloc(whole.height, whole.bytesPerRow)));
  if (group->pixels == nullptr) throw std::bad_alloc();
  group->own = {group->pixels.get(), whole.width, whole.height, whole.bytesPerRow, whole.bitmapInfo};
  context->groups.push_back(std::move(group));
  context->bitmap = &context->groups.back()->own;
}

unsigned int Product(unsigned int a, unsigned int b) { return (a * b + 127) / 255; }

// Pixels are premultiplied.
void Mix(const unsigned char* from, unsigned char* to, unsigned int opacity, std::size_t alphaByte) {
  if (from[alphaByte] == 0) return;
  const unsigned int rest = 255 - Product(from[alphaByte], opacity);
  for (std::size_t i = 0; i < kPixelSize; ++i) {
    to[i] = static_cast<unsigned char>(std::min(Product(from[i], opacity) + Product(to[i], rest), 255u));
  }
}

void EndOnBitmap(CGContext* context, const Group& group, double opacity) {
  context->bitmap = group.below;
  const BitmapInfo& info = *context->bitmap;
  const std::size_t alphaByte = info.bitmapInfo == kCGBitmapAlphaFirst ? 0 : 3;
  const auto whole = static_cast<unsigned int>(std::lround(opacity * 255));
  for (int y = group.box.y0; y < group.box.y1; ++y) {
    const std::size_t row = static_cast<std::size_t>(y) * info.bytesPerRow;
    for (int x = group.box.x0; x < group.box.x1; ++x) {
      const std::size_t at = row + static_cast<std::size_t>(x) * kPixelSize;
      Mix(group.pixels.get() + at, static_cast<unsigned char*>(info.data) + at, whole, alphaByte);
    }
  }
}

// A clip that is taken off within the group may take what cairo keeps with it: there is one more of that.
void BeginOnCairo(CGContext* context) {
  auto group = std::make_unique<Group>();
  platform::ApplyClip(context);
  group->clip = context->appliedClip;
  context->groups.push_back(std::move(group));
  cairo_push_group(context->cairo.get());
  cairo_save(context->cairo.get());
}

void EndOnCairo(CGContext* context, Group* group, double opacity) {
  cairo_t* const cairo = context->cairo.get();
  cairo_restore(cairo);
  cairo_pop_group_to_source(cairo);
  cairo_paint_with_alpha(cairo, opacity);
  cairo_set_source_rgba(cairo, 0, 0, 0, 1);  // the group's picture is not kept
  context->appliedClip = std::move(group->clip);
}

}  // namespace

bool CGContextBeginGroup(CGContextRef context, CGRect extent) {
  if (context == nullptr || !context->HasState()) return false;
  return platform::Guarded(
      context, [&] { context->bitmap != nullptr ? BeginOnBitmap(context, extent) : BeginOnCairo(context); });
}

void CGContextEndGroup(CGContextRef context, CGFloat opacity) {
  if (context == nullptr || context->groups.empty()) return;
  const std::unique_ptr<Group> group = std::move(context->groups.back());
  context->groups.pop_back();
  const double inside = opacity > 0 ? std::min(opacity, 1.0) : 0;
  context->bitmap != nullptr ? EndOnBitmap(context, *group, inside) : EndOnCairo(context, group.get(), inside);
}
