// The entries of a dictionary in ascending byte order of their keys: a B+ tree, so that a million keys in any order
// take few cache misses each. Values of a dictionary move when entries are added or removed.
#pragma once

#include <string_view>

#include "kit/values/AKDictionaryNode_p.h"

class AKDictionaryStore {
 public:
  AKDictionaryStore();
  AKDictionaryStore(const AKDictionaryStore& other);
  AKDictionaryStore& operator=(const AKDictionaryStore&) = delete;
  ~AKDictionaryStore() { AKDictionaryNode::Delete(root_); }

  unsigned int Count() const { return count_; }
  const AKDictionaryNode* FirstLeaf() const;

  /// Null when there is no such key. Valid until the next Put or Remove.
  AKValue* Find(std::string_view key);
  const AKValue* Find(std::string_view key) const { return const_cast<AKDictionaryStore*>(this)->Find(key); }
  /// The value of `key`, or that of a new, empty entry; `added` tells which. The new entry's key is `whole`, shared,
  /// when that is the same text, else a copy. Valid until the next change.
  AKValue* FindOrAdd(std::string_view key, const AKString& whole, bool* added);
  /// The key must be there.
  void Remove(std::string_view key);

 private:
  // The way from the root to a leaf. A tree of 2^32 entries, of nodes that are half full, has 8 levels.
  struct Step {
    AKDictionaryNode* node;
    unsigned int index;
  };
  struct Way {
    static constexpr unsigned int kMaxHeight = 16;
    Step steps[kMaxHeight];
    unsigned int count = 0;
  };

  AKDictionaryNode* LeafOf(std::string_view key, Way* way) const;
  AKDictionaryNode* MakeRoom(AKDictionaryNode* leaf, Way* way, unsigned int* index);
  void AddToParent(Way* way, AKDictionaryNode* left, AKDictionaryNode* right);
  void RemoveFromParents(Way* way);

  AKDictionaryNode* root_;
  unsigned int count_ = 0;
};
