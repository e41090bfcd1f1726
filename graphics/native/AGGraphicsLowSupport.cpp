#include "graphics/native/AGGraphicsLowSupport.h"

#include <cmath>

#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGMacOS.h"

namespace AGGraphicsLow {
namespace {

constexpr double kChannelToUnit = 0.00392156862745098;  // 1/255

unsigned char ScaleChannel(unsigned char channel, double factor) {
  const double value = channel * factor + 0.5;
  if (!(value > 0)) return 0;
  return value > 255 ? 255 : static_cast<unsigned char>(value);
}

}  // namespace

PortScope::PortScope(const AGContext& context) : port_(context.NativePort()) {
  CGContextSaveGState(port_);
  CGContextSetShouldAntialias(port_, context.antialias);
  CGContextSetAlpha(port_, context.alpha);
  if (context.HasClip()) _LowAGContextInstallClipPath(context, port_);
}

PortScope::~PortScope() { CGContextRestoreGState(port_); }

void _LowAGContextInstallClipPath(const AGContext& context, CGContextRef port) {
  const AGPath* clip = context.GetClipPath();
  if (clip == nullptr || clip->IsEmpty()) return;
  const AGPoint origin = clip->Origin();
  const auto place = AGAffineTransformConcat(AGAffineTransformTranslation(origin.x, origin.y), context.transform);
  // Mapped by the port, which takes up again what it clipped to before; a path is no part of the state that is
  // restored.
  CGContextSaveGState(port);
  CGContextConcatCTM(port, AGMacOS::CGAffineTransformConvert(place));
  CGContextBeginPath(port);
  CGContextAddPath(port, clip->NativePath());
  CGContextRestoreGState(port);
  CGContextClip(port);
}

AGAffineTransform PathToPort(const AGContext& context, const AGPath& path, const AGAffineTransform& transform) {
  const AGPoint origin = path.Origin();
  const auto placed = AGAffineTransformConcat(AGAffineTransformTranslation(origin.x, origin.y), transform);
  return context.transform.IsIdentity() ? placed : AGAffineTransformConcat(placed, context.transform);
}

MappedPath::MappedPath(CGPathRef path, const AGAffineTransform& transform) : path_(path), copy_(nullptr) {
  if (transform.IsIdentity()) return;
  const CGAffineTransform m = AGMacOS::CGAffineTransformConvert(transform);
  copy_ = CGPathCreateCopyByTransformingPath(path, &m);
}

MappedPath::~MappedPath() { CGPathRelease(copy_); }

void SetFillColor(CGContextRef port, AGColor color) {
  CGContextSetRGBFillColor(port, color.Red() * kChannelToUnit, color.Green() * kChannelToUnit,
                           color.Blue() * kChannelToUnit, color.Alpha() * kChannelToUnit);
}

void SetStrokeColor(CGContextRef port, AGColor color) {
  CGContextSetRGBStrokeColor(port, color.Red() * kChannelToUnit, color.Green() * kChannelToUnit,
                             color.Blue() * kChannelToUnit, color.Alpha() * kChannelToUnit);
}

double PenWidth(const AGContext& context) {
  const AGAffineTransform& t = context.transform;
  const double size = context.pen.Size();
  if (context.pen.SizeMode() != kAGPenSizeModeRelative) return size;
  return size * std::sqrt((t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d) * 0.5);
}

AGColor ApplyColorFactor(AGColor color, double factor) {
  if (!(std::fabs(1 - factor) > 0.004)) return color;
  return {ScaleChannel(color.Red(), factor), ScaleChannel(color.Green(), factor), ScaleChannel(color.Blue(), factor),
          color.Alpha()};
}

AGAffineTransform FitBox(const AGRect& box, const AGRect& target, bool keepAspect) {
  AGRect fitted = target;
  if (keepAspect) {
    const double targetRatio = target.x1 == target.x0 ? 0 : target.Height() / target.Width();
    const double boxRatio = box.x1 == box.x0 ? 0 : box.Height() / box.Width();
    const double sign = targetRatio >= 0 ? 1 : -1;
    const AGPoint center = target.Center();
    if (std::fabs(boxRatio) > std::fabs(targetRatio)) {
      const double half = target.Height() * 0.5 * sign / boxRatio;
      fitted.x0 = center.x - half;
      fitted.x1 = center.x + half;
    } else {
      const double half = target.Width() * 0.5 * sign * boxRatio;
      fitted.y0 = center.y - half;
      fitted.y1 = center.y + half;
    }
  }
  if (box.Width() == 0 || box.Height() == 0) return kAGNullAffineTransform;
  const double a = fitted.Width() / box.Width();
  const double d = fitted.Height() / box.Height();
  return {a, 0, 0, d, fitted.x0 - a * box.x0, fitted.y0 - d * box.y0};
}

}  // namespace AGGraphicsLow
