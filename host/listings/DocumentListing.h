// Documents as text.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>

#include "host/model/Document.h"

namespace host {

/// The objects that are listed; all without.
using ListedObjects = std::optional<std::unordered_set<ObjectID>>;

/// One line an object: number, class, bounds, angle in degrees, the properties of its class.
std::string ShortListing(const Document& document, const ListedObjects& listed = std::nullopt);

/// The page and every property of every object. Numbers have seven digits: a curvature that a document keeps as a
/// 32-bit float reads the same before and after.
std::string FullListing(const Document& document, const ListedObjects& listed = std::nullopt);

/// Unit, grid and guides of a page, a line.
std::string AidsText(const PageAids& aids);

}  // namespace host
