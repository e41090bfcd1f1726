// An object of a document: what the host keeps of it, and the instance of its class, which keeps the rest.
//
// Where no loaded bundle has the class, or the class can't read its record, the object is a placeholder: it has no
// instance but the bytes that were read, which are written back unchanged. A placeholder keeps its place among the
// others and can be deleted, copied and moved to another layer, but nothing that stands in its bytes can be changed.
//
// Coordinates are map units, one a pixel at scale 1; y points up. Angles are radians, counter-clockwise.
#pragma once

#include <cstdint>
#include <memory>

#include "graphics/paint/AGBrushAndPen.h"
#include "host/bundles/Instance.h"
#include "host/model/ObjectMarks.h"
#include "kit/containers/AKMemoryBlock.h"
#include "kit/geometry/AGRect.h"

namespace host {

/// Names an object for as long as its document lives: it is given once, survives every change of the order, and comes
/// back when a deletion is undone. Not part of files.
using ObjectID = std::uint64_t;
inline constexpr ObjectID kNoObjectID = 0;

/// Where an object lies.
struct ObjectPlacement {
  AGRect bounds{0, 0, 100, 100};
  double angle = 0;  ///< about the centre of the bounds

  bool operator==(const ObjectPlacement&) const = default;
};

struct ObjectBlock;

struct DocumentObject {
  // What every edit looks at lies together, in as few cache lines as there can be.
  ObjectID id = kNoObjectID;
  AKClassID classID;
  AGRect bounds{0, 0, 100, 100};
  double angle = 0;  ///< radians, about the centre of the bounds
  /// Where the document's order keeps the object, and about where in that block.
  ObjectBlock* block = nullptr;
  std::uint32_t slot = 0;
  /// Of a placeholder: what its class returned when it read the record; 0 when there is no such class.
  int unreadStatus = 0;
  Instance instance;  ///< null for a placeholder, and in a state kept for undo
  /// What the class wrote of the instance when the host last looked; empty for a placeholder.
  AKMemoryBlock record;
  /// Whether an instance has been made from `record`, or read back from it before it was written to a file.
  mutable bool isRecordProven = false;
  /// A placeholder's body as it was read.
  AKMemoryBlock unknownBody;
  AGPen pen;
  AGBrush brush;
  ObjectMarks marks;  ///< of placeholders, too: they stand beside the bytes

  bool IsPlaceholder() const { return !unknownBody.IsEmpty(); }
  /// Users can select and edit it when its layer allows that.
  bool IsFree() const { return !marks.hidden && !marks.locked; }
  ObjectPlacement Placement() const { return {bounds, angle}; }
};

/// The four corners of the turned bounds in order.
void GetTurnedCorners(const ObjectPlacement& placement, AGPoint* out4);

/// The upright box of the turned bounds.
AGRect TurnedBox(const ObjectPlacement& placement);

/// A box outside of which the object paints nothing, provided that its class keeps to the bounds, the angle and the
/// pen: the turned bounds with room for the pen and its mitres.
AGRect PaintedBox(const DocumentObject& object);

/// Everything but the instance; the records are shared.
std::unique_ptr<DocumentObject> CopyState(const DocumentObject& object);

/// An object in that state, with a new instance made from the record. When the class is gone or refuses its record, the
/// object is a placeholder that keeps all of it.
std::unique_ptr<DocumentObject> Revive(const DocumentObject& state);

}  // namespace host
