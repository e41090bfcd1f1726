#include "host/pictures/HitTest.h"

#include "CoreGraphics/CGContext.h"
#include "host/labels/LabelDrawing.h"
#include "host/pictures/DocumentDrawing.h"

namespace host {
namespace {

constexpr unsigned int kSide = 5;      // pixels
constexpr std::size_t kPixelSize = 4;  // blue, green, red, alpha
constexpr std::size_t kAlphaByte = 3;
constexpr double kLeastTolerance = 1e-6;   // map units
constexpr unsigned char kLeastAlpha = 26;  // a tenth of a pixel covered
constexpr double kRadiusSquared = 2.5 * 2.5;

double Clamped(double tolerance) { return tolerance > kLeastTolerance ? tolerance : kLeastTolerance; }

// Patterns have holes and gradients fade, but what appears can be clicked.
AGBrush Opaque(const AGBrush& brush) {
  AGBrush opaque(brush);
  if (brush.Appears()) opaque.SetStyleSolid(kAGColorBlack);
  return opaque;
}

}  // namespace

HitTest::HitTest(const AGPoint& point, double tolerance)
    : area_{point.x - Clamped(tolerance), point.y - Clamped(tolerance), point.x + Clamped(tolerance),
            point.y + Clamped(tolerance)},
      bitmap_(kSide, kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill) {}

bool HitTest::HasInk() const {
  for (unsigned int y = 0; y < kSide; ++y) {
    for (unsigned int x = 0; x < kSide; ++x) {
      const double dx = x - (kSide - 1) / 2.0;
      const double dy = y - (kSide - 1) / 2.0;
      if (dx * dx + dy * dy > kRadiusSquared) continue;
      const std::size_t pixel = std::size_t{y} * bitmap_.RowStride() + x;
      if (bitmap_.Pixels()[pixel * kPixelSize + kAlphaByte] >= kLeastAlpha) return true;
    }
  }
  return false;
}

bool HitTest::Hits(const DocumentObject& object) {
  if (!bitmap_.IsOpen()) return false;
  bitmap_.ClearPixels();
  const AGContext context = bitmap_.GetContextOfBitmap();
  const double scale = kSide / (area_.x1 - area_.x0);
  CGContextSaveGState(context.NativePort());
  CGContextConcatCTM(context.NativePort(), {scale, 0, 0, scale, -area_.x0 * scale, -area_.y0 * scale});
  AGPen pen(object.pen);
  pen.SetBrush(Opaque(object.pen.Brush()));
  DrawObject(object, context, Opaque(object.brush), pen);
  CGContextRestoreGState(context.NativePort());
  return HasInk() || LabelCovers(object, area_.Center());
}

}  // namespace host
