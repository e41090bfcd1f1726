// Contexts that write a page as vectors, and contexts over a drawing of the program's own: what a host on this platform
// needs beside bitmaps. Units are points, 72 an inch; y points up.
#pragma once

#include <stdbool.h>
#include <stddef.h>

#include "CoreGraphics/CGContext.h"

/// Takes the next bytes of a file; false gives up.
typedef bool (*CGVectorWriteCallback)(void* info, const void* bytes, size_t count);

/// A page of a PDF or SVG file. Null unless both sides are above 0 and at most 200 inches (14400). Bytes come until the
/// context is finished.
CG_EXTERN CGContextRef CGVectorContextCreatePDF(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info);
CG_EXTERN CGContextRef CGVectorContextCreateSVG(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info);
/// Completes the file; nothing is drawn afterwards. False when something could not be written.
CG_EXTERN bool CGVectorContextFinish(CGContextRef context);

/// A context over a cairo context of the caller, which stays the caller's; nobody else may draw with it, or on its
/// surface, until the native context is gone. The drawing is `height` units high in the caller's space, whose matrix of
/// this moment is kept below the context's own; y points up from its lower edge. The caller's clip of this moment is
/// kept too: clips narrow it. When the native context is gone, the cairo context has the state that it had, and no
/// current path.
///
/// On a page, a recording, or a group of one, gradients, text and images stay what they are; on pixels they have as
/// many as the surface: its device scale counts. Null for a null context, one in an error state, and sides not above 0.
struct _cairo;
CG_EXTERN CGContextRef CGContextCreateOverCairo(struct _cairo* cairo, CGFloat width, CGFloat height);
