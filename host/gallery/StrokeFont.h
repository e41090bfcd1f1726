// Short labels without fonts: capital letters, digits and dashes made of line segments.
#pragma once

#include <string>

#include "graphics/context/AGContext.h"

namespace host {

/// Strokes the text with the context's pen, the lower left corner of its first letter at `origin`. Capitals are
/// `height` units high and advance by that too, less a sixth. Small letters look like capitals; characters that the
/// font lacks are blanks.
void DrawStrokeText(const AGContext& context, const std::string& text, const AGPoint& origin, double height);

}  // namespace host
