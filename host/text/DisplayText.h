// Text that crosses between host and bundles, and the UTF-8 in which people read it.
//
// The kit's text in memory is Mac OS Roman, which has no Japanese and no Chinese. A translation that Mac OS Roman can't
// hold is handed to a bundle as UTF-8 behind the UTF-8 signature (bytes EF BB BF); the bundle passes it on unread, as
// it does every text, and the host knows it again by the signature.
#pragma once

#include <string>
#include <string_view>

#include "kit/text/AKString.h"

namespace host {

/// What a bundle or the kit wrote, as UTF-8: Mac OS Roman up to a signature, UTF-8 behind it. Where not all that
/// follows is UTF-8, the signature is that of a name in a path and reaches to the next "/"; bytes that are no UTF-8
/// even so are read as Mac OS Roman.
std::string DisplayText(const AKString& text);

/// UTF-8 as a bundle gets it: Mac OS Roman, or UTF-8 with a signature in front.
AKString TextForBundles(std::string_view utf8);

}  // namespace host
