// Labels of objects in pictures.
#pragma once

#include "graphics/context/AGContext.h"
#include "host/model/DocumentObject.h"

namespace host {

/// Draws the label that the object has, turned with it and cut off at its bounds.
void DrawLabel(const DocumentObject& object, const AGContext& context);

/// Whether a point of the map lies on the lines of the object's label.
bool LabelCovers(const DocumentObject& object, const AGPoint& point);

}  // namespace host
