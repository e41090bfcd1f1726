// A clip as the engine that fills bitmaps wants it. Private to the native layer.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/paths/CGPathValue.h"
#include "platform/raster/Raster.h"

namespace platform {

struct ClipNode;

/// A box and, when it is more than that, a byte of coverage for each pixel of it. Made when it is first drawn under,
/// and kept with the part of the state that it belongs to. Of a deep chain of which only the innermost is drawn under,
/// the innermost two have one.
class BitmapClip {
 public:
  /// The clip of a node within `bounds`, for as long as the node's path stays; of no node: the bounds. Throws when
  /// memory lacks.
  static raster::Clip Of(const ClipNode* node, const raster::Box& bounds);

  /// To be made anew; the memory is kept for that.
  void Forget() { isMade_ = false; }
  std::size_t CapacityInBytes() const { return capacity_; }
  void FreeMemory();

 private:
  void SetUp(const ClipNode& node, const raster::Box& bounds);
  void TakeMemory();
  void AddMasks(const ClipNode& node, const ClipNode* base);
  void FindFull();

  bool isMade_ = false;
  raster::Clip clip_;
  raster::MaskView view_;
  std::unique_ptr<unsigned char[]> memory_;  // the mask, and of each row the longest stretch of whole coverage
  std::size_t capacity_ = 0;
};

/// A path of device space as the engine wants it; it has to outlive the view.
raster::PathView ViewOf(const CGPath& path);

/// The same as a shape to be filled by the non-zero rule.
raster::Shape ShapeOf(const CGPath& path, bool antialias);

/// The whole pixels that an upright rectangle is made of; false when it is something else.
bool IsWholeBox(const CGPath& path, raster::Box* box);

}  // namespace platform
