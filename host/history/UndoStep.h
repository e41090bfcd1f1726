// One step of the undo history: a name and the changes that were made under it.
//
// A step is open while its changes are made, as during a drag. Repeated changes of the same thing are one change with
// the state before the first and after the last.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "host/history/Change.h"

namespace host {

class UndoStep {
 public:
  std::string name;  ///< of the action, without "Undo": "Change Rectangle Curvature"

  // What is about to happen, or has just happened for insertions. Moves are sealed by AfterMove.

  void BeforePlacement(const Document& document, ObjectID id);
  void BeforeStyle(const Document& document, ObjectID id);
  void BeforeMarks(const Document& document, ObjectID id);
  void BeforeRecord(const Document& document, ObjectID id);
  void BeforePage(const Document& document);
  void BeforeLayerSettings(const Document& document, LayerID id);
  void Inserted(const Document& document, ObjectID id);
  void BeforeRemoval(const Document& document, ObjectID id);
  void BeforeMove(const Document& document, ObjectID id);
  void BeforeLayerMove(const Document& document, LayerID id);
  void AfterMove(const Document& document);
  void LayerInserted(const Document& document, LayerID id);
  void BeforeLayerRemoval(const Document& document, LayerID id);

  /// An object or a layer is about to be removed by this step or by one that was opened within it: what is open about
  /// it takes its state now, while it is there.
  void TakeStatesOf(const Document& document, ObjectID id);
  void TakeSettingsOf(const Document& document, LayerID id);

  /// Takes the states after and drops what changed nothing. True when anything is left.
  bool Seal(const Document& document);
  void Undo(Document& document);
  void Redo(Document& document);
  /// Takes over the changes of a step that was opened and closed within this open one.
  void Merge(UndoStep&& inner);
  /// Undoes an open step and forgets its changes; the step stays open.
  void Rewind(Document& document);

  bool IsEmpty() const { return changes_.empty(); }
  std::size_t Bytes() const;
  /// The objects that it is about, each once, in the order of the changes.
  std::vector<ObjectID> Objects() const;

 private:
  enum class Kind { kNone, kPlacement, kStyle, kMarks, kRecord, kPage, kLayerSettings, kPresence };
  struct Key {
    Kind kind = Kind::kNone;
    std::uint64_t id = 0;
    bool operator==(const Key&) const = default;
  };
  // Numbers of objects follow each other, which spreads them evenly as they are.
  struct KeyHash {
    std::size_t operator()(const Key& key) const { return key.id * 8 + static_cast<std::size_t>(key.kind); }
  };
  struct Entry {
    std::unique_ptr<Change> change;
    Key key;  // of kind kNone for a change that is complete at once
  };

  template <typename Make>
  void Note(const Document& document, Kind kind, std::uint64_t id, Make make);

  void Append(std::unique_ptr<Change> change) { changes_.push_back({std::move(change), {}}); }

  std::vector<Entry> changes_;
  std::unordered_map<Key, Change*, KeyHash> open_;  // not sealed yet
};

}  // namespace host
