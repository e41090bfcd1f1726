// Documents as text.
#pragma once

#include <string>

#include "host/model/Document.h"

namespace host {

/// One line an object: number, class, bounds, angle in degrees, the properties of its class.
std::string ShortListing(const Document& document);

/// The page and every property of every object. Numbers have seven digits: a curvature that a document keeps as a
/// 32-bit float reads the same before and after.
std::string FullListing(const Document& document);

/// Unit, grid and guides of a page, a line.
std::string AidsText(const PageAids& aids);

}  // namespace host
