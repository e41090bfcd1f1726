#include "host/model/EditRules.h"

#include <algorithm>

#include "host/model/ObjectRecord.h"

namespace host {
namespace {

Problem FixedObject(const LayerSettings& settings) {
  return settings.locked ? Problem(N_("layer \"%s\" is locked: its objects can't be changed"), {settings.name})
                         : Problem(N_("layer \"%s\" is hidden: its objects can't be changed"), {settings.name});
}

Problem ClosedLayer(const LayerSettings& settings) {
  return settings.locked ? Problem(N_("layer \"%s\" is locked: it takes no objects"), {settings.name})
                         : Problem(N_("layer \"%s\" is hidden: it takes no objects"), {settings.name});
}

}  // namespace

Result<> CheckOpenLayers(const Document& document, const ObjectIDs& ids) {
  if (ids.empty()) {
    return Problem(N_("there is no object to change"));
  }
  for (const ObjectID id : ids) {
    const Layer* layer = document.LayerOf(id);
    if (layer != nullptr && layer->IsEditable()) continue;
    return layer == nullptr ? Problem(N_("there is no such object")) : FixedObject(layer->settings);
  }
  return {};
}

Result<> CheckEditable(const Document& document, const ObjectIDs& ids) {
  if (const auto done = CheckOpenLayers(document, ids); !done) return done.Why();
  for (const ObjectID id : ids) {
    const DocumentObject& object = *document.Find(id);
    if (object.marks.locked) return Problem(N_("a locked object can't be changed before it is unlocked"));
    if (object.marks.hidden) return Problem(N_("a hidden object can't be changed before it is shown"));
  }
  return {};
}

Result<ObjectIDs> Changeable(const Document& document, const ObjectIDs& ids) {
  if (const auto done = CheckEditable(document, ids); !done) return done.Why();
  ObjectIDs changeable;
  for (const ObjectID id : ids) {
    if (!document.Find(id)->IsPlaceholder()) changeable.push_back(id);
  }
  if (!changeable.empty()) return changeable;
  return WhyPlaceholder(*document.Find(ids.front()));
}

Result<> CheckLayer(const Document& document, LayerID id) {
  if (document.FindLayer(id) != nullptr) return {};
  return Problem(N_("there is no such layer"));
}

Result<> CheckTakesObjects(const Document& document, LayerID id) {
  const LayerSettings& settings = document.FindLayer(id)->settings;
  if (settings.visible && !settings.locked) return {};
  return ClosedLayer(settings);
}

ObjectIDs InDrawingOrder(const Document& document, const ObjectIDs& ids) {
  std::vector<std::pair<std::size_t, ObjectID>> numbered;
  numbered.reserve(ids.size());
  for (const ObjectID id : ids) numbered.emplace_back(document.NumberOf(id), id);
  std::sort(numbered.begin(), numbered.end());
  numbered.erase(std::unique(numbered.begin(), numbered.end()), numbered.end());
  ObjectIDs sorted;
  sorted.reserve(numbered.size());
  for (const auto& [number, id] : numbered) sorted.push_back(id);
  return sorted;
}

}  // namespace host
