// How a path is stroked.
#pragma once

#include "platform/raster/Path.h"

namespace raster {

enum class Cap : std::uint8_t { kButt, kRound, kSquare };
enum class Join : std::uint8_t { kMiter, kRound, kBevel };

/// A pen: a circle of `width` across, mapped into pixels by x' = a x + c y, y' = b x + d y.
struct StrokeStyle {
  double width = 1;
  Cap cap = Cap::kButt;
  Join join = Join::kMiter;
  double miterLimit = 10;
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
};

/// A pen made ready.
class Nib {
 public:
  /// False when the width is not above 0 or the map has no inverse.
  bool SetUp(const StrokeStyle& style);

  Point ToPen(Point pixels) const { return {ia_ * pixels.x + ic_ * pixels.y, ib_ * pixels.x + id_ * pixels.y}; }
  /// From directions of the pen's space to the nib's edge.
  Point ToPixels(Point normal) const { return {a_ * normal.x + c_ * normal.y, b_ * normal.x + d_ * normal.y}; }

  Cap cap = Cap::kButt;
  Join join = Join::kMiter;
  double miterLimit = 10;
  double radius = 0;      ///< in the pen's space
  double reach = 0;       ///< how far the nib's edge is from its middle at most, in pixels
  double flatCosine = 0;  ///< of the angle of a turn that needs no join
  bool isExact = false;   ///< not so flat that rounding may lead a corner out of its reach
  double arcStep = 0;     ///< the angle that a line may stand for on the nib's edge

  /// How far from the path a stroke may paint, in pixels.
  double Reach() const;

 private:
  double a_ = 0, b_ = 0, c_ = 0, d_ = 0;      // times the radius
  double ia_ = 0, ib_ = 0, ic_ = 0, id_ = 0;  // the inverse map
};

}  // namespace raster
