// The collection of the installed fonts.
#pragma once

#include "CoreFoundation/CFArray.h"
#include "CoreText/CTFontDescriptor.h"

typedef const struct CTFontCollection* CTFontCollectionRef;

/// `options` is null.
CG_EXTERN CTFontCollectionRef CTFontCollectionCreateFromAvailableFonts(CFDictionaryRef options);
/// A descriptor with its family for each font that was installed when the collection was made, in no order; null when
/// there is none. The caller releases the array.
CG_EXTERN CFArrayRef CTFontCollectionCreateMatchingFontDescriptors(CTFontCollectionRef collection);
