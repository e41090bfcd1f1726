// The drawing context: the host's native port and the drawing state that the kit applies itself.
//
// Nothing is kept in the port between calls: each draw hands the whole context to the native bridge, which saves the
// port's state, applies the context's, draws and restores. The port is not owned. Coordinates are those of the port
// with y up, unless the host's own matrix says otherwise. Nothing here fails: what is invisible or empty is not drawn.
//
// Filling and stroking a rectangle on a bitmap takes at most 6 blocks from the allocator and a rounded one at most 12,
// those of the native layer included; patterns and gradients take at most 14 more. Copies of a context without a clip,
// and of brushes and pens without custom gradients or arrows, take none.
#pragma once

#include <memory>

#include "graphics/images/AGImage.h"
#include "graphics/images/AGPicture.h"
#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPen.h"
#include "graphics/paths/AGPath.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGTextAlignment.h"
#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/text/AKStringArray.h"

struct CGContext;
/// A native drawing target: a context of the native layer.
using AGNativePort = CGContext;

class AGContext {
 public:
  /// Below this opacity nothing is drawn; a NaN is invisible too.
  static constexpr double kMinVisibleAlpha = 0.004;

  // Creating and assigning

  /// Each dimension of the size is rounded to the nearest whole number.
  AGContext(AGNativePort* port, const AGSize& size);
  /// The clip path is copied, the port is shared.
  AGContext(const AGContext& other);
  /// As copying does; a context that is copied to itself stays as it is.
  AGContext& operator=(const AGContext& other);
  ~AGContext() = default;

  /// Drops the clip and restores the state to its defaults; port and size stay. Returns 0.
  int ResetAll();

  ///@{
  /// What is drawn into, and its size in the port's units. The port is the host's.
  AGNativePort* NativePort() const { return port_; }
  const AGSize& Size() const { return size_; }
  ///@}

  // Clip

  /// Drops the clip: everything is drawn.
  void ResetClip() { clipPath_.reset(); }
  /// Drops the clip; a rectangle that is not empty once normalised becomes the new one.
  void SetClipRect(const AGRect& rect);
  /// Drops the clip; a path that is not empty becomes the new one.
  void SetClipPath(const AGPath& path);
  /// Null when there is none.
  const AGPath* GetClipPath() const { return clipPath_.get(); }
  /// True when there is a clip that is not empty.
  bool HasClip() const { return clipPath_ != nullptr && !clipPath_->IsEmpty(); }

  // Clearing

  /// Sets the whole surface to transparent black.
  void ClearPixels();
  ///@{
  /// Paint opaquely: the colour's own alpha is ignored.
  void ClearPixels(AGColor color);
  void ClearPixelsRect(AGColor color, const AGRect& rect);
  ///@}

  // Shapes (AGContextShapes.cpp)

  ///@{
  /// Shapes are filled with the brush and stroked with the pen; a segment is only stroked. `curvature` is as in
  /// AGPath::AddRoundedRect; `transform` is applied before the context's own.
  void DrawRect(const AGRect& rect) const;
  void DrawRoundedRect(const AGRect& rect, double curvature) const;
  void DrawEllipseInRect(const AGRect& rect) const;
  void DrawSegment(const AGPoint& from, const AGPoint& to) const;
  void DrawLines(const AGPointArray& points, bool close) const;
  void DrawLines(const AGPointArray& points, const AGAffineTransform& transform, bool close) const;
  void DrawRects(const AGRectArray& rects) const;
  void DrawRects(const AGRectArray& rects, const AGAffineTransform& transform) const;
  ///@}
  ///@{
  /// `transform` is applied before the context's own.
  void DrawPath(const AGPath& path) const;
  void DrawPath(const AGPath& path, const AGAffineTransform& transform) const;
  ///@}
  /// Fits the path's bounding box into `rect`. A box of zero width or height draws with the all-zero transform.
  void DrawPath(const AGPath& path, const AGRect& rect, bool keepAspect) const;

  // Images and pictures (AGContextShapes.cpp)

  /// Draws the image, one unit a pixel, with its lower left corner at `point`.
  void DrawImage(const AGImage& image, const AGPoint& point, const AGAffineTransform& transform,
                 AGImageQuality quality) const;
  /// Fits the image's pixels into `rect`.
  void DrawImage(const AGImage& image, const AGRect& rect, bool keepAspect, AGImageQuality quality) const;

  ///@{
  /// The picture's path is drawn as DrawPath does, its image as DrawImage does.
  void DrawPicture(const AGPicture& picture, const AGAffineTransform& transform, AGImageQuality quality) const;
  void DrawPicture(const AGPicture& picture, const AGRect& rect, bool keepAspect, AGImageQuality quality) const;
  ///@}

  // Text (AGContextText.cpp)

  ///@{
  /// Draws a text at a point of its first baseline, through `transform`, then the context's own: filled with the
  /// brush's first colour (emoji: in theirs), outlined with that of the pen's. Lines are separated by CR, LF or both.
  void DrawText(const AKString& text, const AGFont& font, const AGPoint& point, const AGAffineTransform& transform,
                AGTextAlignment alignment) const;
  void DrawUText(const AKUniChars& text, const AGFont& font, const AGPoint& point, const AGAffineTransform& transform,
                 AGTextAlignment alignment) const;
  ///@}
  ///@{
  /// Draws a text aligned in a rectangle, as AGFont::GetTextPosInBounds has it.
  void DrawText(const AKString& text, const AGFont& font, const AGRect& rect, int hAlign, int vAlign) const;
  void DrawUText(const AKUniChars& text, const AGFont& font, const AGRect& rect, int hAlign, int vAlign) const;
  ///@}
  /// Draws each string as a single line at the point of the same index.
  void DrawStrings(const AKStringArray& strings, const AGFont& font, const AGPointArray& points,
                   const AGAffineTransform& transform, AGTextAlignment alignment) const;

  // Asking

  ///@{
  /// True when alpha is visible and the brush or the pen appears (the brush is asked first).
  bool WouldFillOrStroke() const;
  bool WouldStroke() const;
  ///@}

 private:
  friend struct AGLayout;

  void CopyState(const AGContext& other);

  AGNativePort* port_;

 public:
  bool antialias = true;  ///< edges are smooth
  /// Multiplies the opacity of all that is drawn, 0 to 1.
  double alpha = 1.0;
  /// Multiplies red, green and blue of brush and pen colours at draw time.
  double colorFactor = 1.0;

 private:
  AGSize size_;

 public:
  AGAffineTransform transform = kAGAffineTransformIdentity;  ///< applied after the per-call transform
  /// Fills shapes and text.
  AGBrush brush;
  /// Strokes outlines.
  AGPen pen;
  AGPoint patternOrigin = kAGNullPoint;  ///< phase of pattern brushes

 private:
  std::unique_ptr<AGPath> clipPath_;
};
