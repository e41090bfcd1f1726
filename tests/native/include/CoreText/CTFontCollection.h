#pragma once
#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFDictionary.h>
typedef const struct __CTFontCollection* CTFontCollectionRef;
CF_EXPORT CTFontCollectionRef CTFontCollectionCreateFromAvailableFonts(CFDictionaryRef options);
CF_EXPORT CFArrayRef CTFontCollectionCreateMatchingFontDescriptors(CTFontCollectionRef collection);
