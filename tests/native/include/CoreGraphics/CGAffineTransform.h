#pragma once
#include <CoreGraphics/CGGeometry.h>
struct CGAffineTransform {
  CGFloat a, b, c, d;
  CGFloat tx, ty;
};
typedef struct CGAffineTransform CGAffineTransform;
CG_EXTERN const CGAffineTransform CGAffineTransformIdentity;
CG_EXTERN bool CGAffineTransformIsIdentity(CGAffineTransform t);
CG_EXTERN CGAffineTransform CGAffineTransformTranslate(CGAffineTransform t, CGFloat tx, CGFloat ty);
