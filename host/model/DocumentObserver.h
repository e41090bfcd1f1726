// What views are told of a document. Calls come after the change, on the main thread, once for each object or area: a
// view notes what it must do and does it later. An observer must not change the document from within.
#pragma once

#include "host/model/DocumentObject.h"
#include "kit/geometry/AGRect.h"

namespace host {

class DocumentObserver {
 public:
  virtual ~DocumentObserver() = default;

  /// Everything within the area, in map units, has to be drawn again.
  virtual void OnAreaChanged(const AGRect& /*area*/) {}
  /// The object's fields, its instance or its place in the order changed, or it was added or removed.
  virtual void OnObjectChanged(ObjectID /*object*/) {}
  /// Layers were added, removed, reordered, renamed, shown, hidden, locked or unlocked.
  virtual void OnLayersChanged() {}
  /// The page's size or background changed: everything has to be drawn again.
  virtual void OnPageChanged() {}
  /// The unit, the grid or the guides changed.
  virtual void OnAidsChanged() {}
};

}  // namespace host
