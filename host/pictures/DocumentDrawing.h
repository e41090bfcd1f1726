// Draws documents.
#pragma once

#include <functional>

#include "graphics/context/AGContext.h"
#include "host/model/Document.h"
#include "host/pictures/Progress.h"

namespace host {

/// Draws one object as its class draws itself with a brush and a pen, opaque and in lines without gaps; a placeholder
/// as an outlined box. Returns 0, or what the class returned.
int DrawObject(const DocumentObject& object, const AGContext& context, const AGBrush& brush, const AGPen& pen);
/// Draws one object as it looks.
int DrawObject(const DocumentObject& object, const AGContext& context);

/// An object whose class failed to draw it.
struct UndrawnObject {
  ObjectID id = kNoObjectID;
  int status = 0;  ///< what the class returned; 0 for none
};

/// Which objects are drawn; an empty one takes all.
using DrawnObjects = std::function<bool(const DocumentObject&)>;

/// Draws the objects of the visible layers in order through the context, each with its own brush and pen. `scale`
/// multiplies map units. False when `progress`, which may be null, stopped it. `undrawn`, which may be null, receives
/// the first object that failed; the others are drawn all the same. Only those that `drawn` takes are.
bool DrawObjects(const Document& document, const AGContext& context, double scale, Progress* progress = nullptr,
                 UndrawnObject* undrawn = nullptr, const DrawnObjects& drawn = nullptr);

/// The same for those objects alone that may paint within `area`, in map units, and that `drawn` takes. The caller
/// clips: what is drawn may reach beyond the area.
void DrawObjects(const Document& document, const AGContext& context, double scale, const AGRect& area,
                 const DrawnObjects& drawn = nullptr);
/// How many objects may paint within the area.
std::size_t CountObjects(const Document& document, const AGRect& area);

}  // namespace host
