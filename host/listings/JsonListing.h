// What commands print with --json: documents, properties and panels as one line of JSON each.
#pragma once

#include <string>

#include "host/bundles/Bundle.h"
#include "host/listings/DocumentListing.h"
#include "host/panels/Inspector.h"
#include "host/session/DocumentSession.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"

namespace host {

/// {"page": {"width", "height", "background": [r, g, b, a]}, "layers": [{"number", "name", "visible", "locked",
/// "active", "objects": [{"number", "class", "placeholder", "selected", "bounds": [x0, y0, x1, y1], "angle" in degrees,
/// "properties"}]}]}
std::string JsonOfDocument(const DocumentSession& session, const ListedObjects& listed = std::nullopt);
/// The same without the objects, whose count stands in their place.
std::string JsonOfLayers(const DocumentSession& session);

std::string JsonOfProperties(const AKDictionary& properties);
std::string JsonOfValue(const AKValue& value);

/// {"title", "width", "height", "multiple", "controls": [{"id", "type", "title", "x", "y", "width", "height",
/// "visible", "enabled", "mixed", "shown", "value", "range": [a, b], "items": []}]}; the last three where the control
/// has them.
std::string JsonOfPanel(const Inspector& inspector);

/// {"path", "classes": [{"id", "parent", "further", "name", "comments", "flags", "instance" in bytes, "slots":
/// [{"slot", "method", "virtual", "adjustment"}], "panel" as above without "mixed", where the class has one}]}
std::string JsonOfBundle(const Bundle& bundle);

/// {"undo", "redo", "position", "steps": [names], "unsaved"}
std::string JsonOfHistory(const DocumentSession& session);

}  // namespace host
