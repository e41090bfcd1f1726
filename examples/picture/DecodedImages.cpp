#include "DecodedImages.h"

#include <algorithm>

#include "ImageBytes.h"

namespace {

unsigned long long BytesOf(const AGImage& image) { return 4ULL * image.Width() * image.Height(); }

}  // namespace

DecodedImages& DecodedImages::Shared() {
  static DecodedImages images;
  return images;
}

const AGImage& DecodedImages::Get(const void* owner, const AKMemoryBlock& bytes) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [owner](const Entry& entry) { return entry.owner == owner; });
  if (found != entries_.end()) {
    entries_.splice(entries_.begin(), entries_, found);
  } else {
    entries_.push_front({owner, ImageBytes::Decoded(bytes)});
  }
  unsigned long long kept = BytesOf(entries_.front().image);
  for (auto entry = std::next(entries_.begin()); entry != entries_.end();) {
    kept += BytesOf(entry->image);
    entry = kept > kBudget ? entries_.erase(entry) : std::next(entry);
  }
  return entries_.front().image;
}

void DecodedImages::Forget(const void* owner) {
  entries_.remove_if([owner](const Entry& entry) { return entry.owner == owner; });
}
