// A node of the tree that holds a dictionary's entries: keys in ascending byte order, each with a value (in a leaf) or
// with the node below that holds the keys from it on (in an inner node).
//
// A search should look at one short run of memory, not at every key's text, which lies elsewhere. So a node keeps the
// leading bytes that all its keys share (up to kMaxPrefix of them) and, for each key, its "head": the next 8 bytes as a
// big-endian number. Only keys with equal heads are compared by their texts.
//
// Node and arrays are one allocation: header, heads, items. Items are moved by copying their bytes; strings and values
// are handles that do not care where they lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "kit/values/AKValue.h"

class AKDictionaryNode {
 public:
  static constexpr unsigned int kMaxCount = 64;      ///< entries of a leaf
  static constexpr unsigned int kMaxChildren = 256;  ///< of an inner node: with a million entries two levels of them do
  static constexpr unsigned int kMaxPrefix = 18;
  static constexpr unsigned int kPrefetchedLines = 34;

  struct LeafItem {
    AKString key;
    AKValue value;
  };
  struct InnerItem {
    AKString key;  // at most the least key below `child`; the first one of a node is not looked at
    AKDictionaryNode* child;
  };

  /// Level 0 is a leaf.
  static AKDictionaryNode* New(unsigned int level, unsigned int capacity);
  /// Frees the node, its items and, for an inner node, all nodes below.
  static void Delete(AKDictionaryNode* node);
  /// A copy of a leaf with room for more; the old one is gone.
  static AKDictionaryNode* Grown(AKDictionaryNode* leaf, unsigned int capacity);

  bool IsLeaf() const { return level_ == 0; }
  unsigned int Level() const { return level_; }
  unsigned int Count() const { return count_; }
  bool IsFull() const { return count_ == capacity_; }
  unsigned int Capacity() const { return capacity_; }
  LeafItem& Leaf(unsigned int index) { return LeafItems()[index]; }
  const LeafItem& Leaf(unsigned int index) const { return const_cast<AKDictionaryNode*>(this)->LeafItems()[index]; }
  InnerItem& Inner(unsigned int index) { return InnerItems()[index]; }
  const InnerItem& Inner(unsigned int index) const { return const_cast<AKDictionaryNode*>(this)->InnerItems()[index]; }
  const AKString& Key(unsigned int index) const { return IsLeaf() ? Leaf(index).key : Inner(index).key; }

  /// Has the whole of a full leaf on its way to the processor, all at once; beyond a smaller node it does no harm.
  void Prefetch() const {
    const char* const bytes = reinterpret_cast<const char*>(this);
    for (unsigned int i = 0; i < kPrefetchedLines; ++i) __builtin_prefetch(bytes + std::size_t{64} * i);
  }

  /// The index of the first key that is not below `key`; `found` tells whether it is `key`.
  unsigned int LowerBound(std::string_view key, bool* found) const;
  /// In an inner node: the index of the child in whose range `key` lies.
  unsigned int ChildIndex(std::string_view key) const;

  /// The node must not be full.
  void InsertLeaf(unsigned int index, AKString&& key, AKValue&& value);
  void InsertInner(unsigned int index, AKString&& key, AKDictionaryNode* child);
  /// In an inner node: the new key of the first child, not above the second one's.
  void ReplaceFirstKey(AKString&& key);
  /// Destroys the item, not the child of an inner one.
  void Erase(unsigned int index);
  /// Moves the items from `index` on to a new node of the same level.
  AKDictionaryNode* Split(unsigned int index);

  /// Leaves form a list in the order of their keys.
  AKDictionaryNode* Next() const { return next_; }
  void LinkAfter(AKDictionaryNode* previous);
  void Unlink();

 private:
  AKDictionaryNode() = default;

  std::uint64_t* Heads() { return reinterpret_cast<std::uint64_t*>(this + 1); }
  const std::uint64_t* Heads() const { return reinterpret_cast<const std::uint64_t*>(this + 1); }
  LeafItem* LeafItems() { return reinterpret_cast<LeafItem*>(Heads() + capacity_); }
  InnerItem* InnerItems() { return reinterpret_cast<InnerItem*>(Heads() + capacity_); }
  unsigned char* Items() { return reinterpret_cast<unsigned char*>(Heads() + capacity_); }
  unsigned int ItemSize() const { return IsLeaf() ? sizeof(LeafItem) : sizeof(InnerItem); }

  bool SharesPrefix(std::string_view key) const;
  std::uint64_t HeadOf(std::string_view key) const;
  void OpenGap(unsigned int index, const AKString& key);
  void RenewWeakHeads();
  void UpdateHeads();

  AKDictionaryNode* next_ = nullptr;
  AKDictionaryNode* previous_ = nullptr;
  std::uint16_t count_ = 0;
  std::uint16_t capacity_ = 0;
  std::uint8_t level_ = 0;
  std::uint8_t prefixLength_ = 0;
  char prefix_[kMaxPrefix] = {};
};

static_assert(sizeof(AKDictionaryNode) % alignof(std::uint64_t) == 0);
