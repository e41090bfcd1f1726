// Where a view shows a document: map units (y up) to pixels of the view (y down, from its upper left corner).
//
// Zoom is pixels a map unit at scale 1; `deviceScale` is the device's pixels a pixel of the view, 1 or 2 as a rule. The
// position is kept in whole device pixels, so that scrolling moves what is drawn without drawing it anew, and lines
// stay crisp.
#pragma once

#include <cstdint>

#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

namespace host {

class ViewTransform {
 public:
  static constexpr double kMinZoom = 0.02;
  static constexpr double kMaxZoom = 64;

  double Zoom() const { return zoom_; }
  double DeviceScale() const { return deviceScale_; }
  /// Device pixels a map unit.
  double PixelsPerUnit() const { return zoom_ * deviceScale_; }
  /// The device pixel at the view's upper left corner; (0, 0) of the map is device pixel (0, 0), x right and y down.
  std::int64_t OffsetX() const { return offsetX_; }
  std::int64_t OffsetY() const { return offsetY_; }

  void SetDeviceScale(double scale);
  void SetOffset(std::int64_t x, std::int64_t y);
  /// By pixels of the view; what is shown moves the other way.
  void Scroll(double dx, double dy);
  /// Clamped to the limits; the point of the view that is given keeps its place on the map.
  void SetZoom(double zoom, const AGPoint& fixed);
  /// Shows an area of the map as large as the view allows, with a margin in pixels of the view. An empty area or view
  /// changes nothing.
  void Fit(const AGRect& area, const AGSize& view, double margin);
  /// Scrolls as little as shows an area with a margin in pixels of the view, along each axis on which there is room for
  /// it; along others its middle comes to the view's unless the area is all that is seen. False when nothing moves.
  bool Reveal(const AGRect& area, const AGSize& view, double margin);

  AGPoint ToView(const AGPoint& map) const;
  AGPoint ToMap(const AGPoint& view) const;
  /// The area of the map that a view of this size shows.
  AGRect Shown(const AGSize& view) const;

 private:
  double zoom_ = 1;
  double deviceScale_ = 1;
  std::int64_t offsetX_ = 0;
  std::int64_t offsetY_ = 0;
};

/// How far a view scrolls with each tick while something is dragged at its edge or beyond, in its pixels.
AGPoint EdgeSpeed(const AGPoint& point, const AGSize& view);

}  // namespace host
