// A page that shows each operation of a path: what it draws, its two boxes, and its origin.
#pragma once

#include <memory>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/paths/AGPath.h"

namespace host {

struct ShapeItem {
  const char* name;             ///< as the page labels it
  void (*build)(AGPath& path);  ///< adds to an empty path, within (0, 0) to (100, 80)
};

/// One item an operation, and several where an operation has cases of its own.
std::vector<ShapeItem> ShapeItems();

/// All items in a labelled grid. Blue is the box of all points, red the box of the curves, the black dot the origin.
std::unique_ptr<AGBitmap> DrawShapesPage();

}  // namespace host
