#include "host/history/UndoStep.h"

#include <unordered_set>

namespace host {

template <typename Make>
void UndoStep::Note(const Document& document, Kind kind, std::uint64_t id, Make make) {
  const Key key{kind, id};
  if (open_.contains(key)) return;
  changes_.push_back({make(document, id), key});
  try {
    open_.emplace(key, changes_.back().change.get());
  } catch (...) {
    changes_.pop_back();
    throw;
  }
}

void UndoStep::BeforePlacement(const Document& document, ObjectID id) {
  Note(document, Kind::kPlacement, id, &NewPlacementChange);
}

void UndoStep::BeforeStyle(const Document& document, ObjectID id) { Note(document, Kind::kStyle, id, &NewStyleChange); }

void UndoStep::BeforeMarks(const Document& document, ObjectID id) { Note(document, Kind::kMarks, id, &NewMarksChange); }

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
  for (const Kind kind : {Kind::kPlacement, Kind::kStyle, Kind::kMarks, Kind::kRecord, Kind::kPresence}) {
    const auto found = open_.find({kind, id});
    if (found != open_.end()) found->second->Seal(document);
  }
}

void UndoStep::TakeSettingsOf(const Document& document, LayerID id) {
  const auto found = open_.find({Kind::kLayerSettings, id});
  if (found != open_.end()) found->second->Seal(document);
}

void UndoStep::BeforeRemoval(const Document& document, ObjectID id) { Append(NewRemoval(document, id)); }

void UndoStep::BeforeMove(const Document& document, ObjectID id) { Append(NewMove(document, id)); }

void UndoStep::BeforeLayerMove(const Document& document, LayerID id) { Append(NewLayerMove(document, id)); }

void UndoStep::AfterMove(const Document& document) {
  changes_.back().change->Seal(document);
  if (changes_.back().change->IsVoid()) changes_.pop_back();
}

void UndoStep::LayerInserted(const Document& document, LayerID id) { Append(NewLayerInsertion(document, id)); }

void UndoStep::BeforeLayerRemoval(const Document& document, LayerID id) { Append(NewLayerRemoval(document, id)); }

bool UndoStep::Seal(const Document& document) {
  for (const auto& [key, change] : open_) change->Seal(document);
  open_.clear();
  std::erase_if(changes_, [](const Entry& entry) { return entry.change->IsVoid(); });
  changes_.shrink_to_fit();
  return !changes_.empty();
}

// A change that this step has begun already goes on: its state before is the older one.
void UndoStep::Merge(UndoStep&& inner) {
  if (name.empty()) name = std::move(inner.name);
  if (changes_.empty()) {
    changes_.swap(inner.changes_);
    open_.swap(inner.open_);
    return;
  }
  for (Entry& entry : inner.changes_) {
    const bool isOpen = inner.open_.contains(entry.key);
    if (isOpen && !open_.try_emplace(entry.key, entry.change.get()).second) continue;
    changes_.push_back(std::move(entry));
  }
  inner.open_.clear();
  inner.changes_.clear();
}

void UndoStep::Undo(Document& document) {
  const Document::AreaBatch batch(document);
  for (auto entry = changes_.rbegin(); entry != changes_.rend(); ++entry) entry->change->Undo(document);
}

void UndoStep::Redo(Document& document) {
  const Document::AreaBatch batch(document);
  for (const Entry& entry : changes_) entry.change->Redo(document);
}

void UndoStep::Rewind(Document& document) {
  Undo(document);
  open_.clear();
  changes_.clear();
}

std::size_t UndoStep::Bytes() const {
  std::size_t bytes = sizeof(*this) + name.size();
  for (const Entry& entry : changes_) bytes += sizeof(entry) + entry.change->Bytes();
  return bytes;
}

std::vector<ObjectID> UndoStep::Objects() const {
  std::vector<ObjectID> objects;
  std::unordered_set<ObjectID> seen;
  for (const Entry& entry : changes_) {
    const ObjectID id = entry.change->Object();
    if (id != kNoObjectID && seen.insert(id).second) objects.push_back(id);
  }
  return objects;
}

}  // namespace host
