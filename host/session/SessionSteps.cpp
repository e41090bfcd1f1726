#include "host/session/SessionSteps.h"

#include <algorithm>

#include "host/model/InstanceCall.h"
#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

// A name is for a menu. It is cut between characters of UTF-8.
std::string Shortened(std::string name) {
  constexpr std::size_t kLongestName = 200;  // bytes
  if (name.size() <= kLongestName) return name;
  std::size_t length = kLongestName;
  while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
  name.resize(length);
  return name + "\xE2\x80\xA6";  // an ellipsis
}

}  // namespace

void SessionSteps::Begin(std::string name) {
  open_.push_back(std::make_unique<UndoStep>());
  open_.back()->name = Shortened(std::move(name));
}

void SessionSteps::SetActionName(std::string name) {
  actionName_ = Shortened(std::move(name));
  if (!open_.empty() && !actionName_.empty()) open_.front()->name = actionName_;
}

bool SessionSteps::End() {
  if (open_.empty()) return false;
  std::unique_ptr<UndoStep> step = std::move(open_.back());
  open_.pop_back();
  if (!open_.empty()) {
    const bool changed = !step->IsEmpty();
    open_.back()->Merge(std::move(*step));
    return changed;
  }
  selection_.Prune();
  if (!step->Seal(document_)) return false;
  if (step->name.empty()) step->name = Tr("Change");
  history_.Push(std::move(step));
  ++changes_;
  observers_.Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
  return true;
}

void SessionSteps::Cancel() {
  if (open_.empty()) return;
  Rewind();
  open_.pop_back();
}

void SessionSteps::Rewind() {
  if (open_.empty()) return;
  open_.back()->Rewind(document_);
  AfterRemoval();
}

std::string SessionSteps::UndoTitle() const {
  return history_.CanUndo() ? TrWith("Undo %s", history_.UndoName()) : Tr("Undo");
}
std::string SessionSteps::RedoTitle() const {
  return history_.CanRedo() ? TrWith("Redo %s", history_.RedoName()) : Tr("Redo");
}

void SessionSteps::AfterRemoval() {
  selection_.Prune();
  activeLayer_.Prune();
}

// Objects that the step brought back or changed become selected, so that it is seen what happened.
void SessionSteps::AfterChange(const ObjectIDs& toSelect) {
  ++changes_;
  AfterRemoval();
  const auto known = [this](ObjectID id) { return document_.Find(id) != nullptr && selection_.IsEditable(id); };
  ObjectIDs present;
  std::copy_if(toSelect.begin(), toSelect.end(), std::back_inserter(present), known);
  if (!present.empty()) selection_.Select(present);
  observers_.Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
}

bool SessionSteps::Undo() {
  if (IsOpen()) return false;
  UndoStep* step = history_.StepBack();
  if (step == nullptr) return false;
  step->Undo(document_);
  AfterChange(step->Objects());
  return true;
}

bool SessionSteps::Redo() {
  if (IsOpen()) return false;
  UndoStep* step = history_.StepForward();
  if (step == nullptr) return false;
  step->Redo(document_);
  AfterChange(step->Objects());
  return true;
}

bool SessionSteps::GoTo(std::size_t position) {
  if (IsOpen() || position > history_.Count()) return false;
  while (history_.Position() > position) Undo();
  while (history_.Position() < position) Redo();
  return true;
}

ObjectID SessionSteps::Insert(std::unique_ptr<DocumentObject> object, const ObjectPlace& place) {
  const ObjectID id = document_.InsertObject(std::move(object), place);
  Step().Inserted(document_, id);
  return id;
}

void SessionSteps::Remove(ObjectID id) {
  static_cast<void>(NoticeChange(id));  // what can't be written goes as it was
  for (const auto& step : open_) step->TakeStatesOf(document_, id);
  Step().BeforeRemoval(document_, id);
  const std::unique_ptr<DocumentObject> object = document_.RemoveObject(id);
  InstanceCall::Destroy(std::move(object->instance));
}

void SessionSteps::Move(ObjectID id, const ObjectPlace& place) {
  Step().BeforeMove(document_, id);
  document_.MoveObject(id, place);
  Step().AfterMove(document_);
}

Result<> SessionSteps::NoticeChange(ObjectID id) {
  const DocumentObject* object = document_.Find(id);
  if (object == nullptr || !object->instance) return {};
  AKMemoryBlock record;
  int status = WriteRecord(*object->instance, &record);
  if (status != 0) {
    const Problem why(N_("class \"%s\" can't write its record (status %s): the object is as it was before"),
                      {object->classID.chars, std::to_string(status)});
    const AKMemoryBlock known = object->record;
    document_.ReplaceInstance(id, MakeInstance(object->classID, known, &status), known);
    return why;
  }
  if (record == object->record) return {};
  Step().BeforeRecord(document_, id);
  document_.NoteRecord(id, record);
  return {};
}

void SessionSteps::RemoveLayer(LayerID id) {
  for (const auto& step : open_) step->TakeSettingsOf(document_, id);
  Step().BeforeLayerRemoval(document_, id);
  document_.RemoveLayer(id);
}

void SessionSteps::MarkSaved() {
  if (!IsOpen()) history_.MarkClean();
  observers_.Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
}

}  // namespace host
