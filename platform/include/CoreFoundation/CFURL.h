// Locations of files.
#pragma once

#include "CoreFoundation/CFString.h"

typedef const struct CFURL* CFURLRef;

/// The components of a path are separated by "/". There is no other style.
typedef enum CFURLPathStyle : CFIndex { kCFURLPOSIXPathStyle = 0 } CFURLPathStyle;

/// The location of a path; a relative one is that of the current folder. A path that ends with "/" is a folder's, too.
/// Null for empty text and for text with a NUL or a lone surrogate, which no path of the file system can hold.
CG_EXTERN CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                                 Boolean isDirectory);
/// The path, without a "/" at its end unless it is the root.
CG_EXTERN CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);
CG_EXTERN Boolean CFURLHasDirectoryPath(CFURLRef url);
