// Properties that have a handle on the canvas: a number of the object, and the track in its frame that the handle runs
// on.
//
// A new property gets a handle by an entry in PropertyHandles.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "host/model/DocumentObject.h"
#include "host/text/Text.h"

namespace host {

/// The ends of a track, in map units within the bounds before they are turned.
struct HandleTrack {
  AGPoint atLeast;
  AGPoint atMost;

  /// A fraction of the way from the first end to the second.
  AGPoint At(double fraction) const { return atLeast + (atMost - atLeast) * fraction; }
  /// The fraction of the place nearest to a point, 0 to 1; 0 for a track without a length.
  double Nearest(const AGPoint& point) const;
};

struct PropertyHandle {
  Text property;  ///< its key, which is also what a change of it is named after
  double least;   ///< the range of values; the handle stands still beyond it
  double most;
  /// `inset` is the room to the edges, in map units, that keeps the handle off the others.
  HandleTrack (*track)(const AGRect& bounds, double inset);

  /// The object's value as a fraction of the range; none where the object has no such number.
  std::optional<double> FractionOf(const DocumentObject& object) const;
  double ValueOf(double fraction) const { return least + (most - least) * fraction; }
};

/// A number as properties are given it: as short as it comes back the same.
std::string NumberText(double number);

/// All of them, in the order in which they are drawn.
std::span<const PropertyHandle> PropertyHandles();

}  // namespace host
