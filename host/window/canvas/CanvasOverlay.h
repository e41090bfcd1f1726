// What is drawn over the document: the frame of the selection, its handles, outlines and the rubber band.
#pragma once

#include <optional>
#include <vector>

#include "graphics/context/AGContext.h"
#include "host/view/SelectionFrame.h"
#include "host/view/SnapTargets.h"

namespace host {

struct Overlay {
  SelectionFrame frame;
  std::vector<ObjectPlacement> outlines;  ///< of selected objects, within the frame
  std::vector<ObjectPlacement> hovered;   ///< of what a click would take
  std::optional<AGRect> entered;          ///< of a group, map units
  std::optional<AGRect> band;             ///< map units
  std::vector<SnapLine> snapLines;
  Handle taken = Handle::kNone;  ///< that has the arrow keys
};

/// The part of the view that the overlay may paint, in pixels of the view; false when there is nothing to paint.
bool GetOverlayBounds(const Overlay& overlay, const ViewTransform& view, AGRect* bounds);

/// Draws it through a context whose units are pixels of the view, y down from the upper left corner.
void DrawOverlay(const AGContext& context, const Overlay& overlay, const ViewTransform& view);

}  // namespace host
