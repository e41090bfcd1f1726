// Whether an object shows ink near a point.
//
// Classes say what they look like only by drawing, so the object is drawn: into a bitmap of a few pixels around the
// point, with opaque paint wherever its brush and pen paint at all. Rounded corners, rotation and the width of the pen
// count; the inside of an object without a fill does not.
#pragma once

#include "graphics/bitmaps/AGBitmap.h"
#include "host/model/DocumentObject.h"

namespace host {

class HitTest {
 public:
  /// Ink within `tolerance` map units of the point counts; a tolerance that is not above 0 becomes very small.
  HitTest(const AGPoint& point, double tolerance);

  /// What the point can see at all.
  const AGRect& Area() const { return area_; }
  bool Hits(const DocumentObject& object);

 private:
  bool HasInk() const;

  AGRect area_;
  AGBitmap bitmap_;
};

}  // namespace host
