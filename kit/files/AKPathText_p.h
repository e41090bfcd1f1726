// How the text of a path stands for the bytes that the system knows the path by.
//
// A name between separators is Mac OS Roman where that set holds it. Any other name, one that is no UTF-8 among them,
// is the UTF-8 signature (bytes EF BB BF) and the system's own bytes behind it, so that every name of the system has a
// text and every text leads back to its name. Separators stay what they are: paths are taken apart and joined by their
// text alone.
#pragma once

#include <string_view>

#include "kit/text/AKString.h"

namespace akpath {

/// The bytes of a name or a whole path. In a name that has a signature, what precedes it is Mac OS Roman.
AKString ToSystem(std::string_view text);
/// The text of a name or a whole path.
AKString FromSystem(std::string_view bytes);

/// The text that FromSystem would give the name: a name put together of others may have its signature elsewhere, or
/// need none.
AKString Canonical(std::string_view name);

}  // namespace akpath
