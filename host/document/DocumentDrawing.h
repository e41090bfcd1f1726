// Draws documents.
#pragma once

#include <string>
#include <vector>

#include "graphics/AGBitmap.h"
#include "host/document/Document.h"

namespace host {

/// Draws the objects in order through the context, each as its class draws itself with the object's brush and pen;
/// placeholders as outlined boxes. `scale` multiplies page units.
void DrawObjects(Document const& document, AGContext const& context, double scale);

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
