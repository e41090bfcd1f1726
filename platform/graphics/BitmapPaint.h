// Painting on bitmaps: from the state of a context to the engine that fills pixels. Private to the native layer.
#pragma once

#include <memory>

#include "platform/graphics/CGContextState.h"
#include "platform/raster/Raster.h"

struct CGShading;

namespace platform {

/// A clip as the engine wants it: a box and, when it is more than that, a byte of coverage for each pixel of it. Made
/// once and kept with the part of the state that it belongs to.
class BitmapClip {
 public:
  /// The clip of a node within `bounds`; of no node: the bounds. What memory lacks for leaves nothing visible.
  static raster::Clip Of(const ClipNode* node, const raster::Box& bounds);

 private:
  static const BitmapClip& Resolve(const ClipNode& node, const raster::Box& bounds);
  void SetUp(const ClipNode& node, const raster::Box& bounds);
  void FindFull();

  raster::Clip clip_;
  raster::MaskView view_;
  std::shared_ptr<unsigned char[]> bytes_;
  std::shared_ptr<raster::Run[]> full_;  // of each row
};

/// The pixels of a bitmap.
raster::Surface SurfaceOf(const BitmapInfo& info);

/// A path of device space as the engine wants it; it has to outlive the view.
raster::PathView ViewOf(const CGPath& path);

/// The current path filled or stroked with the state's paint; `isClearing` makes pixels transparent instead.
void FillOnBitmap(CGContext* context, raster::FillRule rule, bool isClearing);
void StrokeOnBitmap(CGContext* context);

/// A shading over the clip. Its matrix has an inverse.
void ShadeOnBitmap(CGContext* context, const CGShading& shading);

/// The state's clip.
raster::Clip ClipOnBitmap(CGContext* context);

/// A paint's colour through coverage.
void MaskOnBitmap(CGContext* context, const Paint& paint, const raster::MaskView& mask);

/// Rows of a source on whole pixels.
void BoxOnBitmap(CGContext* context, const raster::RowSource& rows, const raster::Box& box);

/// Rows of a source through a path of device space, mixed by the state's blend mode.
void RowsOnBitmap(CGContext* context, const raster::RowSource& rows, bool isOpaque, const CGPath& path);

}  // namespace platform
