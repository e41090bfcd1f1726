// Paths of the native layer: subpaths of lines and Bézier curves.
//
// A function with Create in its name returns a path with one reference that the caller owns; each Retain asks for one
// Release. Paths are values without a lock: a path that one thread changes is used by no other meanwhile. Every null
// path is allowed and stands for an empty one that takes nothing.
//
// A function that adds takes a map, applied to what it adds; null is the identity. Lines, curves and tangent arcs that
// come before any move, while there is no current point, add nothing. Points that are not finite are stored as they
// are.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "CoreGraphics/CGAffineTransform.h"
#include "CoreGraphics/CGBase.h"

typedef struct CGPath* CGMutablePathRef;
typedef const struct CGPath* CGPathRef;

enum CGPathElementType : int32_t {
  kCGPathElementMoveToPoint = 0,
  kCGPathElementAddLineToPoint = 1,
  kCGPathElementAddQuadCurveToPoint = 2,
  kCGPathElementAddCurveToPoint = 3,
  kCGPathElementCloseSubpath = 4
};

/// One step of a path, with its 1, 1, 2, 3 or 0 points; they hold until the callback returns.
struct CGPathElement {
  CGPathElementType type;
  CGPoint* points;
};

typedef void (*CGPathApplierFunction)(void* info, const CGPathElement* element);

CG_EXTERN CGMutablePathRef CGPathCreateMutable(void);
CG_EXTERN CGMutablePathRef CGPathCreateMutableCopy(CGPathRef path);
/// A copy with every point mapped.
CG_EXTERN CGPathRef CGPathCreateCopyByTransformingPath(CGPathRef path, const CGAffineTransform* m);
/// Returns `path`.
CG_EXTERN CGPathRef CGPathRetain(CGPathRef path);
CG_EXTERN void CGPathRelease(CGPathRef path);

/// True when nothing was added; a path of one move is not empty.
CG_EXTERN bool CGPathIsEmpty(CGPathRef path);
/// The box of all points, control points and lone moves included. Without any (comparable) point it is the null
/// rectangle: an infinite origin and no size.
CG_EXTERN CGRect CGPathGetBoundingBox(CGPathRef path);
/// Calls `function` for each element in order. It must not change the path.
CG_EXTERN void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function);

CG_EXTERN void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddQuadCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cpx, CGFloat cpy,
                                         CGFloat x, CGFloat y);
CG_EXTERN void CGPathAddCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cp1x, CGFloat cp1y,
                                     CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y);
/// Ends the subpath with a line to its start, which becomes the current point. An empty or just closed path stays.
CG_EXTERN void CGPathCloseSubpath(CGMutablePathRef path);

/// A subpath of its own that starts at the rectangle's least corner and goes towards larger x, then towards larger y,
/// whatever the signs of the size.
CG_EXTERN void CGPathAddRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
/// Moves to the first point and draws lines through the others. Null points or a count of 0 add nothing.
CG_EXTERN void CGPathAddLines(CGMutablePathRef path, const CGAffineTransform* m, const CGPoint* points, size_t count);
/// A subpath of its own: four cubic curves from the middle of the right edge, towards larger y first.
CG_EXTERN void CGPathAddEllipseInRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
/// An arc of a circle, angles in radians from the x axis towards the y axis (away from it when `clockwise`). It is
/// joined to the current point by a line, or starts a subpath where there is none. When the end lies against the
/// direction, whole turns are added to it until it does not: the sweep is then less than a turn, and nothing where the
/// ends are whole turns apart. A sweep in the direction beyond a full turn goes on around; pairs of turns beyond the
/// second are left out, since they change no fill. Angles that are not finite add nothing.
CG_EXTERN void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                            CGFloat startAngle, CGFloat endAngle, bool clockwise);
/// An arc of the circle that touches the line from the current point to (x1, y1) and the line from there to (x2, y2),
/// after a line from the current point to the first point of contact. Where no circle fits (points that coincide or lie
/// on one line, a radius that is not positive, a map without an inverse) it is a line to (x1, y1).
CG_EXTERN void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1,
                                   CGFloat x2, CGFloat y2, CGFloat radius);
/// Appends every element of `other`, which may be `path` itself.
CG_EXTERN void CGPathAddPath(CGMutablePathRef path, const CGAffineTransform* m, CGPathRef other);
