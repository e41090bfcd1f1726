#pragma once
#include <CoreFoundation/CFString.h>
CF_EXPORT const CFStringRef kUTTypeJPEG;
CF_EXPORT const CFStringRef kUTTypePNG;
CF_EXPORT const CFStringRef kUTTypeTIFF;
// Names that come along with it and must not clash.
typedef char* Ptr;
typedef Ptr* Handle;
typedef long Size;
typedef int32_t Fixed;
typedef unsigned char Style;
struct Point {
  short v;
  short h;
};
struct Rect {
  short top, left, bottom, right;
};
