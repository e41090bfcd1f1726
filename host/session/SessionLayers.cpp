#include "host/session/SessionLayers.h"

#include "host/model/Units.h"
#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"

namespace host {

LayerID SessionLayers::Add(const std::string& name, std::size_t index) {
  EditStep step(steps_, Tr("Add Layer"));
  std::size_t number = document_.Layers().size() + 1;
  // A file with a name that is no text could not be opened again.
  const bool isName = !name.empty() && FindInvalidUtf8(name) == name.size();
  const LayerID id = document_.InsertLayer({isName ? name : TrWith("Layer %s", std::to_string(number))}, index);
  steps_.Step().LayerInserted(document_, id);
  step.End();
  activeLayer_.Set(id);
  return id;
}

Result<> SessionLayers::Remove(LayerID id) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  if (document_.Layers().size() == 1) {
    return Problem(N_("the only layer can't be removed"));
  }
  EditStep step(steps_, Tr("Remove Layer"));
  ObjectIDs ids;
  document_.FindLayer(id)->objects.ForEach([&ids](const DocumentObject& object) { ids.push_back(object.id); });
  for (auto object = ids.rbegin(); object != ids.rend(); ++object) steps_.Remove(*object);
  const std::size_t index = document_.IndexOfLayer(id);
  steps_.RemoveLayer(id);
  if (activeLayer_.Get() == id) activeLayer_.Set(document_.Layers()[index == 0 ? 0 : index - 1]->id);
  return step.End();
}

Result<> SessionLayers::ChangeSettings(LayerID id, const char* name, LayerSettings settings) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  EditStep step(steps_, name);
  steps_.Step().BeforeLayerSettings(document_, id);
  document_.SetLayerSettings(id, std::move(settings));
  return step.End();
}

Result<> SessionLayers::SetName(LayerID id, const std::string& name) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  if (name.empty() || FindInvalidUtf8(name) != name.size()) {
    return Problem(N_("a layer needs a name"));
  }
  LayerSettings settings = document_.FindLayer(id)->settings;
  settings.name = name;
  return ChangeSettings(id, Tr("Rename Layer"), std::move(settings));
}

Result<> SessionLayers::SetVisible(LayerID id, bool visible) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  LayerSettings settings = document_.FindLayer(id)->settings;
  settings.visible = visible;
  return ChangeSettings(id, visible ? Tr("Show Layer") : Tr("Hide Layer"), std::move(settings));
}

Result<> SessionLayers::SetLocked(LayerID id, bool locked) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  LayerSettings settings = document_.FindLayer(id)->settings;
  settings.locked = locked;
  return ChangeSettings(id, locked ? Tr("Lock Layer") : Tr("Unlock Layer"), std::move(settings));
}

Result<> SessionLayers::Move(LayerID id, std::size_t index) {
  if (const auto done = CheckLayer(document_, id); !done) return done.Why();
  EditStep step(steps_, Tr("Move Layer"));
  steps_.Step().BeforeLayerMove(document_, id);
  document_.MoveLayer(id, index);
  steps_.Step().AfterMove(document_);
  return step.End();
}

// Objects of a group are in one layer: what goes to another one leaves the outermost groups.
void SessionLayers::LeaveGroups(ObjectID id, std::size_t count) {
  if (count == 0) return;
  ObjectMarks marks = document_.Find(id)->marks;
  marks.groups.erase(marks.groups.begin(), marks.groups.begin() + static_cast<std::ptrdiff_t>(count));
  steps_.Step().BeforeMarks(document_, id);
  document_.SetMarks(id, std::move(marks));
}

Result<> SessionLayers::MoveObjects(const ObjectIDs& ids, LayerID layer) {
  if (const auto done = CheckLayer(document_, layer); !done) return done.Why();
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  const Layer& target = *document_.FindLayer(layer);
  if (const auto done = CheckTakesObjects(document_, layer); !done) return done.Why();
  EditStep step(steps_, Tr("Move to Layer"));
  for (const Unit& unit : UnitsOf(document_, ids, {})) {
    if (document_.LayerOf(unit.objects[0]) == &target) continue;
    for (const ObjectID id : unit.objects) {
      LeaveGroups(id, unit.depth);
      steps_.Move(id, {layer, target.objects.Count()});
    }
  }
  return step.End();
}

}  // namespace host
