// The objects of a layer in drawing order, the hindmost first.
//
// Entries lie in blocks of at most 512, so that an object is found, inserted, removed or moved in a document of
// 100,000 about as fast as in one of 100. Beside each entry stands the box that it paints in, and beside each block a
// box of all of them: drawing a part of a document passes over the rest without looking at the objects. The objects
// belong to the document.
#pragma once

#include <memory>
#include <vector>

#include "host/model/DocumentObject.h"
#include "kit/objects/AKObject.h"

namespace host {

struct ObjectEntry {
  AGRect painted;
  DocumentObject* object;
};

/// A stretch of the order. Its box holds those of its entries, and may be larger.
struct ObjectBlock {
  std::vector<ObjectEntry> entries;
  AGRect painted{1, 1, -1, -1};  // inside out: nothing
  std::size_t number = 0;        // among the blocks

  void Include(const AGRect& box);
};

/// True when the boxes share a point; a box with a NaN touches nothing.
constexpr bool Touches(const AGRect& a, const AGRect& b) {
  return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
}

/// Fetches an object into the cache, all of it at once: edits and saving look at objects all over the memory.
inline void FetchObject(const DocumentObject* object) {
  const auto* first = reinterpret_cast<const char*>(object);
  for (std::size_t offset = 0; offset < sizeof(*object); offset += 64) __builtin_prefetch(first + offset);
}

/// The same of an instance: its header, and the fields of the class itself, which stand behind those of its parents.
/// Null is passed over.
inline void FetchInstance(const AKObject* instance) {
  if (instance == nullptr) return;
  const auto* first = reinterpret_cast<const char*>(instance);
  __builtin_prefetch(first);
  __builtin_prefetch(first + sizeof(AKObjectSymbolVect));
}

class ObjectOrder {
 public:
  std::size_t Count() const { return count_; }
  /// The object at an index below Count().
  DocumentObject* At(std::size_t index) const;
  /// The index of an object of this order.
  std::size_t IndexOf(DocumentObject* object) const;

  /// An index beyond the end appends.
  void Insert(std::size_t index, DocumentObject* object);
  void Remove(DocumentObject* object);
  /// To be called when what the object paints in may have changed. Returns the former box.
  AGRect Update(DocumentObject* object);

  /// Calls `f` with each object, the hindmost first. Objects lie all over the memory, so those that follow are fetched
  /// ahead: it takes a third of the time off saving 100,000.
  template <typename F>
  void ForEach(F f) const {
    for (const auto& block : blocks_) {
      const auto& entries = block->entries;
      for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i + kAhead < entries.size()) FetchObject(entries[i + kAhead].object);
        if (i + kAhead / 2 < entries.size()) FetchInstance(entries[i + kAhead / 2].object->instance.get());
        f(*entries[i].object);
      }
    }
  }
  /// Calls `f` with each object that may paint within `area`, the hindmost first.
  template <typename F>
  void ForEachIn(const AGRect& area, F f) const {
    for (const auto& block : blocks_) {
      if (!Touches(block->painted, area)) continue;
      for (const ObjectEntry& entry : block->entries) {
        if (Touches(entry.painted, area)) f(*entry.object);
      }
    }
  }
  /// The foremost object within `area` for which `test` is true; null when there is none.
  template <typename F>
  DocumentObject* FindFrontIn(const AGRect& area, F test) const {
    for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block) {
      if (!Touches((*block)->painted, area)) continue;
      const auto& entries = (*block)->entries;
      for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        if (Touches(entry->painted, area) && test(*entry->object)) return entry->object;
      }
    }
    return nullptr;
  }

 private:
  /// How many objects ahead of their use they are fetched into the cache.
  static constexpr std::size_t kAhead = 8;
  /// Puts the number of a block's entries, which changed, beside those of the others.
  void Recount(const ObjectBlock& block) { sizes_[block.number] = static_cast<std::uint32_t>(block.entries.size()); }
  /// Numbers the blocks from `first` on.
  void Renumber(std::size_t first);
  void Split(ObjectBlock* block);

  std::vector<std::unique_ptr<ObjectBlock>> blocks_;
  std::vector<std::uint32_t> sizes_;  // of the blocks, close together: indexes are counted from these
  std::size_t count_ = 0;
};

}  // namespace host
