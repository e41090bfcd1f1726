// Quadratic and cubic Bézier curves: points, exact bounds, and polylines.
//
// p0 and the last point are the ends, the others the control points; t runs from 0 at p0 to 1 at the end. An Append
// function adds to an array, its Get twin returns the same points in a new one. Only the allocator throws.
#pragma once

#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGPoint.h"

///@{
/// The point of the curve at t.
AGPoint AGBezierQuadGetPoint(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, double t);
AGPoint AGBezierCubicGetPoint(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3, double t);
///@}

///@{
/// The least and the greatest coordinates of the curve itself; control points do not count. Either output may be null.
void AGBezierQuadGetMinimax(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, AGPoint* min, AGPoint* max);
void AGBezierCubicGetMinimax(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3, AGPoint* min,
                             AGPoint* max);
///@}

///@{
/// The same for any point type that has x and y, such as the native one.
template <typename Point>
void ATBezierQuadGetMinimax(const Point& p0, const Point& p1, const Point& p2, Point* min, Point* max) {
  AGPoint low, high;
  AGBezierQuadGetMinimax({p0.x, p0.y}, {p1.x, p1.y}, {p2.x, p2.y}, &low, &high);
  if (min) *min = {low.x, low.y};
  if (max) *max = {high.x, high.y};
}
template <typename Point>
void ATBezierCubicGetMinimax(const Point& p0, const Point& p1, const Point& p2, const Point& p3, Point* min,
                             Point* max) {
  AGPoint low, high;
  AGBezierCubicGetMinimax({p0.x, p0.y}, {p1.x, p1.y}, {p2.x, p2.y}, {p3.x, p3.y}, &low, &high);
  if (min) *min = {low.x, low.y};
  if (max) *max = {high.x, high.y};
}
///@}

///@{
/// `count` points (at most 1024) at even steps of t, both ends included; without the first one unless `includeFirst`.
/// A count below 2 adds nothing.
AGPointArray AGBezierQuadGetResampledRegular(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                             unsigned int count, bool includeFirst);
void AGBezierQuadAppendResampledRegular(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                        unsigned int count, bool includeFirst);
AGPointArray AGBezierCubicGetResampledRegular(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                              const AGPoint& p3, unsigned int count, bool includeFirst);
void AGBezierCubicAppendResampledRegular(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                         const AGPoint& p3, unsigned int count, bool includeFirst);
///@}

///@{
/// Halves the curve until each piece strays from its chord by less than 0.5 / precision (clamped to 0.25..16) and adds
/// the middle of each such piece, between the start (if `includeFirst`) and the end. Pieces that are not flat after 8
/// halvings add nothing. A cubic is always halved once.
AGPointArray AGBezierQuadGetResampledAdaptive(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, double precision,
                                              bool includeFirst);
void AGBezierQuadAppendResampledAdaptive(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                         double precision, bool includeFirst);
AGPointArray AGBezierCubicGetResampledAdaptive(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                               const AGPoint& p3, double precision, bool includeFirst);
void AGBezierCubicAppendResampledAdaptive(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                          const AGPoint& p3, double precision, bool includeFirst);
///@}

///@{
/// By quality: 1, 2, 3 are 5, 9, 17 regular points; 4, 5, 6 adaptive with precision 1, 2, 4; any other is 5.
AGPointArray AGBezierQuadGetResampled(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, unsigned int quality,
                                      bool includeFirst);
void AGBezierQuadAppendResampled(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                 unsigned int quality, bool includeFirst);
AGPointArray AGBezierCubicGetResampled(const AGPoint& p0, const AGPoint& p1, const AGPoint& p2, const AGPoint& p3,
                                       unsigned int quality, bool includeFirst);
void AGBezierCubicAppendResampled(AGPointArray* points, const AGPoint& p0, const AGPoint& p1, const AGPoint& p2,
                                  const AGPoint& p3, unsigned int quality, bool includeFirst);
///@}
