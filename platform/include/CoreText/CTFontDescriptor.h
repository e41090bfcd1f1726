// Descriptions of fonts, and the collection of those that are installed.
#pragma once

#include "CoreFoundation/CFArray.h"
#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFString.h"

typedef const struct CTFontDescriptor* CTFontDescriptorRef;
typedef const struct CTFontCollection* CTFontCollectionRef;

/// A text: the name of the family.
CG_EXTERN const CFStringRef kCTFontFamilyNameAttribute;
/// A dictionary that holds kCTFontSymbolicTrait.
CG_EXTERN const CFStringRef kCTFontTraitsAttribute;
/// A 32-bit number: the sum of the traits below.
CG_EXTERN const CFStringRef kCTFontSymbolicTrait;

enum { kCTFontTraitItalic = 1, kCTFontTraitBold = 2 };

/// Null for null.
CG_EXTERN CTFontDescriptorRef CTFontDescriptorCreateWithAttributes(CFDictionaryRef attributes);
/// The attribute, which the caller releases; null when there is none of this name.
CG_EXTERN CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute);

/// `options` is null.
CG_EXTERN CTFontCollectionRef CTFontCollectionCreateFromAvailableFonts(CFDictionaryRef options);
/// A descriptor with its family for each font that was installed when the collection was made, in no order; null when
/// there is none. The caller releases the array.
CG_EXTERN CFArrayRef CTFontCollectionCreateMatchingFontDescriptors(CTFontCollectionRef collection);
