// UTF-16 text of native strings as the UTF-8 that the libraries below take, and back. Private to the native layer.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "CoreFoundation/CFString.h"

namespace platform {

/// Lone surrogates become U+FFFD.
std::string Utf8Text(const UniChar* units, std::size_t count);

/// The text as a line shows it: as Utf8Text, but control characters other than the tab, line breaks and noncharacters
/// become U+200B, which takes no room.
std::string DisplayText(const UniChar* units, std::size_t count);

/// Native text; the caller releases it. Bytes that are no UTF-8 become U+FFFD.
CFStringRef NewString(std::string_view utf8);

}  // namespace platform
