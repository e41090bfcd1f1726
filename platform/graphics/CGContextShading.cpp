// Drawing shadings.
//
// The usual call is "clip to a path, draw the shading". It is drawn as one fill of that path: the innermost clip
// becomes the path, the shading the source, and only the clips around it stay clips. On a bitmap its rows are the
// source; elsewhere a scratch image of the pixels that the path touches is, and on a page a gradient of cairo's own.
#include <algorithm>
#include <cstring>

#include "CoreGraphics/CGContext.h"
#include "platform/graphics/BitmapPaint.h"
#include "platform/graphics/ShadingRows.h"

namespace {

using platform::PixelBox;

// Puts what the shading covers into cairo's path: that of the innermost clip, or the whole target.
bool EmitArea(CGContext* context, cairo_t* cairo, const platform::ClipNode* innermost, PixelBox* box) {
  const PixelBox bounds = context->target->Bounds();
  cairo_new_path(cairo);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  if (innermost == nullptr) {
    cairo_rectangle(cairo, bounds.x0, bounds.y0, bounds.x1 - bounds.x0, bounds.y1 - bounds.y0);
    *box = bounds;
    return true;
  }
  cairo_set_antialias(cairo, innermost->antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  if (!platform::EmitPath(cairo, *innermost->path, bounds, box)) return false;
  *box = platform::WidenBox(*box, 0, bounds);
  return !box->IsEmpty();
}

// A surface of at least a width and a height in `*kept`, made anew where it is too small; null when there is none.
cairo_surface_t* TakeSurface(platform::CairoSurface* kept, cairo_format_t format, int width, int height) {
  if (*kept == nullptr || cairo_image_surface_get_width(kept->get()) < width ||
      cairo_image_surface_get_height(kept->get()) < height) {
    kept->reset(cairo_image_surface_create(format, width, height));
  }
  return cairo_surface_status(kept->get()) == CAIRO_STATUS_SUCCESS ? kept->get() : nullptr;
}

// A scratch image of the box as cairo's source.
bool SetImageSource(CGContext* context, const CGShading& shading, const PixelBox& box) {
  const int width = box.x1 - box.x0;
  const int height = box.y1 - box.y0;
  cairo_surface_t* scratch = TakeSurface(&context->scratch, CAIRO_FORMAT_ARGB32, width, height);
  if (scratch == nullptr) return false;
  const platform::ShadingRows rows(shading, context->UserToDevice(), box, context->state.alpha,
                                   raster::PixelOrder::kBlueFirst);
  cairo_surface_flush(scratch);
  auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(scratch));
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(scratch)) / sizeof(std::uint32_t);
  for (int y = box.y0; y < box.y1; ++y, pixels += stride) rows.Fetch(box.x0, y, width, pixels);
  cairo_surface_mark_dirty(scratch);
  cairo_set_source_surface(context->cairo.get(), scratch, box.x0, box.y0);
  cairo_pattern_set_filter(cairo_get_source(context->cairo.get()), CAIRO_FILTER_NEAREST);
  return true;
}

void DrawThroughCairo(CGContext* context, const CGShading& shading, const platform::ClipNode* innermost,
                      const PixelBox& box) {
  {
    const platform::Scoped around(context->state.clip, innermost != nullptr ? innermost->parent : platform::Clip());
    platform::ApplyClip(context);
  }
  PixelBox area;
  if (!EmitArea(context, context->cairo.get(), innermost, &area)) return;
  const bool hasSource = context->target->SetShadingSource(context, shading) || SetImageSource(context, shading, box);
  if (hasSource) cairo_fill(context->cairo.get());
}

void Draw(CGContext* context, const CGShading& shading) {
  if (!context->CanPaint()) return;
  if (context->state.textClip != nullptr) platform::SettleTextClip(context);
  if (context->bitmap != nullptr) {
    platform::ShadeOnBitmap(context, shading);
    return;
  }
  const platform::Clip whole = context->state.clip;  // keeps the innermost clip alive
  PixelBox box;
  if (!EmitArea(context, context->cairo.get(), whole.get(), &box)) return;
  DrawThroughCairo(context, shading, whole.get(), box);
}

}  // namespace

void CGContextDrawShading(CGContextRef context, CGShadingRef shading) {
  if (context == nullptr || shading == nullptr || !platform::IsInvertible(context->UserToDevice())) return;
  platform::Guarded(context, [context, shading] { Draw(context, *shading); });
}
