#include "platform/pages/Page.h"

namespace platform {

bool PlainTarget::ClearAll(CGContext* context, CGRect rect) const { return IsVector() && ClearPage(context, rect); }

bool PlainTarget::DrawImage(CGContext* context, const CGImage& image, const CGAffineTransform& imageToDevice) const {
  if (IsVector()) DrawImageOnPage(context, image, imageToDevice);
  return IsVector();
}

bool PlainTarget::SetShadingSource(CGContext* context, const CGShading& shading) const {
  return IsVector() && SetVectorSource(context, shading);
}

// The other kinds know that a cell's pixels are squares.
CairoPattern PlainTarget::PatternSource(CGPattern* pattern, CGSize phase, double alpha,
                                        const CGAffineTransform& baseToDevice) const {
  if (Kind() != SurfaceKind::kSVG) return nullptr;
  return MakeVectorPatternSource(pattern, phase, alpha, baseToDevice);
}

}  // namespace platform
