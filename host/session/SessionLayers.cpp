// Edits of layers and of the page.
#include <cmath>

#include "host/session/DocumentSession.h"
#include "host/session/SessionNotify_p.h"
#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

std::string ClosedLayerText(const LayerSettings& settings) {
  return settings.locked ? ErrorText("layer \"%s\" is locked: it takes no objects", {settings.name})
                         : ErrorText("layer \"%s\" is hidden: it takes no objects", {settings.name});
}

}  // namespace

bool DocumentSession::CheckLayer(LayerID id, std::string* error) const {
  if (document_->FindLayer(id) != nullptr) return true;
  *error = ErrorText("there is no such layer");
  return false;
}

bool DocumentSession::CheckActiveLayer(std::string* error) const {
  const LayerSettings& settings = document_->FindLayer(activeLayer_)->settings;
  if (settings.visible && !settings.locked) return true;
  *error = ClosedLayerText(settings);
  return false;
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

bool DocumentSession::RemoveLayer(LayerID id, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  if (document_->Layers().size() == 1) {
    *error = ErrorText("the only layer can't be removed");
    return false;
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

bool DocumentSession::ChangeSettings(LayerID id, const char* name, LayerSettings settings, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  EditStep step(*this, name);
  Step().BeforeLayerSettings(*document_, id);
  document_->SetLayerSettings(id, std::move(settings));
  return step.End();
}

bool DocumentSession::SetLayerName(LayerID id, const std::string& name, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  if (name.empty() || FindInvalidUtf8(name) != name.size()) {
    *error = ErrorText("a layer needs a name");
    return false;
  }
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.name = name;
  return ChangeSettings(id, Tr("Rename Layer"), std::move(settings), error);
}

bool DocumentSession::SetLayerVisible(LayerID id, bool visible, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.visible = visible;
  return ChangeSettings(id, visible ? Tr("Show Layer") : Tr("Hide Layer"), std::move(settings), error);
}

bool DocumentSession::SetLayerLocked(LayerID id, bool locked, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  LayerSettings settings = document_->FindLayer(id)->settings;
  settings.locked = locked;
  return ChangeSettings(id, locked ? Tr("Lock Layer") : Tr("Unlock Layer"), std::move(settings), error);
}

bool DocumentSession::MoveLayer(LayerID id, std::size_t index, std::string* error) {
  if (!CheckLayer(id, error)) return false;
  EditStep step(*this, Tr("Move Layer"));
  Step().BeforeLayerMove(*document_, id);
  document_->MoveLayer(id, index);
  Step().AfterMove(*document_);
  return step.End();
}

bool DocumentSession::MoveToLayer(const ObjectIDs& ids, LayerID layer, std::string* error) {
  if (!CheckLayer(layer, error) || !CheckEditable(ids, error)) return false;
  const Layer& target = *document_->FindLayer(layer);
  if (!target.IsEditable()) {
    *error = ClosedLayerText(target.settings);
    return false;
  }
  EditStep step(*this, Tr("Move to Layer"));
  for (const ObjectID id : InDrawingOrder(ids)) {
    if (document_->LayerOf(id) != &target) MoveOne(id, {layer, target.objects.Count()});
  }
  return step.End();
}

bool DocumentSession::SetPage(const AGSize& page, std::string* error) {
  if (!(page.width > 0 && page.height > 0) || !std::isfinite(page.width) || !std::isfinite(page.height)) {
    *error = ErrorText("the sides of a page are numbers above 0");
    return false;
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
