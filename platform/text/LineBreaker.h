// Text broken into lines. Private to the native layer.
#pragma once

#include <functional>
#include <vector>

#include "platform/text/ShapedLine.h"

namespace platform {

/// A line's part from its first character to the last that is no white space, which for text from right to left lies
/// at the left; reference units.
struct VisiblePart {
  double start;
  double width;
};

/// Takes the next line; false ends the work.
using TakeLine = std::function<bool(NativeRef<const ShapedLine> line, VisiblePart visible)>;

/// Lines end at line breaks (CR, LF, both, NEL, or a Unicode separator; the last one of the text starts no line) and
/// at the last break that the Unicode rules allow (UAX 14) before `width`, in reference units; a word that is wider is
/// cut between clusters, one of which always fits. A neutral `direction` is that of each paragraph's first letter.
void BreakIntoLines(const TypeFace& face, const std::vector<UniChar>& units, PangoDirection direction, double width,
                    const TakeLine& take);

}  // namespace platform
