// Arithmetic on points, segments, polygons and rectangles, in map units; angles in radians.
//
// Where a function takes an array it also takes a pointer and a count; a null pointer or a count of 0 is an empty
// array. Coordinates that are not numbers give results without meaning, never a fault or an endless loop. Only the
// allocator throws.
#pragma once

#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGConstants.h"
#include "kit/geometry/AGPlacement.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"

namespace AGGeometry {

/// The index that a search without a result reports.
inline constexpr unsigned int kNoIndex = 0xFFFFFFFF;

///@{
/// The distance, or its square, from p to the segment ab. A segment of no length has no distance: the result is then
/// not a number.
double GetDistanceToSegment2(const AGPoint& p, const AGPoint& a, const AGPoint& b);
double GetDistanceToSegment(const AGPoint& p, const AGPoint& a, const AGPoint& b);
///@}

/// True when two segments that are not parallel share a point, their ends included. `out`, which may be null, receives
/// that point, or (0, 0) when there is none.
bool GetIntersectionOfSegments(const AGPoint& a1, const AGPoint& a2, const AGPoint& b1, const AGPoint& b2,
                               AGPoint* out);

///@{
/// Maps each point in place.
void ApplyTransformToPoints(AGPoint* points, unsigned int count, const AGAffineTransform& t);
void ApplyTransformToPoints(AGPointArray* points, const AGAffineTransform& t);
///@}
///@{
/// Maps the two stored corners of each rectangle; a turned rectangle is not enclosed, a mirrored one not normalised.
void ApplyTransformToRects(AGRect* rects, unsigned int count, const AGAffineTransform& t);
void ApplyTransformToRects(AGRectArray* rects, const AGAffineTransform& t);
///@}

///@{
/// The smallest upright rectangle around the points; kAGNullRect for an empty array.
AGRect GetBoundingBox(const AGPoint* points, unsigned int count);
AGRect GetBoundingBox(const AGPointArray& points);
///@}
///@{
/// The least of the first corners and the greatest of the second ones.
AGRect GetBoundingBox(const AGRect* rects, unsigned int count);
AGRect GetBoundingBox(const AGRectArray& rects);
///@}

///@{
/// Thins a polyline in place: a point stays when its offset from the last one kept, mapped by the linear part of `t`
/// (null: the identity), exceeds 0.707 · tolerance in x or in y. The first and the last point always stay. Returns
/// whether points were removed; fewer than 3 points never are.
bool ResamplePoints(AGPoint* points, unsigned int* count, double tolerance, const AGAffineTransform* t);
bool ResamplePoints(AGPointArray* points, double tolerance, const AGAffineTransform* t);
///@}

///@{
/// The even-odd rule; a repeated first point at the end is ignored. False for fewer than 3 points.
bool IsPointInsidePolygon(const AGPoint* points, unsigned int count, const AGPoint& p);
bool IsPointInsidePolygon(const AGPointArray& points, const AGPoint& p);
///@}
///@{
/// True when an edge of one polygon meets an edge of the other (by GetIntersectionOfSegments) or one polygon lies
/// inside the other. Symmetric. Fewer than 3 points are no polygon: false.
bool IsPolygonSect(const AGPoint* points1, unsigned int count1, const AGPoint* points2, unsigned int count2);
bool IsPolygonSect(const AGPointArray& polygon1, const AGPointArray& polygon2);
///@}

///@{
/// The nearest point to p, all of them mapped by `t` (null: the identity) first; of equally near ones the first.
/// Returns its distance and writes it and the index to the outputs, which may be null. When there is no point, or none
/// within `maxDistance` (0 or less: no limit), they are kAKHugeFloat64 and kNoIndex.
double FindNearestPoint(const AGPoint* points, unsigned int count, const AGPoint& p, double maxDistance,
                        const AGAffineTransform* t, unsigned int* index, double* distance);
double FindNearestPoint(const AGPointArray& points, const AGPoint& p, double maxDistance, const AGAffineTransform* t,
                        unsigned int* index, double* distance);
///@}
///@{
/// The same for the segments between neighbouring points, and from the last back to the first when `closed`. The index
/// is that of a segment's first point. Segments of no length are never found.
double FindNearestSegment(const AGPoint* points, unsigned int count, bool closed, const AGPoint& p, double maxDistance,
                          const AGAffineTransform* t, unsigned int* index, double* distance);
double FindNearestSegment(const AGPointArray& points, bool closed, const AGPoint& p, double maxDistance,
                          const AGAffineTransform* t, unsigned int* index, double* distance);
///@}

///@{
/// The corners (x0, y0), (x1, y0), (x1, y1), (x0, y1). An array's former content is replaced.
void GetRectTrapezoid(AGPoint* out4, const AGRect& rect);
void GetRectTrapezoid(AGPointArray* points, const AGRect& rect);
///@}
/// Four corners for each rectangle.
void GetRectTrapezoids(AGPointArray* points, const AGRectArray& rects);

///@{
/// The n corners of a regular polygon, the first at `startAngle`; an array's former content is replaced.
void GenerateRegularPolygon(AGPoint* points, unsigned int n, const AGPoint& center, double radius, double startAngle);
void GenerateRegularPolygon(AGPointArray* points, unsigned int n, const AGPoint& center, double radius,
                            double startAngle);
///@}

/// The map that places `src` in `dst`: shrunk, never enlarged, to fit with its aspect ratio kept, then stretched or
/// aligned on each axis as the placement asks. The identity when `src` has no positive width and height. An axis that
/// shrank to nothing is not stretched.
AGAffineTransform GetPlacementAFT(const AGRect& src, const AGRect& dst, AGPlacement placement);

}  // namespace AGGeometry
