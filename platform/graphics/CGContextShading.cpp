// Drawing shadings.
//
// The usual call is "clip to a path, draw the shading". It is drawn as one fill of that path: the innermost clip
// becomes the path, the shading the source, and only the clips around it stay clips. On a bitmap cairo draws the path
// into a mask and the shading's rows are mixed in through it; elsewhere a scratch image of the pixels that the path
// touches is the source, and on a page a gradient of cairo's own.
#include <algorithm>
#include <cstring>

#include "CoreGraphics/CGContext.h"
#include "platform/graphics/CGContextState.h"
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

// Each of the four bytes of a pixel times m / 255, rounded.
std::uint32_t Scale(std::uint32_t pixel, std::uint32_t m) {
  constexpr std::uint32_t kBytes = 0x00FF00FF;
  std::uint32_t low = (pixel & kBytes) * m + 0x00800080;
  std::uint32_t high = (pixel >> 8 & kBytes) * m + 0x00800080;
  low = (low + (low >> 8 & kBytes)) >> 8 & kBytes;
  high = (high + (high >> 8 & kBytes)) & ~kBytes;
  return low | high;
}

// Mixes a row of the shading over the pixels that are there, as far as the mask lets it.
void MixRow(const std::uint32_t* colors, const unsigned char* mask, int count, bool reversed, unsigned char* row) {
  for (int i = 0; i < count; ++i, row += sizeof(std::uint32_t)) {
    if (mask[i] == 0) continue;
    std::uint32_t color = mask[i] == 255 ? colors[i] : Scale(colors[i], mask[i]);
    if (color >> 24 != 255) {
      std::uint32_t below = 0;
      std::memcpy(&below, row, sizeof(below));
      if (reversed) below = __builtin_bswap32(below);
      color += Scale(below, 255 - (color >> 24));
    }
    if (reversed) color = __builtin_bswap32(color);
    std::memcpy(row, &color, sizeof(color));
  }
}

// The coverage of the area within its clips, a byte a pixel, the box's corner first; null when there is none.
const unsigned char* DrawMask(CGContext* context, const platform::ClipNode* innermost, const PixelBox& box,
                              std::size_t* stride) {
  cairo_surface_t* mask = TakeSurface(&context->mask, CAIRO_FORMAT_A8, box.x1 - box.x0, box.y1 - box.y0);
  if (mask == nullptr) return nullptr;
  unsigned char* bytes = cairo_image_surface_get_data(mask);
  *stride = static_cast<std::size_t>(cairo_image_surface_get_stride(mask));
  std::memset(bytes, 0, *stride * static_cast<std::size_t>(box.y1 - box.y0));
  cairo_surface_mark_dirty(mask);
  const platform::CairoContext cairo(cairo_create(mask));
  cairo_translate(cairo.get(), -box.x0, -box.y0);
  if (innermost != nullptr) platform::InstallClip(cairo.get(), innermost->parent.get(), context->target->Bounds());
  PixelBox area;
  if (!EmitArea(context, cairo.get(), innermost, &area)) return nullptr;
  cairo_fill(cairo.get());
  return bytes;
}

void DrawThroughMask(CGContext* context, const CGShading& shading, const platform::ClipNode* innermost,
                     const PixelBox& box) {
  std::size_t maskStride = 0;
  const unsigned char* mask = DrawMask(context, innermost, box, &maskStride);
  if (mask == nullptr) return;
  const platform::ShadingRows rows(shading, context->UserToDevice(), box, context->state.alpha);
  const BitmapInfo& info = *context->bitmap;
  const bool reversed = info.bitmapInfo == kCGBitmapAlphaFirst;
  std::vector<std::uint32_t> colors(static_cast<std::size_t>(box.x1 - box.x0));
  for (int y = box.y0; y < box.y1; ++y, mask += maskStride) {
    const unsigned char* end = mask + (box.x1 - box.x0);
    const auto isSet = [](unsigned char coverage) { return coverage != 0; };
    const int first = static_cast<int>(std::find_if(mask, end, isSet) - mask);
    if (mask + first == end) continue;
    const int count = static_cast<int>(
        std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(mask), isSet).base() - mask - first);
    rows.Fill(box.x0 + first, y, count, colors.data());
    unsigned char* row = static_cast<unsigned char*>(info.data) + static_cast<std::size_t>(y) * info.bytesPerRow;
    MixRow(colors.data(), mask + first, count, reversed, row + static_cast<std::size_t>(box.x0 + first) * 4);
  }
}

// A scratch image of the box as cairo's source.
bool SetImageSource(CGContext* context, const CGShading& shading, const PixelBox& box) {
  const int width = box.x1 - box.x0;
  const int height = box.y1 - box.y0;
  cairo_surface_t* scratch = TakeSurface(&context->scratch, CAIRO_FORMAT_ARGB32, width, height);
  if (scratch == nullptr) return false;
  const platform::ShadingRows rows(shading, context->UserToDevice(), box, context->state.alpha);
  cairo_surface_flush(scratch);
  auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(scratch));
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(scratch)) / sizeof(std::uint32_t);
  for (int y = box.y0; y < box.y1; ++y, pixels += stride) rows.Fill(box.x0, y, width, pixels);
  cairo_surface_mark_dirty(scratch);
  cairo_set_source_surface(context->cairo.get(), scratch, box.x0, box.y0);
  cairo_pattern_set_filter(cairo_get_source(context->cairo.get()), CAIRO_FILTER_NEAREST);
  return true;
}

void DrawThroughCairo(CGContext* context, const CGShading& shading, const platform::ClipNode* innermost,
                      const PixelBox& box) {
  const platform::Clip whole = context->state.clip;
  context->state.clip = innermost != nullptr ? innermost->parent : nullptr;
  platform::ApplyClip(context);
  context->state.clip = whole;
  PixelBox area;
  if (!EmitArea(context, context->cairo.get(), innermost, &area)) return;
  const bool hasSource = context->target->SetShadingSource(context, shading) || SetImageSource(context, shading, box);
  if (hasSource) cairo_fill(context->cairo.get());
}

}  // namespace

void CGContextDrawShading(CGContextRef context, CGShadingRef shading) {
  if (context == nullptr || shading == nullptr || !platform::IsInvertible(context->UserToDevice())) return;
  if (context->state.textClip != nullptr) platform::SettleTextClip(context);
  const platform::Clip whole = context->state.clip;  // keeps the innermost clip alive
  PixelBox box;
  if (!EmitArea(context, context->cairo.get(), whole.get(), &box)) return;
  (context->bitmap != nullptr ? DrawThroughMask : DrawThroughCairo)(context, *shading, whole.get(), box);
}
