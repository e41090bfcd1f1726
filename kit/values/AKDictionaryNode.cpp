#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "kit/containers/AKSwapNumber.h"
#include "kit/values/AKDictionaryNode_p.h"

namespace {

std::string_view ViewOf(const AKString& key) { return {key.CStr(), key.Length()}; }

std::size_t SharedLength(std::string_view first, std::string_view second) {
  const std::size_t most = std::min(first.size(), second.size());
  return static_cast<std::size_t>(std::mismatch(first.begin(), first.begin() + most, second.begin()).first -
                                  first.begin());
}

// The number of `numbers`, which ascend, that are below `wanted`. Without branches: which way a search goes cannot be
// predicted, and here that would cost more than all the rest.
unsigned int LowerBoundOf(std::uint64_t wanted, const std::uint64_t* numbers, unsigned int count) {
  const std::uint64_t* first = numbers;
  while (count > 1) {
    const unsigned int half = count / 2;
    first += first[half - 1] < wanted ? half : 0;
    count -= half;
  }
  return static_cast<unsigned int>(first - numbers) + (*first < wanted ? 1 : 0);
}

}  // namespace

AKDictionaryNode* AKDictionaryNode::New(unsigned int level, unsigned int capacity) {
  const std::size_t itemSize = level == 0 ? sizeof(LeafItem) : sizeof(InnerItem);
  void* const memory = std::malloc(sizeof(AKDictionaryNode) + capacity * (sizeof(std::uint64_t) + itemSize));
  if (memory == nullptr) throw std::bad_alloc();
  auto* const node = new (memory) AKDictionaryNode;
  node->level_ = static_cast<std::uint8_t>(level);
  node->capacity_ = static_cast<std::uint16_t>(capacity);
  return node;
}

void AKDictionaryNode::Delete(AKDictionaryNode* node) {
  for (unsigned int i = 0; i < node->count_; ++i) {
    if (node->IsLeaf()) {
      node->Leaf(i).~LeafItem();
    } else {
      Delete(node->Inner(i).child);
      node->Inner(i).~InnerItem();
    }
  }
  std::free(node);
}

AKDictionaryNode* AKDictionaryNode::Grown(AKDictionaryNode* leaf, unsigned int capacity) {
  AKDictionaryNode* const grown = New(0, capacity);
  std::memcpy(grown->Items(), leaf->Items(), std::size_t{leaf->count_} * sizeof(LeafItem));
  grown->count_ = std::exchange(leaf->count_, std::uint16_t{0});
  grown->UpdateHeads();
  Delete(leaf);
  return grown;
}

bool AKDictionaryNode::SharesPrefix(std::string_view key) const {
  if (key.size() < prefixLength_) return false;
  // The prefix is short: a loop is done before a call of memcmp has begun.
  for (unsigned int i = 0; i < prefixLength_; ++i) {
    if (key[i] != prefix_[i]) return false;
  }
  return true;
}

// The 8 bytes behind the shared prefix, padded with NULs. Of two keys with the prefix the one with the smaller head is
// the smaller.
std::uint64_t AKDictionaryNode::HeadOf(std::string_view key) const {
  key.remove_prefix(prefixLength_);
  std::uint64_t head = 0;
  if (key.size() >= sizeof(head)) {
    std::memcpy(&head, key.data(), sizeof(head));
    return AKSwapNumber64_EndianHostFromBig(head);
  }
  for (std::size_t i = 0; i < key.size(); ++i) head = head << 8 | static_cast<unsigned char>(key[i]);
  return key.empty() ? 0 : head << (8 * (sizeof(head) - key.size()));
}

unsigned int AKDictionaryNode::LowerBound(std::string_view key, bool* found) const {
  *found = false;
  if (count_ == 0) return 0;
  if (!SharesPrefix(key)) return key < std::string_view(prefix_, prefixLength_) ? 0 : count_;
  const std::uint64_t head = HeadOf(key);
  const std::uint64_t* const heads = Heads();
  unsigned int index = LowerBoundOf(head, heads, count_);
  if (index == count_ || heads[index] != head) return index;
  unsigned int end = index + 1;
  while (end < count_ && heads[end] == head) ++end;
  while (index < end) {
    const unsigned int middle = (index + end) / 2;
    const int order = ViewOf(Key(middle)).compare(key);
    if (order == 0) {
      *found = true;
      return middle;
    }
    if (order < 0) {
      index = middle + 1;
    } else {
      end = middle;
    }
  }
  return index;
}

