// Chains of clips, which the states of a context share. Private to the native layer.
//
// They belong to one context and to its thread. The memory of those that are no longer in use serves the next ones, so
// that a clip set anew for each shape takes none. A chain of any length is gone through and given up without a call for
// each of its nodes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "platform/clips/BitmapClip.h"

namespace platform {

/// A counted reference to the innermost node of a chain; null where nothing is clipped.
class Clip {
 public:
  Clip() = default;
  explicit Clip(const ClipNode* node);
  Clip(const Clip& other) : Clip(other.node_) {}
  Clip(Clip&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
  Clip& operator=(Clip other) noexcept {
    std::swap(node_, other.node_);
    return *this;
  }
  ~Clip() { Release(); }

  const ClipNode* get() const { return node_; }
  const ClipNode* operator->() const { return node_; }
  bool operator==(std::nullptr_t) const { return node_ == nullptr; }

 private:
  void Release();

  const ClipNode* node_ = nullptr;
};

class ClipPool;

/// What a path of device space was made of: another path, by its identity, and a matrix.
struct PathOrigin {
  std::uint64_t identity = 0;  ///< 0: of something else
  CGAffineTransform matrix = CGAffineTransformIdentity;
};

/// One path of a chain of clips; the clip is the inside of all of them.
struct ClipNode {
  explicit ClipNode(ClipPool* owner) : pool(owner) {}
  ClipNode(const ClipNode&) = delete;
  ClipNode& operator=(const ClipNode&) = delete;
  ~ClipNode() { CGPathRelease(path); }

  ClipPool* const pool;
  CGMutablePathRef path = CGPathCreateMutable();
  PathOrigin origin;
  bool antialias = true;
  std::size_t depth = 1;  ///< the length of the chain
  Clip parent;
  mutable BitmapClip onBitmap;
  mutable std::size_t userCount = 0;
};

/// The makings of a context's clips, which it outlives.
class ClipPool {
 public:
  /// A node within `parent`, whose path is `*path`; that becomes an empty one. Throws, with nothing changed, when
  /// memory lacks.
  Clip Make(const Clip& parent, CGMutablePathRef* path, const PathOrigin& origin, bool antialias);

 private:
  friend class Clip;
  using Node = std::unique_ptr<ClipNode>;

  static constexpr std::size_t kMaxSpare = 4;
  static constexpr std::size_t kMaxSpareBytes = std::size_t{16} << 20;  ///< of their masks
  static constexpr std::size_t kMaxSparePoints = std::size_t{1} << 16;  ///< of a path

  void TakeBack(ClipNode* node);

  std::array<Node, kMaxSpare> spare_;
  std::size_t spareCount_ = 0;
  std::size_t spareBytes_ = 0;
};

/// The node of `chain` that has just this parent, path and antialiasing, if it is near the chain's end; null otherwise.
Clip SameIn(const Clip& chain, const Clip& parent, const CGPath& path, bool antialias);

/// The same of the node whose path was made of this origin, without a look at its points.
Clip SameIn(const Clip& chain, const Clip& parent, const PathOrigin& origin, bool antialias);

/// Whether two chains of clips leave the same visible.
bool SameClip(const ClipNode* a, const ClipNode* b);

}  // namespace platform
