#pragma once
#include <CoreFoundation/CFString.h>
typedef const struct __CFURL* CFURLRef;
enum CFURLPathStyle : CFIndex { kCFURLPOSIXPathStyle = 0 };
CF_EXPORT CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef filePath,
                                                 CFURLPathStyle pathStyle, Boolean isDirectory);
CF_EXPORT CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle);
