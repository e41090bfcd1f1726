// Points, sizes and rectangles of the native layer. y points up.
#pragma once

#include "CoreGraphics/CGBase.h"

struct CGPoint {
  CGFloat x;
  CGFloat y;
};

struct CGSize {
  CGFloat width;
  CGFloat height;
};

/// A rectangle is an origin and a size; a negative size is allowed and means the mirrored rectangle.
struct CGRect {
  CGPoint origin;
  CGSize size;
};

inline CGPoint CGPointMake(CGFloat x, CGFloat y) { return {x, y}; }
inline CGSize CGSizeMake(CGFloat width, CGFloat height) { return {width, height}; }
inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { return {{x, y}, {width, height}}; }

/// True when a side is 0 (or not a number). A rectangle of negative size is not empty.
inline bool CGRectIsEmpty(CGRect rect) {
  return !(rect.size.width < 0 || rect.size.width > 0) || !(rect.size.height < 0 || rect.size.height > 0);
}
