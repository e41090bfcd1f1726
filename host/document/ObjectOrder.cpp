#include "host/document/ObjectOrder.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::size_t kMostEntries = 512;

// Entries seldom move far from where they were seen last: the search goes outwards from there.
std::size_t PositionIn(ObjectBlock const& block, DocumentObject* object) {
  auto const& entries = block.entries;
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

void ObjectBlock::Include(AGRect const& box) {
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
  while (index >= blocks_[b]->entries.size()) index -= blocks_[b++]->entries.size();
  return blocks_[b]->entries[index].object;
}

std::size_t ObjectOrder::BlockIndex(ObjectBlock const* block) const {
  std::size_t b = 0;
  while (blocks_[b].get() != block) ++b;
  return b;
}

std::size_t ObjectOrder::IndexOf(DocumentObject* object) const {
  std::size_t index = PositionIn(*object->block, object);
  for (std::size_t b = 0; blocks_[b].get() != object->block; ++b) index += blocks_[b]->entries.size();
  return index;
}

void ObjectOrder::Insert(std::size_t index, DocumentObject* object) {
  if (blocks_.empty()) blocks_.push_back(std::make_unique<ObjectBlock>());
  index = std::min(index, count_);
  std::size_t b = 0;
  if (index == count_) {
    b = blocks_.size() - 1;  // the usual case, without a walk
    index = blocks_[b]->entries.size();
  } else {
    while (index > blocks_[b]->entries.size()) index -= blocks_[b++]->entries.size();
  }
  ObjectBlock& block = *blocks_[b];
  const AGRect painted = PaintedBox(*object);
  block.entries.insert(host::At(block.entries, index), {painted, object});
  block.Include(painted);
  object->block = &block;
  object->slot = static_cast<std::uint32_t>(index);
  ++count_;
  if (block.entries.size() > kMostEntries) Split(b);
}

void ObjectOrder::Split(std::size_t blockIndex) {
  ObjectBlock& block = *blocks_[blockIndex];
  auto second = std::make_unique<ObjectBlock>();
  // An order that grows at its end leaves full blocks behind.
  const std::size_t keep = blockIndex + 1 == blocks_.size() ? kMostEntries : block.entries.size() / 2;
  second->entries.assign(host::At(block.entries, keep), block.entries.end());
  block.entries.erase(host::At(block.entries, keep), block.entries.end());
  for (ObjectEntry const& entry : second->entries) {
    entry.object->block = second.get();
    entry.object->slot -= static_cast<std::uint32_t>(std::min<std::size_t>(keep, entry.object->slot));
    second->Include(entry.painted);
  }
  blocks_.insert(host::At(blocks_, blockIndex + 1), std::move(second));
}

void ObjectOrder::Remove(DocumentObject* object) {
  ObjectBlock* block = object->block;
  block->entries.erase(host::At(block->entries, PositionIn(*block, object)));
  object->block = nullptr;
  --count_;
  if (block->entries.empty()) blocks_.erase(host::At(blocks_, BlockIndex(block)));
}

AGRect ObjectOrder::Update(DocumentObject* object) {
  ObjectEntry& entry = object->block->entries[PositionIn(*object->block, object)];
  const AGRect former = entry.painted;
  entry.painted = PaintedBox(*object);
  object->block->Include(entry.painted);
  return former;
}

}  // namespace host