unsigned int AKDictionaryNode::ChildIndex(std::string_view key) const {
  bool found = false;
  const unsigned int index = LowerBound(key, &found);
  return found || index == 0 ? index : index - 1;
}

void AKDictionaryNode::InsertLeaf(unsigned int index, AKString&& key, AKValue&& value) {
  OpenGap(index, key);
  new (&Leaf(index)) LeafItem{std::move(key), std::move(value)};
  if (!SharesPrefix(ViewOf(Leaf(index).key)) || count_ == 1) UpdateHeads();
}

void AKDictionaryNode::InsertInner(unsigned int index, AKString&& key, AKDictionaryNode* child) {
  OpenGap(index, key);
  new (&Inner(index)) InnerItem{std::move(key), child};
  if (!SharesPrefix(ViewOf(Inner(index).key)) || count_ == 1) UpdateHeads();
}

void AKDictionaryNode::OpenGap(unsigned int index, const AKString& key) {
  const std::size_t moved = count_ - index;
  std::uint64_t* const heads = Heads();
  std::memmove(heads + index + 1, heads + index, moved * sizeof(std::uint64_t));
  unsigned char* const item = Items() + std::size_t{index} * ItemSize();
  std::memmove(item + ItemSize(), item, moved * ItemSize());
  if (SharesPrefix(ViewOf(key))) heads[index] = HeadOf(ViewOf(key));
  ++count_;
}

void AKDictionaryNode::ReplaceFirstKey(AKString&& key) {
  Inner(0).key = std::move(key);
  UpdateHeads();
}

void AKDictionaryNode::Erase(unsigned int index) {
  if (IsLeaf()) {
    Leaf(index).~LeafItem();
  } else {
    Inner(index).~InnerItem();
  }
  --count_;
  const std::size_t moved = count_ - index;
  std::uint64_t* const heads = Heads();
  std::memmove(heads + index, heads + index + 1, moved * sizeof(std::uint64_t));
  unsigned char* const item = Items() + std::size_t{index} * ItemSize();
  std::memmove(item, item + ItemSize(), moved * ItemSize());
}

AKDictionaryNode* AKDictionaryNode::Split(unsigned int index) {
  AKDictionaryNode* const right = New(level_, capacity_);
  right->count_ = static_cast<std::uint16_t>(count_ - index);
  std::memcpy(right->Items(), Items() + std::size_t{index} * ItemSize(), std::size_t{right->count_} * ItemSize());
  std::memcpy(right->Heads(), Heads() + index, std::size_t{right->count_} * sizeof(std::uint64_t));
  std::memcpy(right->prefix_, prefix_, kMaxPrefix);
  right->prefixLength_ = prefixLength_;
  count_ = static_cast<std::uint16_t>(index);
  RenewWeakHeads();
  right->RenewWeakHeads();
  return right;
}

// A longer prefix lets heads tell more keys apart, but to find it costs a look at the keys' texts. It is worth that
// once the heads differ in their last bytes alone.
void AKDictionaryNode::RenewWeakHeads() {
  constexpr unsigned int kLastBits = 16;
  if (count_ == 0 || (Heads()[0] ^ Heads()[count_ - 1U]) >> kLastBits == 0) UpdateHeads();
}

// The keys are sorted, so what the first and the last share, all share. One key alone would share all of itself with
// itself; it keeps no prefix, so that the next key has a head to be told apart by.
void AKDictionaryNode::UpdateHeads() {
  if (count_ == 0) return;
  const std::string_view first = ViewOf(Key(0));
  const std::size_t shared = count_ == 1 ? 0 : SharedLength(first, ViewOf(Key(count_ - 1U)));
  prefixLength_ = static_cast<std::uint8_t>(std::min<std::size_t>(shared, kMaxPrefix));
  std::memcpy(prefix_, first.data(), prefixLength_);
  for (unsigned int i = 0; i < count_; ++i) Heads()[i] = HeadOf(ViewOf(Key(i)));
}

void AKDictionaryNode::LinkAfter(AKDictionaryNode* previous) {
  previous_ = previous;
  next_ = previous->next_;
  previous->next_ = this;
  if (next_ != nullptr) next_->previous_ = this;
}

void AKDictionaryNode::Unlink() {
  if (previous_ != nullptr) previous_->next_ = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
}
