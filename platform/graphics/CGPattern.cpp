#include "CoreGraphics/CGPattern.h"

#include <cmath>
#include <new>

#include "AKPlatform/AKPixelOrder.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGPatternValue.h"
#include "platform/graphics/ImageRows.h"

namespace {

constexpr double kMaxSide = 1024;

bool IsWholeSide(double side) { return side >= 1 && side <= kMaxSide && side == std::floor(side); }

bool IsOpaque(const CGPattern& pattern, cairo_surface_t* cell) {
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(cell));
  for (int y = 0; y < pattern.height; ++y) {
    const unsigned char* row = cairo_image_surface_get_data(cell) + static_cast<std::size_t>(y) * stride;
    for (int x = 0; x < pattern.width; ++x) {
      if (row[4 * x + 3] != 255) return false;
    }
  }
  return true;
}

bool DrawCell(CGPattern* pattern) {
  if (pattern->isBeingDrawn) return false;
  platform::CairoSurface cell(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pattern->width, pattern->height));
  if (cairo_surface_status(cell.get()) != CAIRO_STATUS_SUCCESS) throw std::bad_alloc();
  cairo_surface_flush(cell.get());
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGContextRef context = CGBitmapContextCreate(
      cairo_image_surface_get_data(cell.get()), static_cast<std::size_t>(pattern->width),
      static_cast<std::size_t>(pattern->height), 8,
      static_cast<std::size_t>(cairo_image_surface_get_stride(cell.get())), space, kCGBitmapBlueFirst);
  CGColorSpaceRelease(space);
  if (context == nullptr) throw std::bad_alloc();
  const platform::NativeRef<CGContext> owned = platform::TakeRef(context);
  CGContextSetShouldAntialias(context, false);
  {
    const platform::Scoped drawing(pattern->isBeingDrawn, true);
    pattern->callbacks.drawPattern(pattern->info, context);
  }
  if (context->hasFailed) throw std::bad_alloc();  // a part of a cell is none
  cairo_surface_mark_dirty(cell.get());
  pattern->isOpaque = IsOpaque(*pattern, cell.get());
  pattern->cell = std::move(cell);
  return true;
}

// The source of a fill has no opacity of its own, so it goes into the cell.
platform::CairoSurface FaintCopy(const CGPattern& pattern, double alpha) {
  platform::CairoSurface copy(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pattern.width, pattern.height));
  const platform::CairoContext cairo(cairo_create(copy.get()));
  cairo_set_source_surface(cairo.get(), pattern.cell.get(), 0, 0);
  cairo_paint_with_alpha(cairo.get(), alpha);
  return copy;
}

// The place of a cell, `phase` and whole sides on, that is less than a side below `origin`.
double NearestCell(double phase, double side, double origin) {
  if (!std::isfinite(phase) || !std::isfinite(origin)) return 0;
  const double beyond = std::fmod(phase - origin, side);
  return origin + (beyond > 0 ? beyond - side : beyond);
}

}  // namespace

CGPatternRef CGPatternCreate(void* info, CGRect bounds, CGAffineTransform matrix, CGFloat xStep, CGFloat yStep,
                             CGPatternTiling, bool isColored, const CGPatternCallbacks* callbacks) {
  const bool usable = callbacks != nullptr && callbacks->drawPattern != nullptr && isColored && bounds.origin.x == 0 &&
                      bounds.origin.y == 0 && IsWholeSide(bounds.size.width) && IsWholeSide(bounds.size.height) &&
                      xStep == bounds.size.width && yStep == bounds.size.height && CGAffineTransformIsIdentity(matrix);
  if (!usable) return nullptr;
  return platform::MadeOrNull([&] {
    return new CGPattern(info, static_cast<int>(bounds.size.width), static_cast<int>(bounds.size.height), *callbacks);
  });
}

void CGPatternRelease(CGPatternRef pattern) {
  if (pattern != nullptr) pattern->Release();
}

namespace platform {

bool DrawCellOnce(CGPattern* pattern) { return pattern->cell != nullptr || DrawCell(pattern); }

raster::PixelGrid CellIn(CGPattern* pattern, raster::PixelOrder order) {
  const raster::PixelGrid cell = GridOf(pattern->cell.get());
  if (order == raster::PixelOrder::kBlueFirst) return cell;
  const auto width = static_cast<std::size_t>(cell.width);
  auto& turned = pattern->alphaFirstCell;
  if (turned == nullptr) {
    turned.reset(new std::uint32_t[width * static_cast<std::size_t>(cell.height)]);
    for (std::size_t y = 0; y < static_cast<std::size_t>(cell.height); ++y) {
      raster::CopyReversed(cell.pixels + y * cell.stride, width, turned.get() + y * width);
    }
  }
  return {turned.get(), width, cell.width, cell.height};
}

CairoPattern RepeatCell(cairo_surface_t* cell, const CGPattern& pattern, CGSize phase,
                        const CGAffineTransform& baseToDevice) {
  CairoPattern source(cairo_pattern_create_for_surface(cell));
  cairo_pattern_set_extend(source.get(), CAIRO_EXTEND_REPEAT);
  cairo_pattern_set_filter(source.get(), CAIRO_FILTER_NEAREST);  // the cell's pixels stay squares
  cairo_matrix_t toBase{baseToDevice.a, baseToDevice.b,  baseToDevice.c,
                        baseToDevice.d, baseToDevice.tx, baseToDevice.ty};
  if (cairo_matrix_invert(&toBase) != CAIRO_STATUS_SUCCESS) return nullptr;
  // Of all cells the one next to the origin of device space is taken: cairo's numbers go no further than 32767.
  const CGSize near{NearestCell(phase.width, pattern.width, toBase.x0),
                    NearestCell(phase.height, pattern.height, toBase.y0)};
  // The cell's image has its rows from the top down, base space has y up: from the image to base space, then to device
  // space; cairo wants the way back.
  const CGAffineTransform cellToBase{1, 0, 0, -1, near.width, near.height + pattern.height};
  const CGAffineTransform m = CGAffineTransformConcat(cellToBase, baseToDevice);
  cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
  cairo_matrix_invert(&matrix);  // has one, as base space has
  cairo_pattern_set_matrix(source.get(), &matrix);
  return source;
}

CairoPattern MakePatternSource(CGPattern* pattern, CGSize phase, double alpha, const CGAffineTransform& baseToDevice) {
  if (!DrawCellOnce(pattern)) return nullptr;
  const CairoSurface faint = alpha < 1 ? FaintCopy(*pattern, alpha) : nullptr;
  return RepeatCell(faint != nullptr ? faint.get() : pattern->cell.get(), *pattern, phase, baseToDevice);
}

}  // namespace platform
