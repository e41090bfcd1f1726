// What pages and recordings do otherwise than pixels. Private to the native layer.
#pragma once

#include <cstddef>

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {

/// A page or a recording, or pixels that are drawn with cairo alone.
class PlainTarget : public DrawingTarget {
 public:
  bool ClearAll(CGContext* context, CGRect rect) const override;
  bool DrawImage(CGContext* context, const CGImage& image, const CGAffineTransform& imageToDevice) const override;
  bool SetShadingSource(CGContext* context, const CGShading& shading) const override;
  CairoPattern PatternSource(CGPattern* pattern, CGSize phase, double alpha,
                             const CGAffineTransform& baseToDevice) const override;
};

/// Clears a rectangle of user space when it is the whole of a page, or empty as it is, in a way that keeps the page one
/// of vectors; false, with nothing done, for any other.
bool ClearPage(CGContext* context, CGRect rect);

/// Draws an image on a page or a recording, whole and unchanged, so that a page stores it once however often and in
/// whatever way it is drawn. `imageToDevice` has an inverse; the clip is applied.
void DrawImageOnPage(CGContext* context, const CGImage& image, const CGAffineTransform& imageToDevice);

/// Sets a gradient of cairo's own as the source: with as few stops as tell its colours to half a step of 255.
bool SetVectorSource(CGContext* context, const CGShading& shading);

/// Keeps the file that an image was decoded from, for pages to contain it as it is but for its notes to readers.
/// Ignored unless it is a JPEG of one or three components, which pages know.
void KeepImageFile(const CGImage& image, const unsigned char* bytes, std::size_t count);

/// The pattern, made fainter by `alpha`, as a source whose cell is made of vectors, for pages that would smooth a cell
/// of pixels. Null when the cell has too many colours for that or can't be drawn.
CairoPattern MakeVectorPatternSource(CGPattern* pattern, CGSize phase, double alpha,
                                     const CGAffineTransform& baseToDevice);

/// What has been drawn so far within `box` of device space, `scale` pixels a unit. Null when memory lacks.
CairoSurface BackdropOf(const CGContext& context, const PixelBox& box, double scale);

}  // namespace platform
