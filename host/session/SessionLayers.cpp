// Edits of layers and of the page.
#include <cmath>

#include "host/session/DocumentSession.h"
#include "host/session/SessionNotify_p.h"
#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

Problem ClosedLayer(const LayerSettings& settings) {
  return settings.locked ? Problem(N_("layer \"%s\" is locked: it takes no objects"), {settings.name})
                         : Problem(N_("layer \"%s\" is hidden: it takes no objects"), {settings.name});
}

}  // namespace

Result<> DocumentSession::CheckLayer(LayerID id) const {
  if (document_->FindLayer(id) != nullptr) return {};
  return Problem(N_("there is no such layer"));
}

Result<> DocumentSession::CheckActiveLayer() const {
  const LayerSettings& settings = document_->FindLayer(activeLayer_)->settings;
  if (settings.visible && !settings.locked) return {};
  return ClosedLayer(settings);
}

void DocumentSession::SetActiveLayer(LayerID id) {
  if (id == activeLayer_ || document_->FindLayer(id) == nullptr) return;
  activeLayer_ = id;
  Notify([](SessionObserver& observer) { observer.OnActiveLayerChanged(); });
}

LayerID DocumentSession::AddLayer(const std::string& name, std::size_t index) {
  EditStep step(*this, Tr("Add Layer"));
  std::size_t number = document_->Layers().size() + 1;
  const LayerID id = document_->InsertLayer({name.empty() ? TrWith("Layer %s", std::to_string(number)) : name}, index);
  Step().LayerInserted(*document_, id);
  step.End();
  SetActiveLayer(id);
  return id;
}

Result<> DocumentSession::RemoveLayer(LayerID id) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  if (document_->Layers().size() == 1) {
    return Problem(N_("the only layer can't be removed"));
  }
  EditStep step(*this, Tr("Remove Layer"));
  ObjectIDs ids;
  document_->FindLayer(id)->objects.ForEach([&ids](const DocumentObject& object) { ids.push_back(object.id); });
  for (auto object = ids.rbegin(); object != ids.rend(); ++object) RemoveOne(*object);
  for (const auto& open : open_) open->TakeSettingsOf(*document_, id);
  Step().BeforeLayerRemoval(*document_, id);
  const std::size_t index = document_->IndexOfLayer(id);
  document_->RemoveLayer(id);
  if (activeLayer_ == id) SetActiveLayer(document_->Layers()[index == 0 ? 0 : index - 1]->id);
  return step.End();
}

Result<> DocumentSession::ChangeSettings(LayerID id, const char* name, LayerSettings settings) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  EditStep step(*this, name);
  Step().BeforeLayerSettings(*document_, id);
  document_->SetLayerSettings(id, std::move(settings));
  return step.End();
}

Result<> DocumentSession::SetLayerName(LayerID id, const std::string& name) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  if (name.empty() || FindInvalidUtf8(name) != name.size()) {
    return Problem(N_("a layer needs a name"));
  }
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.name = name;
  return ChangeSettings(id, Tr("Rename Layer"), std::move(settings));
}

Result<> DocumentSession::SetLayerVisible(LayerID id, bool visible) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.visible = visible;
  return ChangeSettings(id, visible ? Tr("Show Layer") : Tr("Hide Layer"), std::move(settings));
}

Result<> DocumentSession::SetLayerLocked(LayerID id, bool locked) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.locked = locked;
  return ChangeSettings(id, locked ? Tr("Lock Layer") : Tr("Unlock Layer"), std::move(settings));
}

Result<> DocumentSession::MoveLayer(LayerID id, std::size_t index) {
  if (const auto done = CheckLayer(id); !done) return done.Why();
  EditStep step(*this, Tr("Move Layer"));
  Step().BeforeLayerMove(*document_, id);
  document_->MoveLayer(id, index);
  Step().AfterMove(*document_);
  return step.End();
}

Result<> DocumentSession::MoveToLayer(const ObjectIDs& ids, LayerID layer) {
  if (const auto done = CheckLayer(layer); !done) return done.Why();
  if (const auto done = CheckEditable(ids); !done) return done.Why();
  const Layer& target = *document_->FindLayer(layer);
  if (!target.IsEditable()) {
    return ClosedLayer(target.settings);
  }
  EditStep step(*this, Tr("Move to Layer"));
  for (const ObjectID id : InDrawingOrder(ids)) {
    if (document_->LayerOf(id) != &target) MoveOne(id, {layer, target.objects.Count()});
  }
  return step.End();
}

Result<> DocumentSession::SetPage(const AGSize& page) {
  if (!(page.width > 0 && page.height > 0) || !std::isfinite(page.width) || !std::isfinite(page.height)) {
    return Problem(N_("the sides of a page are numbers above 0"));
  }
  EditStep step(*this, Tr("Change Page"));
  Step().BeforePage(*document_);
  document_->SetPage(page, document_->Background());
  return step.End();
}

void DocumentSession::SetBackground(AGColor color) {
  EditStep step(*this, Tr("Change Background"));
  Step().BeforePage(*document_);
  document_->SetPage(document_->Page(), color);
  step.End();
}

}  // namespace host
