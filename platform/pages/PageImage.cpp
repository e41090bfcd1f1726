// Images on pages.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/pages/Page.h"

namespace platform {
namespace {

double WidthOf(const CGImage& image) { return static_cast<double>(image.pixels.Width()); }
double HeightOf(const CGImage& image) { return static_cast<double>(image.pixels.Height()); }

// Gives a surface data that it owns; without memory it goes without.
void Attach(cairo_surface_t* surface, const char* type, const void* bytes, std::size_t count) {
  auto* copy = static_cast<unsigned char*>(std::malloc(count));
  if (copy == nullptr) return;
  std::memcpy(copy, bytes, count);
  const cairo_status_t status = cairo_surface_set_mime_data(surface, type, copy, count, &std::free, copy);
  if (status != CAIRO_STATUS_SUCCESS) std::free(copy);
}

// By its name a page knows an image that it has already.
void NameOnce(cairo_surface_t* pixels) {
  static std::atomic<unsigned int> count{0};
  const unsigned char* name = nullptr;
  unsigned long length = 0;
  cairo_surface_get_mime_data(pixels, CAIRO_MIME_TYPE_UNIQUE_ID, &name, &length);
  if (name != nullptr) return;
  const std::string given = "image " + std::to_string(++count);
  Attach(pixels, CAIRO_MIME_TYPE_UNIQUE_ID, given.data(), given.size());
}

// The file as pages know it: 8 bits, sequential or progressive, grey or three colours; empty for any other. Notes to
// readers go, a wish to be turned and a profile among them, since the kit heeds neither: of the application segments
// those stay that tell how the colours are coded.
std::vector<unsigned char> PlainJPEG(const unsigned char* bytes, std::size_t count) {
  constexpr unsigned char kFirstNote = 0xE1, kAdobe = 0xEE, kLastNote = 0xEF, kComment = 0xFE, kScan = 0xDA;
  if (count < 4 || bytes[0] != 0xFF || bytes[1] != 0xD8) return {};
  std::vector<unsigned char> plain(bytes, bytes + 2);
  for (std::size_t at = 2; at + 10 < count;) {
    const unsigned char marker = bytes[at + 1];
    const std::size_t length = std::size_t{bytes[at + 2]} << 8 | bytes[at + 3];
    if (bytes[at] != 0xFF || marker < 0xC0 || length < 2 || length + 2 > count - at) return {};
    const unsigned char* const body = bytes + at + 4;
    const bool isTable = marker == 0xC4 || marker == 0xC8 || marker == 0xCC;
    if (marker <= 0xCF && !isTable) {
      const bool isKnown = marker <= 0xC2 && body[0] == 8 && (body[5] == 1 || body[5] == 3);
      if (!isKnown) return {};
    }
    if (marker == kScan) {
      plain.insert(plain.end(), bytes + at, bytes + count);
      return plain;
    }
    const bool isNote = (marker >= kFirstNote && marker <= kLastNote && marker != kAdobe) || marker == kComment;
    if (!isNote) plain.insert(plain.end(), bytes + at, bytes + at + 2 + length);
    at += 2 + length;
  }
  return {};
}

// The extent of an image in device space, cut to the target.
PixelBox BoxOf(const CGImage& image, const CGAffineTransform& m, const PixelBox& bounds) {
  CGMutablePathRef outline = CGPathCreateMutable();
  CGPathAddRect(outline, &m, CGRectMake(0, 0, WidthOf(image), HeightOf(image)));
  const CGRect box = CGPathGetBoundingBox(outline);
  CGPathRelease(outline);
  const auto inside = [](double value, int low, int high) {
    return static_cast<int>(std::clamp(value, static_cast<double>(low), static_cast<double>(high)));
  };
  return {inside(std::floor(box.origin.x), bounds.x0, bounds.x1),
          inside(std::floor(box.origin.y), bounds.y0, bounds.y1),
          inside(std::ceil(box.origin.x + box.size.width), bounds.x0, bounds.x1),
          inside(std::ceil(box.origin.y + box.size.height), bounds.y0, bounds.y1)};
}

void PaintImage(cairo_t* cairo, const CGImage& image, const CGAffineTransform& m, const CGContext& context,
                cairo_operator_t mixing) {
  const bool keepsEdges = context.target->Kind() == SurfaceKind::kRecording;
  cairo_save(cairo);
  const cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
  cairo_transform(cairo, &matrix);
  if (keepsEdges) {
    cairo_set_antialias(cairo, context.state.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_new_path(cairo);
    cairo_rectangle(cairo, 0, 0, WidthOf(image), HeightOf(image));
    cairo_clip(cairo);
  }
  cairo_set_source_surface(cairo, image.Surface(), 0, 0);
  // What a recording will be drawn on is not known, and pixels let the last ones fade into nothing at the edge. A page
  // keeps its edges itself, and would store anew what was extended.
  cairo_pattern_set_extend(cairo_get_source(cairo), keepsEdges ? CAIRO_EXTEND_PAD : CAIRO_EXTEND_NONE);
  cairo_pattern_set_filter(cairo_get_source(cairo), FilterOf(context.state.interpolation, m));
  cairo_set_operator(cairo, mixing);
  cairo_paint_with_alpha(cairo, context.state.alpha);
  cairo_restore(cairo);
}

CairoSurface PixelsFor(const PixelBox& box, double scale) {
  CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                  static_cast<int>(std::ceil((box.x1 - box.x0) * scale)),
                                                  static_cast<int>(std::ceil((box.y1 - box.y0) * scale))));
  return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? std::move(surface) : nullptr;
}

CairoContext ContextOn(cairo_surface_t* surface, const PixelBox& box, double scale) {
  CairoContext cairo(cairo_create(surface));
  cairo_scale(cairo.get(), scale, scale);
  cairo_translate(cairo.get(), -box.x0, -box.y0);
  return cairo;
}

// Makes of an image the one that, drawn over the backdrop, gives what they were mixed to: what the backdrop lets
// through beside the image is taken off again.
void TakeOff(cairo_surface_t* backdrop, cairo_surface_t* mixed, cairo_surface_t* image) {
  cairo_surface_flush(backdrop);
  cairo_surface_flush(mixed);
  cairo_surface_flush(image);
  const auto bytesOf = [](cairo_surface_t* surface) { return cairo_image_surface_get_data(surface); };
  const std::size_t count = static_cast<std::size_t>(cairo_image_surface_get_stride(image)) *
                            static_cast<std::size_t>(cairo_image_surface_get_height(image));
  for (std::size_t pixel = 0; pixel < count; pixel += 4) {
    const int alpha = bytesOf(image)[pixel + 3];
    for (std::size_t i = pixel; i < pixel + 3; ++i) {
      const int through = (bytesOf(backdrop)[i] * (255 - alpha) + 127) / 255;
      bytesOf(image)[i] = static_cast<unsigned char>(std::clamp(bytesOf(mixed)[i] - through, 0, alpha));
    }
  }
  cairo_surface_mark_dirty(image);
}

// As many pixels a unit as the image has, within reason.
double ScaleFor(const PixelBox& box, const CGAffineTransform& m) {
  constexpr double kLeast = 2;
  constexpr double kMost = 8;
  constexpr double kMostPixels = 2.5e7;
  const double area = static_cast<double>(box.x1 - box.x0) * (box.y1 - box.y0);
  const double own = 1 / std::sqrt(std::fabs(m.a * m.d - m.b * m.c));
  return std::min(std::clamp(own, kLeast, kMost), std::sqrt(kMostPixels / area));
}

// An SVG page has no way of its own to mix, and all of it would become pixels if cairo was asked to: only the image
// does.
void DrawMixed(CGContext* context, const CGImage& image, const CGAffineTransform& m, cairo_operator_t mixing) {
  const PixelBox box = BoxOf(image, m, context->target->Bounds());
  if (box.IsEmpty()) return;
  const double scale = ScaleFor(box, m);
  const CairoSurface backdrop = BackdropOf(*context, box, scale);
  const CairoSurface mixed = BackdropOf(*context, box, scale);
  const CairoSurface alone = PixelsFor(box, scale);
  if (backdrop == nullptr || mixed == nullptr || alone == nullptr) return;
  PaintImage(ContextOn(mixed.get(), box, scale).get(), image, m, *context, mixing);
  PaintImage(ContextOn(alone.get(), box, scale).get(), image, m, *context, CAIRO_OPERATOR_OVER);
  TakeOff(backdrop.get(), mixed.get(), alone.get());
  cairo_t* cairo = context->cairo.get();
  cairo_save(cairo);
  cairo_translate(cairo, box.x0, box.y0);
  cairo_scale(cairo, 1 / scale, 1 / scale);
  cairo_set_source_surface(cairo, alone.get(), 0, 0);
  cairo_paint(cairo);
  cairo_restore(cairo);
}

}  // namespace

