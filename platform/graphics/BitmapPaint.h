// Painting on bitmaps: from the state of a context to the engine that fills pixels. Private to the native layer.
//
// What is painted again and again takes no memory. It is taken, once, for the engine's workspace, for paths of more
// than 24 points and for masks of clips, which serve the next ones; for each image that is drawn smaller than it is;
// and for the list of a clip that is made of text. Everything here throws what the allocator throws, with nothing
// drawn.
#pragma once

#include "platform/graphics/CGContextState.h"
#include "platform/raster/Raster.h"

struct CGShading;

namespace platform {

/// The pixels of a bitmap.
raster::Surface SurfaceOf(const BitmapInfo& info);

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
