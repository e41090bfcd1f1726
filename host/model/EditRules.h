// What an edit may touch. Objects that are hidden or locked, or whose layers are, stay as they are; placeholders keep
// their bytes.
#pragma once

#include "host/model/Document.h"
#include "host/text/Problem.h"

namespace host {

using ObjectIDs = std::vector<ObjectID>;

/// Fails for no objects, one that is not there, and one of a hidden or locked layer.
Result<> CheckOpenLayers(const Document& document, const ObjectIDs& ids);
/// The same, and for one that is itself hidden or locked.
Result<> CheckEditable(const Document& document, const ObjectIDs& ids);
/// Those that are no placeholders, at least one.
Result<ObjectIDs> Changeable(const Document& document, const ObjectIDs& ids);

Result<> CheckLayer(const Document& document, LayerID id);
/// Fails for a layer that is hidden or locked.
Result<> CheckTakesObjects(const Document& document, LayerID id);

/// Each once, the one farthest back first.
ObjectIDs InDrawingOrder(const Document& document, const ObjectIDs& ids);

}  // namespace host
