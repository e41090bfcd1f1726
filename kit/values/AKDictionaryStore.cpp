#include <algorithm>
#include <utility>

#include "kit/values/AKDictionaryStore_p.h"

namespace {

// Most dictionaries hold a few entries; the first leaf grows with them.
constexpr unsigned int kFirstCapacity = 2;

// Up to about this many entries the nodes stay in the processor's caches, and fetching them ahead only costs time.
constexpr unsigned int kMaxCachedCount = 10000;

std::string_view ViewOf(const AKString& key) { return {key.CStr(), key.Length()}; }

// Where a full node of which entry `index` is to be inserted is split. Keys that arrive in ascending order always go to
// the end: leaving the node full keeps the tree dense.
unsigned int SplitIndex(unsigned int index, unsigned int capacity) {
  return index == capacity ? capacity - 1 : capacity / 2;
}

}  // namespace

AKDictionaryStore::AKDictionaryStore() : root_(AKDictionaryNode::New(0, kFirstCapacity)) {}

AKDictionaryStore::AKDictionaryStore(const AKDictionaryStore& other) : AKDictionaryStore() {
  for (const AKDictionaryNode* leaf = other.FirstLeaf(); leaf != nullptr; leaf = leaf->Next()) {
    for (unsigned int i = 0; i < leaf->Count(); ++i) {
      bool added = false;
      const AKDictionaryNode::LeafItem& item = leaf->Leaf(i);
      *FindOrAdd(ViewOf(item.key), item.key, &added) = item.value;
    }
  }
}

const AKDictionaryNode* AKDictionaryStore::FirstLeaf() const {
  const AKDictionaryNode* node = root_;
  while (!node->IsLeaf()) node = node->Inner(0).child;
  return node;
}

AKDictionaryNode* AKDictionaryStore::LeafOf(std::string_view key, Way* way) const {
  const bool prefetches = count_ > kMaxCachedCount;
  AKDictionaryNode* node = root_;
  while (!node->IsLeaf()) {
    const unsigned int index = node->ChildIndex(key);
    if (way != nullptr) way->steps[way->count++] = {node, index};
    node = node->Inner(index).child;
    if (prefetches) node->Prefetch();
  }
  return node;
}

AKValue* AKDictionaryStore::Find(std::string_view key) {
  AKDictionaryNode* const leaf = LeafOf(key, nullptr);
  bool found = false;
  const unsigned int index = leaf->LowerBound(key, &found);
  return found ? &leaf->Leaf(index).value : nullptr;
}

AKValue* AKDictionaryStore::FindOrAdd(std::string_view key, const AKString& whole, bool* added) {
  Way way;
  AKDictionaryNode* leaf = LeafOf(key, &way);
  bool found = false;
  unsigned int index = leaf->LowerBound(key, &found);
  *added = !found;
  if (found) return &leaf->Leaf(index).value;
  if (leaf->IsFull()) leaf = MakeRoom(leaf, &way, &index);
  const bool isWhole = key.size() == whole.Length();
  leaf->InsertLeaf(index, isWhole ? AKString(whole) : AKString(key.data(), static_cast<unsigned int>(key.size())),
                   AKValue());
  ++count_;
  return &leaf->Leaf(index).value;
}

// Grows or splits a full leaf. Returns the leaf that entry `index` belongs to and adjusts the index to it.
AKDictionaryNode* AKDictionaryStore::MakeRoom(AKDictionaryNode* leaf, Way* way, unsigned int* index) {
  if (leaf->Capacity() < AKDictionaryNode::kMaxCount) {  // only a leaf that is the root is ever smaller
    root_ = AKDictionaryNode::Grown(leaf, std::min(2 * leaf->Capacity(), AKDictionaryNode::kMaxCount));
    return root_;
  }
  const unsigned int split = SplitIndex(*index, AKDictionaryNode::kMaxCount);
  AKDictionaryNode* const right = leaf->Split(split);
  right->LinkAfter(leaf);
  AddToParent(way, leaf, right);
  if (*index <= split) return leaf;  // at the split too: the right leaf's least key is known to the parent by now
  *index -= split;
  return right;
}

void AKDictionaryStore::AddToParent(Way* way, AKDictionaryNode* left, AKDictionaryNode* right) {
  while (way->count > 0) {
    const Step step = way->steps[--way->count];
    const unsigned int index = step.index + 1;
    // Keys below the least one that a first child was known by may have come since.
    if (step.index == 0) step.node->ReplaceFirstKey(AKString(left->Key(0)));
    if (!step.node->IsFull()) {
      step.node->InsertInner(index, AKString(right->Key(0)), right);
      return;
    }
    const unsigned int split = SplitIndex(index, AKDictionaryNode::kMaxChildren);
    AKDictionaryNode* const sibling = step.node->Split(split);
    if (index < split) {
      step.node->InsertInner(index, AKString(right->Key(0)), right);
    } else {
      sibling->InsertInner(index - split, AKString(right->Key(0)), right);
    }
    left = step.node;
    right = sibling;
  }
  root_ = AKDictionaryNode::New(left->Level() + 1, AKDictionaryNode::kMaxChildren);
  root_->InsertInner(0, AKString(left->Key(0)), left);
  root_->InsertInner(1, AKString(right->Key(0)), right);
}

void AKDictionaryStore::Remove(std::string_view key) {
  Way way;
  AKDictionaryNode* const leaf = LeafOf(key, &way);
  bool found = false;
  leaf->Erase(leaf->LowerBound(key, &found));
  --count_;
  if (leaf->Count() > 0 || leaf == root_) return;
  leaf->Unlink();
  AKDictionaryNode::Delete(leaf);
  RemoveFromParents(&way);
}

// The child at the end of the way is gone: so is every node above it that it was the only child of.
void AKDictionaryStore::RemoveFromParents(Way* way) {
  while (way->count > 0) {
    const Step step = way->steps[--way->count];
    step.node->Erase(step.index);
    if (step.node->Count() > 0) break;
    AKDictionaryNode::Delete(step.node);
    if (step.node == root_) root_ = AKDictionaryNode::New(0, kFirstCapacity);
  }
  while (!root_->IsLeaf() && root_->Count() == 1) {
    AKDictionaryNode* const child = root_->Inner(0).child;
    root_->Erase(0);
    AKDictionaryNode::Delete(root_);
    root_ = child;
  }
}