CairoSurface BackdropOf(const CGContext& context, const PixelBox& box, double scale) {
  CairoSurface surface = PixelsFor(box, scale);
  if (surface == nullptr) return nullptr;
  const CairoContext cairo = ContextOn(surface.get(), box, scale);
  cairo_set_source_surface(cairo.get(), cairo_get_group_target(context.cairo.get()), 0, 0);
  cairo_paint(cairo.get());
  return surface;
}

void KeepImageFile(const CGImage& image, const unsigned char* bytes, std::size_t count) {
  const std::vector<unsigned char> plain = PlainJPEG(bytes, count);
  if (!plain.empty()) Attach(image.Surface(), CAIRO_MIME_TYPE_JPEG, plain.data(), plain.size());
}

void DrawImageOnPage(CGContext* context, const CGImage& image, const CGAffineTransform& imageToDevice) {
  NameOnce(image.Surface());
  const cairo_operator_t mixing = OperatorOf(context->state.blendMode);
  if (mixing != CAIRO_OPERATOR_OVER && context->target->Kind() == SurfaceKind::kSVG) {
    DrawMixed(context, image, imageToDevice, mixing);
  } else {
    PaintImage(context->cairo.get(), image, imageToDevice, *context, mixing);
  }
}

}  // namespace platform
