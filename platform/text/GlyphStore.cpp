#include "platform/text/GlyphStore.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr std::size_t kScaleBytes = 256;  // that a scale takes without its masks

}  // namespace

GlyphStore& GlyphStore::Shared() {
  static GlyphStore& store = *new GlyphStore;  // its fonts live as long as the process
  return store;
}

std::size_t GlyphStore::KeyHash::operator()(const Key& key) const {
  std::size_t hash = std::hash<const void*>()(key.face) + (key.isSoft ? 1 : 0);
  for (const double value : {key.xx, key.yx, key.xy, key.yy}) {
    hash = (hash ^ std::hash<double>()(value)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29;
  }
  return hash;
}

GlyphMasks& GlyphStore::MasksFor(FontFace* face, const cairo_matrix_t& m, bool isSoft) {
  const Key key{face, m.xx, m.yx, m.xy, m.yy, isSoft};
  const auto found = scales_.find(key);
  if (found != scales_.end()) return *found->second;
  GlyphMasks& masks = *scales_.emplace(key, std::make_unique<GlyphMasks>(face, m, isSoft)).first->second;
  byteCount_ += kScaleBytes;
  return masks;
}

void GlyphStore::Forget(const FontFace* face) {
  std::erase_if(scales_, [&](const auto& item) {
    if (item.first.face != face) return false;
    item.second->Keep([&](const GlyphMask& mask) { return byteCount_ -= BytesOf(mask), false; });
    byteCount_ -= kScaleBytes;
    return true;
  });
}

// Down to three quarters, so that the next mask is not the next reason to go through all of them.
void GlyphStore::Trim() {
  const std::uint64_t from = ClockToKeepFrom();
  std::erase_if(scales_, [&](const auto& item) {
    item.second->Keep([&](const GlyphMask& mask) {
      if (mask.lastUse >= from) return true;
      byteCount_ -= BytesOf(mask);
      return false;
    });
    if (!item.second->IsEmpty()) return false;
    byteCount_ -= kScaleBytes;
    return true;
  });
}

std::uint64_t GlyphStore::ClockToKeepFrom() const {
  std::vector<std::pair<std::uint64_t, std::size_t>> uses;
  for (const auto& item : scales_) {
    item.second->Keep([&](const GlyphMask& mask) { return uses.emplace_back(mask.lastUse, BytesOf(mask)), true; });
  }
  std::sort(uses.begin(), uses.end());
  std::size_t left = byteCount_;
  for (const auto& [lastUse, bytes] : uses) {
    if (left <= kMaxBytes / 4 * 3) return lastUse;
    left -= bytes;
  }
  return clock_ + 1;
}

}  // namespace platform
