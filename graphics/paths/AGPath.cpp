#include "graphics/paths/AGPath.h"

#include <cmath>

#include "CoreGraphics/CGPath.h"
#include "graphics/native/AGGraphicsLowPath.h"

AGPath::AGPath() : native_(CGPathCreateMutable()) {}

AGPath::AGPath(const AGPath& other)
    : native_(CGPathCreateMutableCopy(other.native_)),
      flags_(other.flags_),
      origin_(other.origin_),
      bounds_(other.bounds_),
      flatBounds_(other.flatBounds_),
      text_(other.text_) {}

AGPath::AGPath(const AGNativePath* native, const AGPoint& origin)
    : native_(native ? CGPathCreateMutableCopy(native) : CGPathCreateMutable()),
      flags_(kOriginIsSet),
      origin_(origin) {}

AGPath::~AGPath() { CGPathRelease(native_); }

void AGPath::Assign(const AGPath& other) {
  if (this == &other) return;
  AGNativePath* copy = CGPathCreateMutableCopy(other.native_);
  CGPathRelease(native_);
  native_ = copy;
  flags_ = other.flags_;
  origin_ = other.origin_;
  bounds_ = other.bounds_;
  flatBounds_ = other.flatBounds_;
  text_ = other.text_;
}

bool AGPath::IsEmpty() const { return CGPathIsEmpty(native_); }

void AGPath::Clear() {
  AGNativePath* empty = CGPathCreateMutable();
  CGPathRelease(native_);
  native_ = empty;
  flags_ = 0;
  origin_ = kAGNullPoint;
  bounds_ = flatBounds_ = kAGNullRect;
}

AGNativePath* AGPath::NativePathToModify() {
  Changed();
  return native_;
}

void AGPath::UpdateOrigin(const AGPoint& p) {
  if (HasOrigin()) return;
  origin_ = p;
  flags_ |= kOriginIsSet;
}

AGRect AGPath::GetBoundingBox() const {
  if (IsEmpty()) return kAGNullRect;
  if ((flags_ & kBoundsAreValid) == 0) {
    bounds_ = AGGraphicsLow::AGPathGetBoundingBox(*this, false);
    flags_ |= kBoundsAreValid;
  }
  return bounds_;
}

AGRect AGPath::GetFlattenedBoundingBox() const {
  if (IsEmpty()) return kAGNullRect;
  if ((flags_ & kFlatBoundsAreValid) == 0) {
    flatBounds_ = AGGraphicsLow::AGPathGetBoundingBox(*this, true);
    flags_ |= kFlatBoundsAreValid;
  }
  return flatBounds_;
}

bool AGPath::IsPointOnPath(const AGPoint& p, double tolerance, const AGAffineTransform* t) const {
  if (IsEmpty()) return false;
  return AGGraphicsLow::AGPathIsPointOnPath(*this, p, tolerance, t ? *t : kAGAffineTransformIdentity);
}

bool AGPath::IsPointInPath(const AGPoint& p, AGBrushFillMode mode) const {
  return AGGraphicsLow::AGPathIsPointInPath(*this, p, mode);
}

void AGPath::ApplyTransform(const AGAffineTransform& t) {
  if (IsEmpty()) return;
  const CGAffineTransform linear = {t.a, t.b, t.c, t.d, 0, 0};
  AGNativePath* mapped = CGPathCreateMutable();
  CGPathAddPath(mapped, &linear, native_);
  CGPathRelease(native_);
  native_ = mapped;
  origin_ = t.Apply(origin_);
  Changed();
}

void AGPath::PutInBounds(const AGRect& bounds, bool keepAspect) {
  if (IsEmpty()) return;
  const AGRect box = GetBoundingBox();
  AGRect target = bounds;
  if (keepAspect) {
    // The ratios height / width are compared by cross products, so that no side has to be divided by.
    const double width = std::fabs(bounds.Width()), height = std::fabs(bounds.Height());
    const AGPoint center = bounds.Center();
    if (box.Height() * width > height * box.Width()) {
      const double half = std::copysign(0.5 * height * box.Width() / box.Height(), bounds.Width());
      target.x0 = center.x - half;
      target.x1 = center.x + half;
    } else if (box.Width() > 0) {
      const double half = std::copysign(0.5 * width * box.Height() / box.Width(), bounds.Height());
      target.y0 = center.y - half;
      target.y1 = center.y + half;
    }
  }
  AGAffineTransform t = kAGNullAffineTransform;
  if (box.Width() != 0 && box.Height() != 0) {
    t.a = target.Width() / box.Width();
    t.d = target.Height() / box.Height();
    t.tx = target.x0 - t.a * box.x0;
    t.ty = target.y0 - t.d * box.y0;
  }
  ApplyTransform(t);
}
