#include "host/model/ObjectTable.h"

#include <utility>

namespace host {
namespace {

constexpr std::size_t kFirstSlots = 16;

}  // namespace

// Blocks of memory lie 16 bytes apart, so the low bits say nothing; the multiplier (2^64 divided by the golden ratio)
// spreads the others upwards, and the high half is used.
std::size_t InstanceIndex::Home(const AKObject* instance) const {
  const auto address = reinterpret_cast<std::uintptr_t>(instance);
  return ((address >> 4) * 0x9E3779B97F4A7C15ULL >> 32) & (slots_.size() - 1);
}

// Where the instance is, or the empty slot where it would go.
std::size_t InstanceIndex::SlotOf(const AKObject* instance) const {
  std::size_t slot = Home(instance);
  while (slots_[slot].instance != nullptr && slots_[slot].instance != instance) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

ObjectID InstanceIndex::Find(const AKObject* instance) const {
  return slots_.empty() || instance == nullptr ? kNoObjectID : slots_[SlotOf(instance)].id;
}

void InstanceIndex::Insert(const AKObject* instance, ObjectID id) {
  if (2 * (count_ + 1) > slots_.size()) Grow();
  slots_[SlotOf(instance)] = {instance, id};
  ++count_;
}

void InstanceIndex::Grow() {
  const std::vector<Slot> old =
      std::exchange(slots_, std::vector<Slot>(slots_.empty() ? kFirstSlots : 2 * slots_.size()));
  for (const Slot& slot : old) {
    if (slot.instance != nullptr) slots_[SlotOf(slot.instance)] = slot;
  }
}

// Those behind the gap whose home lies at or before it move into it, so that every instance is reached from its home
// (Knuth, The Art of Computer Programming, volume 3, section 6.4, algorithm R).
void InstanceIndex::Remove(const AKObject* instance) {
  if (slots_.empty() || instance == nullptr) return;
  std::size_t gap = SlotOf(instance);
  if (slots_[gap].instance == nullptr) return;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = (gap + 1) & mask; slots_[slot].instance != nullptr; slot = (slot + 1) & mask) {
    const std::size_t distance = (slot - Home(slots_[slot].instance)) & mask;
    if (distance < ((slot - gap) & mask)) continue;
    slots_[gap] = slots_[slot];
    gap = slot;
  }
  slots_[gap] = {};
  --count_;
}

void ObjectTable::Insert(std::unique_ptr<DocumentObject> object, Layer* layer) {
  const std::size_t index = object->id / kPageSize;
  if (index >= pages_.size()) pages_.resize(index + 1);
  if (pages_[index] == nullptr) pages_[index] = std::make_unique<Page>();
  Page& page = *pages_[index];
  Entry& entry = page.entries[object->id % kPageSize];
  entry.object = std::move(object);
  entry.layer = layer;
  ++page.used;
  ++count_;
}

std::unique_ptr<DocumentObject> ObjectTable::Remove(ObjectID id) {
  std::unique_ptr<Page>& page = pages_[id / kPageSize];
  std::unique_ptr<DocumentObject> object = std::move(page->entries[id % kPageSize].object);
  if (--page->used == 0) page.reset();
  --count_;
  return object;
}

}  // namespace host
