#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <climits>
#include <cmath>

#include "AKPlatform/AKVectorContext.h"
#include "platform/pages/Page.h"

namespace {

using platform::PixelBox;
using platform::SurfaceKind;

constexpr double kMaxSide = 14400;

// A page has no pixels that anybody else reads. An SVG page is recorded first, so that the backdrop of an image that is
// mixed with it can be looked at in any number of pixels.
class PageTarget final : public platform::PlainTarget {
 public:
  PageTarget(const PixelBox& bounds, SurfaceKind kind, platform::CairoSurface page)
      : bounds_(bounds), kind_(kind), page_(std::move(page)) {}

  /// Completes the file with what was drawn; false when something went wrong on the way. To be called once.
  bool Finish(cairo_t* drawing) {
    bool isDrawn = cairo_status(drawing) == CAIRO_STATUS_SUCCESS;
    cairo_surface_t* const drawn = cairo_get_target(drawing);
    const unsigned int references = cairo_surface_get_reference_count(drawn);
    const bool isRecorded = drawn != page_.get();
    if (isRecorded) {
      const platform::CairoContext cairo(cairo_create(page_.get()));
      cairo_set_source_surface(cairo.get(), drawn, 0, 0);
      cairo_paint(cairo.get());
      cairo_show_page(cairo.get());
      isDrawn = isDrawn && cairo_status(cairo.get()) == CAIRO_STATUS_SUCCESS;
    } else {
      cairo_show_page(drawing);
    }
    cairo_surface_finish(page_.get());
    isDrawn = isDrawn && cairo_surface_status(page_.get()) == CAIRO_STATUS_SUCCESS;
    if (!isRecorded) return isDrawn;
    page_.reset();
    // cairo 1.16 keeps a reference to a recording that an SVG page was painted with, and never drops it.
    for (unsigned int i = cairo_surface_get_reference_count(drawn); i > references; --i) cairo_surface_destroy(drawn);
    return isDrawn;
  }

  PixelBox Bounds() const override { return bounds_; }
  SurfaceKind Kind() const override { return kind_; }

 private:
  PixelBox bounds_;
  SurfaceKind kind_;
  platform::CairoSurface page_;
};

// Where a page's bytes go. cairo keeps a pointer to it for as long as the surface lives.
struct Writer {
  CGVectorWriteCallback write;
  void* info;
};

cairo_status_t WriteBytes(void* closure, const unsigned char* bytes, unsigned int count) {
  auto* writer = static_cast<Writer*>(closure);
  return writer->write(writer->info, bytes, count) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

void DeleteWriter(void* writer) { delete static_cast<Writer*>(writer); }

using CreateSurface = cairo_surface_t* (*)(cairo_write_func_t, void*, double, double);

CGContextRef CreatePage(SurfaceKind kind, CreateSurface create, double width, double height,
                        CGVectorWriteCallback write, void* info) {
  static const cairo_user_data_key_t kWriterKey{};
  const bool sized = width > 0 && width <= kMaxSide && height > 0 && height <= kMaxSide;
  if (!sized || write == nullptr) return nullptr;
  auto writer = std::make_unique<Writer>(Writer{write, info});
  platform::CairoSurface surface(create(&WriteBytes, writer.get(), width, height));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  cairo_surface_set_user_data(surface.get(), &kWriterKey, writer.release(), &DeleteWriter);
  const cairo_rectangle_t extents{0, 0, width, height};
  const platform::CairoSurface recording(
      kind == SurfaceKind::kSVG ? cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents) : nullptr);
  platform::CairoContext cairo(cairo_create(recording != nullptr ? recording.get() : surface.get()));
  const PixelBox bounds{0, 0, static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
  return new CGContext(std::move(cairo), std::make_unique<PageTarget>(bounds, kind, std::move(surface)),
                       {1, 0, 0, -1, 0, height});
}

}  // namespace

CGContextRef CGVectorContextCreatePDF(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info) {
  return CreatePage(SurfaceKind::kPDF, &cairo_pdf_surface_create_for_stream, width, height, write, info);
}

CGContextRef CGVectorContextCreateSVG(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info) {
  return CreatePage(SurfaceKind::kSVG, &cairo_svg_surface_create_for_stream, width, height, write, info);
}

bool CGVectorContextFinish(CGContextRef context) {
  auto* page = context == nullptr ? nullptr : dynamic_cast<PageTarget*>(context->target.get());
  return page != nullptr && page->Finish(context->cairo.get());
}
