// Groups that are drawn as one.
//
// On a bitmap a group has pixels of its own in the rows of its extent, which clips what is drawn; elsewhere it is a
// group of cairo's.
#include <algorithm>
#include <cmath>
#include <cstdint>
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
  const PixelBox box{whole(std::floor(left), bounds.x0, bounds.x1), whole(std::floor(top), bounds.y0, bounds.y1),
                     whole(std::ceil(right), bounds.x0, bounds.x1), whole(std::ceil(bottom), bounds.y0, bounds.y1)};
  // A pixel stands for none: a group has memory, and a clip that is not empty.
  return box.IsEmpty() ? PixelBox{bounds.x0, bounds.y0, bounds.x0 + 1, bounds.y0 + 1} : box;
}

// Where the first row of a bitmap would be, of which only those from `first` on are there.
unsigned char* RowZero(unsigned char* pixels, std::size_t first, std::size_t bytesPerRow) {
  return reinterpret_cast<unsigned char*>(reinterpret_cast<std::uintptr_t>(pixels) - first * bytesPerRow);
}

// The path of the clip is freed whether there is memory for the clip or not.
void ClipTo(CGContext* context, const PixelBox& box) {
  struct Path {
    CGMutablePathRef items = CGPathCreateMutable();
    Path() = default;
    Path(const Path&) = delete;
    Path& operator=(const Path&) = delete;
    ~Path() { CGPathRelease(items); }
  } path;
  CGPathAddRect(path.items, nullptr, CGRectMake(box.x0, box.y0, box.x1 - box.x0, box.y1 - box.y0));
  platform::PushClip(context, &path.items, {});
}

void BeginOnBitmap(CGContext* context, CGRect extent) {
  const BitmapInfo& whole = *context->bitmap;
  if (context->state.textClip != nullptr) platform::SettleTextClip(context);
  auto group = std::make_unique<Group>();
  group->box = BoxOf(*context, extent);
  group->below = context->bitmap;
  group->clip = context->state.clip;
  const auto first = static_cast<std::size_t>(group->box.y0);
  const auto rows = static_cast<std::size_t>(group->box.y1 - group->box.y0);
  group->pixels.reset(static_cast<unsigned char*>(std::calloc(rows, whole.bytesPerRow)));
  if (group->pixels == nullptr) throw std::bad_alloc();
  group->own = {RowZero(group->pixels.get(), first, whole.bytesPerRow), whole.width, whole.height, whole.bytesPerRow,
                whole.bitmapInfo};
  context->groups.reserve(context->groups.size() + 1);
  ClipTo(context, group->box);
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
  context->state.clip = group.clip;
  const BitmapInfo& info = *context->bitmap;
  const std::size_t alphaByte = info.bitmapInfo == kCGBitmapAlphaFirst ? 0 : 3;
  const auto whole = static_cast<unsigned int>(std::lround(opacity * 255));
  for (int y = group.box.y0; y < group.box.y1; ++y) {
    const std::size_t row = static_cast<std::size_t>(y) * info.bytesPerRow;
    for (int x = group.box.x0; x < group.box.x1; ++x) {
      const std::size_t at = row + static_cast<std::size_t>(x) * kPixelSize;
      Mix(static_cast<const unsigned char*>(group.own.data) + at, static_cast<unsigned char*>(info.data) + at, whole,
          alphaByte);
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
