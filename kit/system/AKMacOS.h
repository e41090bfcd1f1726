// The bridge between the kit's strings and paths and the native layer's.
//
// Text crosses in UTF-16; the character sets are the kit's (AKStringEncoding.h). Native objects that a function returns
// are new: the caller releases them.
#pragma once

#include "CoreFoundation/CFString.h"
#include "CoreFoundation/CFURL.h"
#include "kit/files/AKFilePath.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringEncoding.h"

namespace AKMacOS {

/// The kit's code of a platform character set, 0 when it has none.
AKStringEncoding AKStringEncodingConvert(CFStringEncoding encoding);
/// The platform's number of a kit character set, 0xFFFFFFFF when it has none.
CFStringEncoding CFStringEncodingConvert(AKStringEncoding encoding);

/// The text in a character set, "?" for what the set lacks. Empty for null or empty text and for an unknown set.
AKString AKStringConvert(CFStringRef text, CFStringEncoding encoding);
/// Native text from bytes in a character set. Null for an empty string, an unknown set and bytes not valid in it.
CFStringRef CFStringConvert(const AKString& text, CFStringEncoding encoding);

/// The path of a location; with `asFolder` it ends with "/". Empty for null.
AKFilePath AKFilePathConvert(CFURLRef url, bool asFolder);
/// The location of a path; a folder's with `isFolder` or when the path ends with "/". Null for an empty path, for one
/// with a NUL in it, and for one whose bytes in the system are no UTF-8.
CFURLRef CFURLConvert(const AKFilePath& path, bool isFolder);

}  // namespace AKMacOS
