// AGPath: a vector path of subpaths, made of lines, Bézier curves, arcs, rectangles, ellipses, splines and outlines.
//
// Coordinates are map units with y up, angles radians. A path owns its native path, whose points are stored relative to
// the path's origin; a reader of the native path adds the origin back. The first geometry fixes the origin (each
// operation names the point that it takes), and only Clear and ApplyTransform change it later. Copies share nothing.
//
// No operation reports an error: arrays too short for their operation add nothing and set no origin. A line, a curve or
// a tangent arc needs a current point: on an empty path it adds nothing. Points that are not finite are stored as
// given. A path is not thread-safe, its const members included: they fill caches.
#pragma once

#include <cstdint>

#include "graphics/paint/AGBrushFillMode.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGTextAlignment.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/text/AKString.h"

struct CGPath;
/// A path of the native layer.
using AGNativePath = CGPath;

class AGPath {
 public:
  // Creating and assigning

  /// An empty path, without an origin.
  AGPath();
  /// A copy that shares nothing.
  AGPath(const AGPath& other);
  /// Copies `native`, whose points are relative to `origin`; null gives an empty path with that origin.
  AGPath(const AGNativePath* native, const AGPoint& origin);
  /// Frees the native path.
  ~AGPath();

  ///@{
  /// Replaces all by a copy of the other's.
  AGPath& operator=(const AGPath& other) {
    Assign(other);
    return *this;
  }
  void Assign(const AGPath& other);
  ///@}

  // The native path and its origin

  /// True when there is no geometry; a text does not count.
  bool IsEmpty() const;
  /// Empty again, without an origin. The text stays.
  void Clear();
  /// The native path, owned by this path, for adding to it; its points are relative to Origin(). Forgets the bounds.
  AGNativePath* NativePathToModify();
  /// The same for looking at it; never null.
  const AGNativePath* NativePath() const { return native_; }
  /// What is added to the native points.
  const AGPoint& Origin() const { return origin_; }
  /// True once the origin is fixed.
  bool HasOrigin() const { return (flags_ & kOriginIsSet) != 0; }
  /// Sets the origin if none is set yet.
  void UpdateOrigin(const AGPoint& p);
  /// Fills the cached bounding box.
  void Precompute() const { GetBoundingBox(); }

  // Its text

  /// A text that the path carries along; no geometric operation touches it.
  const AKString& Text() const { return text_; }
  /// Replaces the text.
  void SetText(const AKString& text) { text_ = text; }

  // Lines and curves (AGPathBuild.cpp)

  /// Origin: p.
  void StartSubPath(const AGPoint& p);
  /// Origin: p.
  void AddLine(const AGPoint& p);
  /// A subpath of its own. Origin: p1.
  void AddSegment(const AGPoint& p1, const AGPoint& p2);
  /// Origin: the control point c.
  void AddQuadBezier(const AGPoint& c, const AGPoint& p);
  /// Origin: the control point c1.
  void AddCubicBezier(const AGPoint& c1, const AGPoint& c2, const AGPoint& p);

  /// The arc that touches the line from the current point to the corner p1 and the line from there towards p2, after a
  /// line to where it begins; a line to p1 where no circle fits. Origin: p1.
  void AddArc(const AGPoint& p1, const AGPoint& p2, double radius);
  ///@{
  /// An elliptical arc, joined by a line to the current point if there is one. Angles run from the x axis towards the y
  /// axis, before the circle is stretched to the ellipse; a negative sweep runs the other way. Origin: the arc's start.
  void AddArc(const AGPoint& center, const AGSize& radii, double startAngle, double sweepAngle);
  void AddArc(const AGPoint& center, double radius, double startAngle, double sweepAngle);
  ///@}
  /// On the ellipse that fills the rectangle.
  void AddArc(const AGRect& rect, double startAngle, double sweepAngle);

