#pragma once
#include <CoreGraphics/CGAffineTransform.h>
typedef struct CGPath* CGMutablePathRef;
typedef const struct CGPath* CGPathRef;
enum CGPathElementType : int32_t {
  kCGPathElementMoveToPoint,
  kCGPathElementAddLineToPoint,
  kCGPathElementAddQuadCurveToPoint,
  kCGPathElementAddCurveToPoint,
  kCGPathElementCloseSubpath
};
struct CGPathElement {
  CGPathElementType type;
  CGPoint* points;
};
typedef struct CGPathElement CGPathElement;
typedef void (*CGPathApplierFunction)(void* info, const CGPathElement* element);
CG_EXTERN CGMutablePathRef CGPathCreateMutable(void);
CG_EXTERN CGMutablePathRef CGPathCreateMutableCopy(CGPathRef path);
CG_EXTERN CGPathRef CGPathCreateCopyByTransformingPath(CGPathRef path, const CGAffineTransform* transform);
CG_EXTERN CGPathRef CGPathRetain(CGPathRef path);
CG_EXTERN void CGPathRelease(CGPathRef path);
CG_EXTERN void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddQuadCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cpx, CGFloat cpy,
                                         CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cp1x, CGFloat cp1y,
                                     CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y);
CG_EXTERN void CGPathCloseSubpath(CGMutablePathRef path);
CG_EXTERN void CGPathAddRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
CG_EXTERN void CGPathAddLines(CGMutablePathRef path, const CGAffineTransform* m, const CGPoint* points, size_t count);
CG_EXTERN void CGPathAddEllipseInRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
CG_EXTERN void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                            CGFloat startAngle, CGFloat endAngle, bool clockwise);
CG_EXTERN void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1,
                                   CGFloat x2, CGFloat y2, CGFloat radius);
CG_EXTERN void CGPathAddPath(CGMutablePathRef path1, const CGAffineTransform* m, CGPathRef path2);
CG_EXTERN bool CGPathIsEmpty(CGPathRef path);
CG_EXTERN CGRect CGPathGetBoundingBox(CGPathRef path);
CG_EXTERN void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function);
