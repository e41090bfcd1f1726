#include "CoreGraphics/CGVectorContext.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <climits>
#include <cmath>

#include "platform/graphics/CGContextState.h"

namespace {

using platform::PixelBox;

constexpr double kMaxSide = 14400;

// Pages and windows have no pixels that anybody else reads, and no bounds worth cutting to.
class PlainTarget final : public platform::DrawingTarget {
 public:
  PlainTarget(const PixelBox& bounds, bool isVector) : bounds_(bounds), isVector_(isVector) {}

  void WillDraw(const PixelBox&) override {}
  void DidDraw(const PixelBox&) override {}
  PixelBox Bounds() const override { return bounds_; }
  bool IsVector() const override { return isVector_; }

 private:
  PixelBox bounds_;
  bool isVector_;
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

CGContextRef CreatePage(CreateSurface create, double width, double height, CGVectorWriteCallback write, void* info) {
  static const cairo_user_data_key_t kWriterKey{};
  const bool sized = width > 0 && width <= kMaxSide && height > 0 && height <= kMaxSide;
  if (!sized || write == nullptr) return nullptr;
  auto writer = std::make_unique<Writer>(Writer{write, info});
  platform::CairoSurface surface(create(&WriteBytes, writer.get(), width, height));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  cairo_surface_set_user_data(surface.get(), &kWriterKey, writer.release(), &DeleteWriter);
  platform::CairoContext cairo(cairo_create(surface.get()));
  const PixelBox bounds{0, 0, static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
  return new CGContext(platform::LazyCairo(std::move(cairo)), std::make_unique<PlainTarget>(bounds, true),
                       {1, 0, 0, -1, 0, height});
}

}  // namespace

CGContextRef CGVectorContextCreatePDF(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info) {
  return CreatePage(&cairo_pdf_surface_create_for_stream, width, height, write, info);
}

CGContextRef CGVectorContextCreateSVG(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info) {
  return CreatePage(&cairo_svg_surface_create_for_stream, width, height, write, info);
}

bool CGVectorContextFinish(CGContextRef context) {
  if (context == nullptr || !context->target->IsVector()) return false;
  cairo_surface_t* surface = cairo_get_target(context->cairo.get());
  cairo_show_page(context->cairo.get());
  const bool drawn = cairo_status(context->cairo.get()) == CAIRO_STATUS_SUCCESS;
  cairo_surface_finish(surface);
  return drawn && cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS;
}

CGContextRef CGContextCreateOverCairo(struct _cairo* cairo, CGFloat width, CGFloat height) {
  if (cairo == nullptr || !(width > 0) || !(height > 0)) return nullptr;
  cairo_matrix_t m;
  cairo_get_matrix(cairo, &m);
  const CGAffineTransform toDevice =
      CGAffineTransformConcat({1, 0, 0, -1, 0, height}, {m.xx, m.yx, m.xy, m.yy, m.x0, m.y0});
  double x0 = 0;
  double y0 = 0;
  double x1 = width;
  double y1 = height;
  cairo_identity_matrix(cairo);
  cairo_clip_extents(cairo, &x0, &y0, &x1, &y1);
  const PixelBox bounds{static_cast<int>(std::floor(x0)), static_cast<int>(std::floor(y0)),
                        static_cast<int>(std::ceil(x1)), static_cast<int>(std::ceil(y1))};
  auto* context = new CGContext(platform::LazyCairo(platform::CairoContext(cairo_reference(cairo))),
                                std::make_unique<PlainTarget>(bounds, false), toDevice);
  return context;
}
