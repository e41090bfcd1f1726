// Documents as small pictures, for file managers.
#pragma once

#include <string>

#include "host/model/Document.h"
#include "host/text/Problem.h"

namespace host {

/// The page as a PNG file whatever the name of the file is, its longer side `side` pixels.
Result<> SaveThumbnail(const Document& document, const std::string& path, double side);

}  // namespace host
