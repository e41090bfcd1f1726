// Draws documents.
#pragma once

#include <string>
#include <vector>

#include "graphics/AGBitmap.h"
#include "host/document/Document.h"

namespace host {

/// Draws one object as its class draws itself with a brush and a pen; a placeholder as an outlined box.
void DrawObject(DocumentObject const& object, AGContext const& context, AGBrush const& brush, AGPen const& pen);

/// Draws the objects of the visible layers in order through the context, each with its own brush and pen. `scale`
/// multiplies map units.
void DrawObjects(Document const& document, AGContext const& context, double scale);

/// The same for those objects alone that may paint within `area`, in map units. The caller clips: what is drawn may
/// reach beyond the area.
void DrawObjects(Document const& document, AGContext const& context, double scale, AGRect const& area);

/// The page with its background as a PNG file in memory. False, with one line in `*error`, when there is no such
/// bitmap.
bool RenderPNG(Document const& document, double scale, std::vector<unsigned char>* png, std::string* error);

/// The kinds of picture file, told by the extension of a name; false for an unknown one.
enum class PictureKind { kPNG, kPDF, kSVG };
bool PictureKindOf(std::string const& path, PictureKind* kind);

/// The page as a picture file in memory. On a PDF or SVG page a unit is `scale` points.
bool RenderPicture(Document const& document, PictureKind kind, double scale, std::vector<unsigned char>* file,
                   std::string* error);

}  // namespace host
