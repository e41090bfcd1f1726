#pragma once
#include <CoreFoundation/CFString.h>
CF_EXPORT const CFStringRef kCGImagePropertyDPIWidth;
CF_EXPORT const CFStringRef kCGImagePropertyDPIHeight;
CF_EXPORT const CFStringRef kCGImagePropertyHasAlpha;
CF_EXPORT const CFStringRef kCGImagePropertyPixelWidth;
CF_EXPORT const CFStringRef kCGImagePropertyPixelHeight;