  ///@{
  /// A polyline as a subpath of its own, after a line to its first point where the path has one. Origin: the first
  /// point.
  void AddLines(const AGPoint* points, unsigned int count, bool close);
  void AddLines(const AGPointArray& points, bool close);
  ///@}
  ///@{
  /// Curves from the first point through groups of 2 (control, end) or 3 (control, control, end); the rest of the array
  /// is ignored. They go on from the current point by a line where the path has one. Origin: the first point.
  void AddQuadBeziers(const AGPoint* points, unsigned int count, bool close);
  void AddQuadBeziers(const AGPointArray& points, bool close);
  void AddCubicBeziers(const AGPoint* points, unsigned int count, bool close);
  void AddCubicBeziers(const AGPointArray& points, bool close);
  ///@}
  ///@{
  /// A cardinal spline through the points: the tangent at a point is `tension` times the difference of its neighbours.
  /// A tension of 0.05 or less is a polyline. A closed spline is smooth all round. Origin: the first point.
  void AddSplineCurves(const AGPoint* points, unsigned int count, double tension, bool close);
  void AddSplineCurves(const AGPointArray& points, double tension, bool close);
  ///@}

  // Shapes (AGPathBuild.cpp)

  ///@{
  /// Closed subpaths of their own, from the least corner towards larger x first, mirrored or not. `normalize` puts the
  /// smaller coordinates first. Origin: (x0, y0).
  void AddRect(const AGRect& rect, bool normalize);
  void AddRects(const AGRect* rects, unsigned int count, bool normalize);
  void AddRects(const AGRectArray& rects, bool normalize);
  ///@}
  /// Corners are quarter circles with a radius of half the shorter side times `curvature` (at most 1); 0.02 or less
  /// gives the plain rectangle. It starts in the middle of the right edge and goes to the corner (x1, y1) first.
  void AddRoundedRect(const AGRect& rect, double curvature, bool normalize);
  /// The ellipse that touches the rectangle's sides. Origin: (x0, y0).
  void AddEllipseInRect(const AGRect& rect, bool normalize);

  // Texts (AGPathText.cpp) and other paths (AGPathBuild.cpp)

  ///@{
  /// The outlines of a text, placed as AGContext::DrawText places it; nothing for an empty text and a font that is not
  /// valid, and no emoji, which have none. Origin: the position.
  void AddText(const AKString& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment);
  void AddUText(const AKUniChars& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment);
  ///@}

  ///@{
  /// Appends another path, which may be this one. Origin: the other's, mapped.
  void AddPath(const AGPath& other);
  void AddPath(const AGPath& other, const AGAffineTransform& t);
  ///@}

  // Asking

  /// The box of all points, control points included; kAGNullRect for an empty path. Cached.
  AGRect GetBoundingBox() const;
  /// The box of the curves themselves. Cached.
  AGRect GetFlattenedBoundingBox() const;
  /// Whether p lies within `tolerance` of the outline. `t` (null: the identity) maps the outline about the origin.
  bool IsPointOnPath(const AGPoint& p, double tolerance, const AGAffineTransform* t) const;
  /// Whether p lies inside the filled area; open subpaths are filled as if closed. Of the points on the outline those
  /// count whose area lies to their right or, along a level edge, above: the left and bottom sides of a rectangle are
  /// inside, its right and top sides outside.
  bool IsPointInPath(const AGPoint& p, AGBrushFillMode mode) const;

  // Mapping

  /// Maps the path and its origin.
  void ApplyTransform(const AGAffineTransform& t);
  /// Maps the path so that its bounding box fills `bounds`, or with `keepAspect` the largest centred part of it that
  /// has the box's aspect ratio. Mirrored bounds mirror the path. A box without width or height gives a map of zeros.
  void PutInBounds(const AGRect& bounds, bool keepAspect);

 private:
  friend struct AGPathLayout;  // checks the offsets below

  static constexpr std::uint32_t kOriginIsSet = 0x01;
  static constexpr std::uint32_t kBoundsAreValid = 0x02;
  static constexpr std::uint32_t kFlatBoundsAreValid = 0x04;

  void Changed() { flags_ &= ~(kBoundsAreValid | kFlatBoundsAreValid); }
  // Takes the origin from p if there is none, forgets the bounds, and returns what to add to a point to store it.
  AGPoint BeginAdding(const AGPoint& p);
  // Moves to p, or draws a line to it where the path is not empty.
  void MoveOrLineTo(const AGPoint& p, const AGPoint& offset);
  void AppendNative(const AGPath& other, const AGAffineTransform& linear, const AGPoint& otherOrigin);
  void AppendNativeRoundedRect(const AGRect& rect, const AGPoint& offset, double curvature);

  AGNativePath* native_;
  mutable std::uint32_t flags_ = 0;
  AGPoint origin_;
  mutable AGRect bounds_;
  mutable AGRect flatBounds_;
  AKString text_;
};
