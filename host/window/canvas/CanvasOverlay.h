// What is drawn over the document: the frame of the selection, its handles and the rubber band.
#pragma once

#include <optional>

#include "graphics/context/AGContext.h"
#include "host/view/SelectionFrame.h"

namespace host {

/// The part of the view that the overlay may paint, in pixels of the view; false when there is nothing to paint.
bool GetOverlayBounds(const SelectionFrame& frame, const std::optional<AGRect>& band, const ViewTransform& view,
                      AGRect* bounds);

/// Draws it through a context whose units are pixels of the view, y down from the upper left corner.
void DrawOverlay(const AGContext& context, const SelectionFrame& frame, const std::optional<AGRect>& band,
                 const ViewTransform& view);

}  // namespace host
