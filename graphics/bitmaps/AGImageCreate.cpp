#include "graphics/bitmaps/AGImageCreate.h"

#include <algorithm>

#include "graphics/bitmaps/AGBitmap.h"

namespace {

// `part` is the rectangle of the drawing that fills the image.
template <typename Draw>
std::unique_ptr<AGImage> CreateImage(const AGRect& part, double scale, Draw draw) {
  AGBitmap bitmap(AGSize{(part.x1 - part.x0) * scale, (part.y1 - part.y0) * scale}, AGBitmap::kFlagZeroFill);
  if (!bitmap.IsOpen()) return nullptr;
  AGContext context = bitmap.GetContextOfBitmap();
  context.transform = {scale, 0, 0, scale, -part.x0 * scale, -part.y0 * scale};
  draw(context);
  return std::make_unique<AGImage>(bitmap);
}

}  // namespace

std::unique_ptr<AGImage> AGImageCreateWithProc(AGImageProc proc, const AGSize& size, double scale, double factor,
                                               const void* userData) {
  if (proc == nullptr || !(size.width > 0) || !(size.height > 0)) return nullptr;
  const AGRect bounds{0, 0, size.width, size.height};
  const double pixels = scale * factor;
  return CreateImage(bounds, pixels, [&](AGContext& context) { proc(context, pixels, bounds, userData); });
}

std::unique_ptr<AGImage> AGImageScrolledCreateWithProc(AGImageScrolledProc proc, const AGSize& size,
                                                       const AGRect& visible, double scale, double factor,
                                                       const void* userData) {
  if (proc == nullptr || !(size.width > 0) || !(size.height > 0)) return nullptr;
  const AGRect bounds{0, 0, size.width, size.height};
  const AGRect part{std::max(std::min(visible.x0, visible.x1), 0.0), std::max(std::min(visible.y0, visible.y1), 0.0),
                    std::min(std::max(visible.x0, visible.x1), size.width),
                    std::min(std::max(visible.y0, visible.y1), size.height)};
  if (!(part.x0 < part.x1) || !(part.y0 < part.y1)) return nullptr;
  const double pixels = scale * factor;
  return CreateImage(part, pixels, [&](AGContext& context) { proc(context, pixels, bounds, part, userData); });
}
