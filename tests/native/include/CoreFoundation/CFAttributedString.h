#pragma once
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFString.h>
typedef const struct __CFAttributedString* CFAttributedStringRef;
typedef struct __CFAttributedString* CFMutableAttributedStringRef;
CF_EXPORT CFAttributedStringRef CFAttributedStringCreate(CFAllocatorRef alloc, CFStringRef str,
                                                         CFDictionaryRef attributes);
CF_EXPORT CFMutableAttributedStringRef CFAttributedStringCreateMutableCopy(CFAllocatorRef alloc, CFIndex maxLength,
                                                                           CFAttributedStringRef aStr);
CF_EXPORT CFIndex CFAttributedStringGetLength(CFAttributedStringRef aStr);
CF_EXPORT void CFAttributedStringSetAttribute(CFMutableAttributedStringRef aStr, CFRange range, CFStringRef attrName,
                                              CFTypeRef value);
