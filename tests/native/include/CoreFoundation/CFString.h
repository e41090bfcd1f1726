#pragma once
#include <CoreFoundation/CFBase.h>
typedef UInt32 CFStringEncoding;
enum CFStringBuiltInEncodings : CFStringEncoding {
  kCFStringEncodingMacRoman = 0,
  kCFStringEncodingWindowsLatin1 = 0x0500,
  kCFStringEncodingUTF8 = 0x08000100,
};
#define kCFStringEncodingInvalidId (0xffffffffU)
CF_EXPORT CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding);
CF_EXPORT CFStringRef CFStringCreateWithCharacters(CFAllocatorRef alloc, const UniChar* chars, CFIndex numChars);
CF_EXPORT CFIndex CFStringGetLength(CFStringRef theString);
CF_EXPORT void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer);
