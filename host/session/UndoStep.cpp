#include "host/session/UndoStep.h"

#include <unordered_set>

namespace host {

template <typename Make>
void UndoStep::Note(const Document& document, Kind kind, std::uint64_t id, Make make) {
  const auto [slot, isNew] = open_.try_emplace({kind, id}, nullptr);
  if (!isNew) return;
  changes_.push_back(make(document, id));
  slot->second = changes_.back().get();
}

void UndoStep::BeforePlacement(const Document& document, ObjectID id) {
  Note(document, Kind::kPlacement, id, &NewPlacementChange);
}

void UndoStep::BeforeStyle(const Document& document, ObjectID id) { Note(document, Kind::kStyle, id, &NewStyleChange); }

void UndoStep::BeforeRecord(const Document& document, ObjectID id) {
  Note(document, Kind::kRecord, id, &NewRecordChange);
}

void UndoStep::BeforePage(const Document& document) {
  Note(document, Kind::kPage, 0, [](const Document& page, std::uint64_t) { return NewPageChange(page); });
}

void UndoStep::BeforeLayerSettings(const Document& document, LayerID id) {
  Note(document, Kind::kLayerSettings, id, &NewLayerSettingsChange);
}

void UndoStep::Inserted(const Document& document, ObjectID id) { Note(document, Kind::kPresence, id, &NewInsertion); }

void UndoStep::TakeStatesOf(const Document& document, ObjectID id) {
  for (const Kind kind : {Kind::kPlacement, Kind::kStyle, Kind::kRecord, Kind::kPresence}) {
    const auto found = open_.find({kind, id});
    if (found != open_.end()) found->second->Seal(document);
  }
}

void UndoStep::TakeSettingsOf(const Document& document, LayerID id) {
  const auto found = open_.find({Kind::kLayerSettings, id});
  if (found != open_.end()) found->second->Seal(document);
}

void UndoStep::BeforeRemoval(const Document& document, ObjectID id) { changes_.push_back(NewRemoval(document, id)); }

void UndoStep::BeforeMove(const Document& document, ObjectID id) { changes_.push_back(NewMove(document, id)); }

void UndoStep::BeforeLayerMove(const Document& document, LayerID id) { changes_.push_back(NewLayerMove(document, id)); }

void UndoStep::AfterMove(const Document& document) {
  changes_.back()->Seal(document);
  if (changes_.back()->IsVoid()) changes_.pop_back();
}

void UndoStep::LayerInserted(const Document& document, LayerID id) {
  changes_.push_back(NewLayerInsertion(document, id));
}

void UndoStep::BeforeLayerRemoval(const Document& document, LayerID id) {
  changes_.push_back(NewLayerRemoval(document, id));
}

bool UndoStep::Seal(const Document& document) {
  for (const auto& [key, change] : open_) change->Seal(document);
  open_.clear();
  std::erase_if(changes_, [](const std::unique_ptr<Change>& change) { return change->IsVoid(); });
  changes_.shrink_to_fit();
  return !changes_.empty();
}

// A change that this step has begun already goes on: its state before is the older one.
void UndoStep::Merge(UndoStep&& inner) {
  std::map<const Change*, Key> keys;
  for (const auto& [key, change] : inner.open_) keys.emplace(change, key);
  for (auto& change : inner.changes_) {
    const auto key = keys.find(change.get());
    if (key != keys.end() && !open_.try_emplace(key->second, change.get()).second) continue;
    changes_.push_back(std::move(change));
  }
  inner.open_.clear();
  inner.changes_.clear();
  if (name.empty()) name = std::move(inner.name);
}

void UndoStep::Undo(Document& document) {
  for (auto change = changes_.rbegin(); change != changes_.rend(); ++change) (*change)->Undo(document);
}

void UndoStep::Redo(Document& document) {
  for (const auto& change : changes_) change->Redo(document);
}

void UndoStep::Rewind(Document& document) {
  Undo(document);
  open_.clear();
  changes_.clear();
}

std::size_t UndoStep::Bytes() const {
  std::size_t bytes = sizeof(*this) + name.size();
  for (const auto& change : changes_) bytes += sizeof(change) + change->Bytes();
  return bytes;
}

std::vector<ObjectID> UndoStep::Objects() const {
  std::vector<ObjectID> objects;
  std::unordered_set<ObjectID> seen;
  for (const auto& change : changes_) {
    const ObjectID id = change->Object();
    if (id != kNoObjectID && seen.insert(id).second) objects.push_back(id);
  }
  return objects;
}

}  // namespace host
