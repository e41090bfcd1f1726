#include "platform/clips/ClipChain.h"

#include <cstring>

namespace platform {
namespace {

bool SamePath(const CGPath& a, const CGPath& b) {
  return a.verbs.Count() == b.verbs.Count() && a.points.Count() == b.points.Count() &&
         std::memcmp(a.verbs.Data(), b.verbs.Data(), a.verbs.Count()) == 0 &&
         std::memcmp(a.points.Data(), b.points.Data(), a.points.Count() * sizeof(CGPoint)) == 0;
}

bool IsSame(const ClipNode& node, const CGPath& path, bool antialias) {
  return node.antialias == antialias && SamePath(*node.path, path);
}

bool SameMatrix(const CGAffineTransform& a, const CGAffineTransform& b) {
  return a.a == b.a && a.b == b.b && a.c == b.c && a.d == b.d && a.tx == b.tx && a.ty == b.ty;
}

std::size_t DepthOf(const Clip& clip) { return clip == nullptr ? 0 : clip->depth; }

// The node within `parent`, if it is near the chain's end.
const ClipNode* ChildIn(const Clip& chain, const Clip& parent) {
  constexpr int kMaxSteps = 16;
  const std::size_t depth = DepthOf(parent) + 1;
  const ClipNode* node = chain.get();
  for (int i = 0; i < kMaxSteps && node != nullptr && node->depth > depth; ++i) node = node->parent.get();
  const bool isThere = node != nullptr && node->depth == depth && node->parent.get() == parent.get();
  return isThere ? node : nullptr;
}

}  // namespace

Clip::Clip(const ClipNode* node) : node_(node) {
  if (node_ != nullptr) ++node_->userCount;
}

// One after another: each is what held the next.
void Clip::Release() {
  const ClipNode* node = std::exchange(node_, nullptr);
  while (node != nullptr && --node->userCount == 0) {
    auto* unused = const_cast<ClipNode*>(node);  // nobody else has it
    node = std::exchange(unused->parent.node_, nullptr);
    unused->pool->TakeBack(unused);
  }
}

Clip ClipPool::Make(const Clip& parent, CGMutablePathRef* path, const PathOrigin& origin, bool antialias) {
  Node node;
  if (spareCount_ > 0) {
    node = std::move(spare_[--spareCount_]);
    spareBytes_ -= node->onBitmap.CapacityInBytes();
  } else {
    node = std::make_unique<ClipNode>(this);
  }
  std::swap(node->path, *path);
  node->parent = parent;
  node->origin = origin;
  node->antialias = antialias;
  node->depth = DepthOf(parent) + 1;
  return Clip(node.release());
}

void ClipPool::TakeBack(ClipNode* unused) {
  Node node(unused);
  const std::size_t bytes = node->onBitmap.CapacityInBytes();
  if (spareCount_ == kMaxSpare || node->path->points.Count() > kMaxSparePoints) return;
  if (spareBytes_ + bytes > kMaxSpareBytes) node->onBitmap.FreeMemory();
  node->onBitmap.Forget();
  node->path->verbs.Clear();
  node->path->points.Clear();
  spareBytes_ += node->onBitmap.CapacityInBytes();
  spare_[spareCount_++] = std::move(node);
}

Clip SameIn(const Clip& chain, const Clip& parent, const CGPath& path, bool antialias) {
  const ClipNode* node = ChildIn(chain, parent);
  return node != nullptr && IsSame(*node, path, antialias) ? Clip(node) : Clip();
}

Clip SameIn(const Clip& chain, const Clip& parent, const PathOrigin& origin, bool antialias) {
  const ClipNode* node = ChildIn(chain, parent);
  const bool isSame = node != nullptr && node->antialias == antialias && node->origin.identity == origin.identity &&
                      origin.identity != 0 && SameMatrix(node->origin.matrix, origin.matrix);
  return isSame ? Clip(node) : Clip();
}

bool SameClip(const ClipNode* a, const ClipNode* b) {
  while (a != b) {
    if (a == nullptr || b == nullptr || !IsSame(*a, *b->path, b->antialias)) return false;
    a = a->parent.get();
    b = b->parent.get();
  }
  return true;
}

}  // namespace platform
