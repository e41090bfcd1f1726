#pragma once
#include <CoreFoundation/CFString.h>
CF_EXPORT const CFStringRef kCTFontAttributeName;
CF_EXPORT const CFStringRef kCTForegroundColorAttributeName;
CF_EXPORT const CFStringRef kCTStrokeColorAttributeName;
CF_EXPORT const CFStringRef kCTUnderlineStyleAttributeName;
CF_EXPORT const CFStringRef kCTParagraphStyleAttributeName;
