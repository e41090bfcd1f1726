// The rectangles of an SVG picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/text/Problem.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// One as a document would have it: map units from the picture's left lower corner, y up.
struct SvgRectangle {
  AGRect bounds;
  double angle = 0;     ///< radians, about the centre of the bounds
  double rounding = 0;  ///< radius of the corners, 0 to 1 times half of the shorter side
  std::optional<AGColor> fill;
  std::optional<AGColor> stroke;
  double strokeWidth = 0;  ///< map units
};

struct SvgPicture {
  AGSize size;                           ///< map units: a point each, so that 96 of the picture's pixels are 72
  std::vector<SvgRectangle> rectangles;  ///< the one farthest back first
  std::size_t elements = 0;              ///< that draw something, rectangles among them
};

/// Takes `rect` elements with what they inherit, transforms of all that they are in, and units. Sheared ones are not
/// taken, nor those that are filled or outlined with anything but a colour. Style sheets are not read.
///
/// Fails for what is no XML in UTF-8, has another element than `svg` around it, entities of its own, elements that lie
/// more than 256 deep in each other, or more than 100,000 that draw.
Result<SvgPicture> ReadSvg(const std::string& text);

/// Whether a file may be one that ReadSvg reads: it begins with a tag or a mark of the byte order.
bool LooksLikeMarkup(const std::string& text);

}  // namespace host
