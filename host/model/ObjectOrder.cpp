#include "host/model/ObjectOrder.h"

#include <algorithm>
#include <numeric>

namespace host {
namespace {

constexpr std::size_t kMostEntries = 512;

// Entries seldom move far from where they were seen last: the search goes outwards from there.
std::size_t PositionIn(const ObjectBlock& block, DocumentObject* object) {
  const auto& entries = block.entries;
  const std::size_t guess = std::min<std::size_t>(object->slot, entries.size() - 1);
  std::size_t found = guess;
  for (std::size_t d = 0; entries[found].object != object; ++d) {
    if (guess + d < entries.size() && entries[guess + d].object == object) found = guess + d;
    if (guess >= d && entries[guess - d].object == object) found = guess - d;
  }
  object->slot = static_cast<std::uint32_t>(found);
  return found;
}

template <typename Entries>
auto At(Entries& entries, std::size_t index) {
  return entries.begin() + static_cast<std::ptrdiff_t>(index);
}

}  // namespace

void ObjectBlock::Include(const AGRect& box) {
  if (box.IsEmpty()) return;
  if (painted.IsEmpty()) {
    painted = box;
    return;
  }
  painted = {std::min(painted.x0, box.x0), std::min(painted.y0, box.y0), std::max(painted.x1, box.x1),
             std::max(painted.y1, box.y1)};
}

DocumentObject* ObjectOrder::At(std::size_t index) const {
  std::size_t b = 0;
  while (index >= sizes_[b]) index -= sizes_[b++];
  return blocks_[b]->entries[index].object;
}

std::size_t ObjectOrder::IndexOf(DocumentObject* object) const {
  const auto last = sizes_.begin() + static_cast<std::ptrdiff_t>(object->block->number);
  return std::accumulate(sizes_.begin(), last, PositionIn(*object->block, object));
}

void ObjectOrder::Renumber(std::size_t first) {
  sizes_.resize(blocks_.size());
  for (std::size_t b = first; b < blocks_.size(); ++b) {
    blocks_[b]->number = b;
    Recount(*blocks_[b]);
  }
}

void ObjectOrder::Insert(std::size_t index, DocumentObject* object) {
  if (blocks_.empty()) {
    blocks_.push_back(std::make_unique<ObjectBlock>());
    Renumber(0);
  }
  index = std::min(index, count_);
  std::size_t b = 0;
  if (index == count_) {
    b = blocks_.size() - 1;  // the usual case, without a walk
    index = sizes_[b];
  } else {
    while (index > sizes_[b]) index -= sizes_[b++];
  }
  ObjectBlock& block = *blocks_[b];
  const AGRect painted = PaintedBox(*object);
  block.entries.insert(host::At(block.entries, index), {painted, object});
  block.Include(painted);
  object->block = &block;
  object->slot = static_cast<std::uint32_t>(index);
  ++count_;
  Recount(block);
  if (block.entries.size() > kMostEntries) Split(&block);
}

void ObjectOrder::Split(ObjectBlock* block) {
  auto second = std::make_unique<ObjectBlock>();
  // An order that grows at its end leaves full blocks behind.
  const std::size_t keep = block->number + 1 == blocks_.size() ? kMostEntries : block->entries.size() / 2;
  second->entries.assign(host::At(block->entries, keep), block->entries.end());
  block->entries.erase(host::At(block->entries, keep), block->entries.end());
  for (const ObjectEntry& entry : second->entries) {
    entry.object->block = second.get();
    entry.object->slot -= static_cast<std::uint32_t>(std::min<std::size_t>(keep, entry.object->slot));
    second->Include(entry.painted);
  }
  blocks_.insert(host::At(blocks_, block->number + 1), std::move(second));
  Renumber(block->number);
}

void ObjectOrder::Remove(DocumentObject* object) {
  ObjectBlock* block = object->block;
  block->entries.erase(host::At(block->entries, PositionIn(*block, object)));
  object->block = nullptr;
  --count_;
  Recount(*block);
  if (!block->entries.empty()) return;
  const std::size_t number = block->number;
  blocks_.erase(host::At(blocks_, number));
  Renumber(number);
}

AGRect ObjectOrder::Update(DocumentObject* object) {
  ObjectEntry& entry = object->block->entries[PositionIn(*object->block, object)];
  const AGRect former = entry.painted;
  entry.painted = PaintedBox(*object);
  object->block->Include(entry.painted);
  return former;
}

}  // namespace host
