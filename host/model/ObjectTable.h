// The objects of a document by their IDs, and their IDs by their instances.
//
// Both look-ups touch one cache line of a large document's tables, where chained hash maps touch three or more: edits
// all over a document of 100,000 objects cost about what they cost in one of 100. The table owns the objects. IDs are
// given upwards from 1, so entries lie in pages by ID; a page without objects is freed.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "host/model/DocumentObject.h"

namespace host {

struct Layer;

/// The IDs of instances: a hash table with linear probing, at most half full.
class InstanceIndex {
 public:
  /// kNoObjectID when the instance is not there.
  ObjectID Find(const AKObject* instance) const;
  /// The instance must not be there.
  void Insert(const AKObject* instance, ObjectID id);
  /// One that is not there is passed over.
  void Remove(const AKObject* instance);

 private:
  struct Slot {
    const AKObject* instance = nullptr;
    ObjectID id = kNoObjectID;
  };

  std::size_t Home(const AKObject* instance) const;
  std::size_t SlotOf(const AKObject* instance) const;
  void Grow();

  std::vector<Slot> slots_;  // as many as a power of two, or none
  std::size_t count_ = 0;
};

class ObjectTable {
 public:
  struct Entry {
    std::unique_ptr<DocumentObject> object;
    Layer* layer = nullptr;
  };

  std::size_t Count() const { return count_; }
  /// Null for an unknown ID.
  Entry* Find(ObjectID id) const {
    const std::size_t page = id / kPageSize;
    if (page >= pages_.size() || pages_[page] == nullptr) return nullptr;
    Entry& entry = pages_[page]->entries[id % kPageSize];
    return entry.object == nullptr ? nullptr : &entry;
  }
  /// The object has an ID that is not there.
  void Insert(std::unique_ptr<DocumentObject> object, Layer* layer);
  /// Takes the object of an ID that is there.
  std::unique_ptr<DocumentObject> Remove(ObjectID id);
  template <typename F>
  void ForEach(F f) {
    for (const auto& page : pages_) {
      if (page == nullptr) continue;
      for (Entry& entry : page->entries) {
        if (entry.object != nullptr) f(*entry.object);
      }
    }
  }

 private:
  static constexpr std::size_t kPageSize = 256;
  struct Page {
    std::array<Entry, kPageSize> entries;
    std::size_t used = 0;
  };

  std::vector<std::unique_ptr<Page>> pages_;
  std::size_t count_ = 0;
};

}  // namespace host
