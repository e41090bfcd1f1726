// What pages and recordings do otherwise than pixels. Private to the native layer.
#pragma once

#include <cstddef>

#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {

/// Clears a rectangle of user space when it is the whole of a page, in a way that keeps the page one of vectors; false,
/// with nothing done, for any other.
bool ClearPage(CGContext* context, CGRect rect);

/// Draws an image on a page or a recording, whole and unchanged, so that a page stores it once however often and in
/// whatever way it is drawn. `imageToDevice` has an inverse; the clip is applied.
void DrawImageOnPage(CGContext* context, const CGImage& image, const CGAffineTransform& imageToDevice);

/// Keeps the file that an image was decoded from, for pages to contain it as it is. Ignored unless it is a JPEG of one
/// or three components, which pages know.
void KeepImageFile(const CGImage& image, const unsigned char* bytes, std::size_t count);

/// The pattern, made fainter by `alpha`, as a source whose cell is made of vectors, for pages that would smooth a cell
/// of pixels. Null when the cell has too many colours for that or can't be drawn.
CairoPattern MakeVectorPatternSource(CGPattern* pattern, CGSize phase, double alpha,
                                     const CGAffineTransform& baseToDevice);

/// What has been drawn so far within `box` of device space, `scale` pixels a unit. Null when memory lacks.
CairoSurface BackdropOf(const CGContext& context, const PixelBox& box, double scale);

}  // namespace platform
