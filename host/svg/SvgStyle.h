// What elements of an SVG picture have of those that they are in.
#pragma once

#include <optional>
#include <vector>

#include "graphics/paint/AGPen.h"
#include "host/svg/SvgStyles.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// A colour, a gradient, or neither.
struct SvgPaint {
  std::optional<AGColor> color;
  const SvgElement* gradient = nullptr;

  bool IsNone() const { return !color && gradient == nullptr; }
};

/// A box that hides what lies beyond it.
struct SvgClip {
  AGAffineTransform toPicture;
  AGRect box;
};

struct SvgStyle {
  AGAffineTransform toPicture = kAGAffineTransformIdentity;  // pixels, y down
  AGSize whole{100, 100};                                    // what percentages are of, in user units
  std::vector<SvgClip> clips;
  AGColor color = kAGColorBlack;
  SvgPaint fill{kAGColorBlack};
  SvgPaint stroke;
  double strokeWidth = 1;
  std::vector<double> dashes;  // user units
  AGPenLineCap cap = kAGPenLineCapButt;
  AGPenLineJoin join = kAGPenLineJoinMiter;
  double opacity = 1;  // of all that it is in together
  double fillOpacity = 1;
  double strokeOpacity = 1;
  bool strokesFirst = false;  // the fill covers the inner half of the outline
  bool keepsWidth = false;    // of the outline, whatever the transforms are
  bool shown = true;          // is drawn at all
  bool isVisible = true;      // may be seen again within
  bool understood = true;     // paint, lengths and transforms
  bool isClipped = false;     // or masked, filtered or blended

  /// What percentages of lengths that lie neither along nor across are of.
  double Diagonal() const;
  /// A length, or 0 where there is none; what is not understood is noted.
  double Length(std::string_view text, double of);
};

/// Makes of what an element inherits what it has itself.
void ApplyProperties(const SvgTree& tree, const SvgProperties& properties, SvgStyle* style);

}  // namespace host
