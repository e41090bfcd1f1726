// A page that shows what can be done with text: scripts, alignments, paints, clips and directions.
#pragma once

#include <vector>

#include "graphics/context/AGContext.h"

namespace host {

inline constexpr double kTextItemWidth = 240;
inline constexpr double kTextItemHeight = 96;

struct TextItem {
  const char* name;  ///< as the page labels it
  /// Draws within (0, 0) to (kTextItemWidth, kTextItemHeight) of the context, whose state is at the defaults but for a
  /// transform that has to stay the last.
  void (*draw)(AGContext& context);
};

std::vector<TextItem> TextItems();

/// Units; on a PDF or SVG page points.
AGSize TextPageSize();
/// All items in a labelled grid, on any kind of port.
void DrawTextPage(AGContext context);

}  // namespace host
