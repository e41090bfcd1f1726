#pragma once
#include <CoreFoundation/CFDictionary.h>
typedef const struct __CTFontDescriptor* CTFontDescriptorRef;
CF_EXPORT const CFStringRef kCTFontFamilyNameAttribute;
CF_EXPORT const CFStringRef kCTFontTraitsAttribute;
CF_EXPORT CTFontDescriptorRef CTFontDescriptorCreateWithAttributes(CFDictionaryRef attributes);
CF_EXPORT CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute);
