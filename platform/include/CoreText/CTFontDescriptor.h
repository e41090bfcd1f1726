// Descriptions of fonts.
#pragma once

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFString.h"

typedef const struct CTFontDescriptor* CTFontDescriptorRef;

/// A text: the name of the family.
CG_EXTERN const CFStringRef kCTFontFamilyNameAttribute;
/// A dictionary of traits (CTFontTraits.h).
CG_EXTERN const CFStringRef kCTFontTraitsAttribute;

CG_EXTERN CTFontDescriptorRef CTFontDescriptorCreateWithAttributes(CFDictionaryRef attributes);
/// The attribute, which the caller releases; null when there is none of this name.
CG_EXTERN CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute);
