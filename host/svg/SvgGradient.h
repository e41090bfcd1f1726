// Gradients of SVG pictures as brushes.
//
// A brush runs from one colour to another, along a line through the middle of the object or around a centre, from rim
// to rim. Most gradients of two stops are that; others become the nearest that there is.
#pragma once

#include <optional>

#include "graphics/paint/AGBrush.h"
#include "host/svg/SvgStyles.h"
#include "host/svg/SvgTree.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// The rectangle that is to be filled.
struct SvgFilled {
  AGRect box;             ///< user units, y down
  AGSize size;            ///< of the object
  bool mirrored = false;  ///< what is down in the picture is up in the object's own directions
  AGSize whole;           ///< what percentages are of, user units
};

struct SvgGradientBrush {
  AGBrush brush;
  bool isExact = true;  ///< it looks as the picture says
};

bool IsSvgGradient(const SvgElement& element);

/// None for what is not understood. `opacity` is 0 to 1.
std::optional<SvgGradientBrush> BrushOfGradient(const SvgTree& tree, const SvgStyles& styles,
                                                const SvgElement& gradient, const SvgFilled& filled, double opacity);
/// The colour that it begins with; none without any.
std::optional<AGColor> FirstColor(const SvgTree& tree, const SvgStyles& styles, const SvgElement& gradient,
                                  double opacity);

}  // namespace host
