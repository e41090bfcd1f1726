// Text with attributes: what lines and frames are set from.
//
// An attribute holds over the whole text; its names are those of CTStringAttributes.h. Attributed text keeps references
// of its own to its text and its values.
#pragma once

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFString.h"

typedef const struct CFAttributedString* CFAttributedStringRef;
typedef struct CFAttributedString* CFMutableAttributedStringRef;

/// `attributes` may be null.
CG_EXTERN CFAttributedStringRef CFAttributedStringCreate(CFAllocatorRef allocator, CFStringRef text,
                                                         CFDictionaryRef attributes);
/// A copy that attributes can be set on; `maxLength` is 0, or no less than the text's length.
CG_EXTERN CFMutableAttributedStringRef CFAttributedStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength,
                                                                           CFAttributedStringRef text);
/// UTF-16 code units.
CG_EXTERN CFIndex CFAttributedStringGetLength(CFAttributedStringRef text);
/// Sets an attribute, in place of one of the same name. `range` has to be that of the whole text; with another one
/// nothing happens.
CG_EXTERN void CFAttributedStringSetAttribute(CFMutableAttributedStringRef text, CFRange range, CFStringRef name,
                                              CFTypeRef value);
