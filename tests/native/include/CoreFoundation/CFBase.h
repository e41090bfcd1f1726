#pragma once
#include <stdint.h>
typedef unsigned char Boolean;
typedef uint32_t UInt32;
typedef uint16_t UniChar;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;
static inline CFRange CFRangeMake(CFIndex loc, CFIndex len) { return {loc, len}; }
#define CF_EXPORT extern "C"
CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;
CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
CF_EXPORT void CFRelease(CFTypeRef cf);
