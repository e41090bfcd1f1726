#pragma once
#include <CoreFoundation/CFArray.h>
typedef const struct __CFLocale* CFLocaleRef;
typedef CFStringRef CFLocaleKey;
CF_EXPORT const CFLocaleKey kCFLocaleCountryCode;
CF_EXPORT CFArrayRef CFLocaleCopyPreferredLanguages(void);
CF_EXPORT CFLocaleRef CFLocaleCopyCurrent(void);
CF_EXPORT CFTypeRef CFLocaleGetValue(CFLocaleRef locale, CFLocaleKey key);
