// The rectangles of an SVG picture.
#pragma once

#include <array>
#include <bitset>
#include <string>
#include <vector>

#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPen.h"
#include "host/text/Problem.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// What of a picture is left out, and then what of the rectangles that are taken looks otherwise.
enum class SvgNote { kNoRectangle, kSheared, kClipped, kNotUnderstood, kRules, kCorners, kGradient, kOutline };
inline constexpr std::size_t kSvgNotes = 8;

/// One as a document would have it: map units from the picture's left lower corner, y up.
struct SvgRectangle {
  AGRect bounds;
  double angle = 0;     ///< radians, about the centre of the bounds
  double rounding = 0;  ///< radius of the corners, 0 to 1 times half of the shorter side
  AGBrush brush;
  AGPen pen;               ///< but for its size
  double strokeWidth = 0;  ///< map units
  double opacity = 1;
  std::vector<double> dashes;      ///< widths of the pen, as ObjectLook has them
  std::bitset<kSvgNotes> differs;  ///< by the numbers of SvgNote
};

struct SvgPicture {
  AGSize size;                                   ///< map units: a point each, so that 96 of the picture's pixels are 72
  std::vector<SvgRectangle> rectangles;          ///< the one farthest back first
  std::size_t elements = 0;                      ///< that draw something, rectangles among them
  std::array<std::size_t, kSvgNotes> leftOut{};  ///< elements and rules by the numbers of SvgNote
};

/// Takes `rect` elements with what they inherit, the rules of style sheets, transforms of all that they are in, those
/// that are used elsewhere, pictures within pictures, and units. Left out are sheared ones, those that are clipped,
/// masked, filtered or blended, and those filled or outlined with neither a colour nor a gradient.
///
/// Fails for what ReadSvgTree refuses, what has no size, and for more than 100,000 elements that draw.
Result<SvgPicture> ReadSvg(const std::string& text);

/// Whether a file may be one that ReadSvg reads: it begins with a tag or a mark of the byte order.
bool LooksLikeMarkup(const std::string& text);

}  // namespace host
