// What the files of the native bridge share. Private to the bridge.
#pragma once

#include "CoreGraphics/CGContext.h"
#include "graphics/context/AGContext.h"

namespace AGGraphicsLow {

/// Saves the port's state for the time of one call and gives it the context's antialias switch, alpha and clip.
class PortScope {
 public:
  explicit PortScope(const AGContext& context);
  PortScope(const PortScope&) = delete;
  PortScope& operator=(const PortScope&) = delete;
  ~PortScope();

 private:
  CGContextRef port_;
};

/// Narrows the port's clip to the context's clip path, which goes through the context's transform.
void _LowAGContextInstallClipPath(const AGContext& context, CGContextRef port);

/// From the path's own coordinates to the port's: its origin, the per-call transform, the context's.
AGAffineTransform PathToPort(const AGContext& context, const AGPath& path, const AGAffineTransform& transform);

/// A native path through a transform for the time of a call; the path itself where that is the identity.
class MappedPath {
 public:
  MappedPath(CGPathRef path, const AGAffineTransform& transform);
  MappedPath(const MappedPath&) = delete;
  MappedPath& operator=(const MappedPath&) = delete;
  ~MappedPath();

  CGPathRef Get() const { return copy_ != nullptr ? copy_ : path_; }

 private:
  CGPathRef path_;
  CGPathRef copy_;
};

/// The line width that the context's pen strokes with: a relative one grows with the context's transform.
double PenWidth(const AGContext& context);

void SetFillColor(CGContextRef port, AGColor color);
void SetStrokeColor(CGContextRef port, AGColor color);

}  // namespace AGGraphicsLow
