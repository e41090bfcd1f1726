// Drawing images.
#include <cmath>

#include "CoreGraphics/CGImage.h"
#include "graphics/images/AGImage.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowSupport.h"
#include "graphics/native/AGMacOS.h"

namespace AGGraphicsLow {
namespace {

CGInterpolationQuality NativeQuality(AGImageQuality quality) {
  switch (quality) {
    case 1:
    case 2:
      return kCGInterpolationLow;
    case 3:
    case 4:
      return kCGInterpolationHigh;
    default:
      return kCGInterpolationDefault;
  }
}

}  // namespace

void AGContextDrawImage(const AGContext& context, const AGImage& image, const AGPoint& point,
                        const AGAffineTransform& transform, AGImageQuality quality) {
  CGContextRef port = context.NativePort();
  if (port == nullptr || image.IsEmpty() || !(context.alpha >= AGContext::kMinVisibleAlpha)) return;
  const PortScope scope(context);
  // The colour factor does not scale an image's colours: it chooses how they are mixed with what is there.
  if (std::fabs(1 - context.colorFactor) > 0.004) {
    CGContextSetBlendMode(port, context.colorFactor < 1 ? kCGBlendModeSoftLight : kCGBlendModeHardLight);
  }
  CGContextConcatCTM(port, AGMacOS::CGAffineTransformConvert(AGAffineTransformConcat(transform, context.transform)));
  CGContextSetInterpolationQuality(port, NativeQuality(quality));
  CGContextDrawImage(port, CGRectMake(point.x, point.y, image.Width(), image.Height()), image.NativeImage());
}

}  // namespace AGGraphicsLow
