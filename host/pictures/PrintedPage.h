// The page of a document on a printer's page, as vectors.
#pragma once

#include "host/model/Document.h"

struct _cairo;

namespace host {

/// Draws the page with its background through a cairo context whose units are points and whose y points down: at its
/// own size with its middle in that of a sheet of `sheet` points, or smaller where the sheet is. The context has its
/// state of before afterwards. False when there is not enough memory.
bool DrawPageOnSheet(const Document& document, _cairo* cairo, const AGSize& sheet);

}  // namespace host
