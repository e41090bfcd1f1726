#include "DecodedImages.h"

#include "ImageBytes.h"

DecodedImages& DecodedImages::Shared() {
  static DecodedImages images;
  return images;
}

unsigned long long DecodedImages::BytesOf(const Entry& entry) {
  return sizeof(Entry) + 4ULL * entry.image.Width() * entry.image.Height();
}

const AGImage& DecodedImages::Get(const void* owner, const AKMemoryBlock& bytes) {
  if (const auto place = places_.find(owner); place != places_.end()) {
    entries_.splice(entries_.begin(), entries_, place->second);
    return entries_.front().image;
  }
  entries_.push_front({owner, ImageBytes::Decoded(bytes)});
  places_[owner] = entries_.begin();
  bytes_ += BytesOf(entries_.front());
  while (bytes_ > kBudget && entries_.size() > 1) Forget(entries_.back().owner);
  return entries_.front().image;
}

void DecodedImages::Forget(const void* owner) {
  const auto place = places_.find(owner);
  if (place == places_.end()) return;
  bytes_ -= BytesOf(*place->second);
  entries_.erase(place->second);
  places_.erase(place);
}
