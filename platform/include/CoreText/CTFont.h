// Fonts of the native layer: a face, found by its family among those that are installed, at a size.
//
// Sizes are points, one unit of user space each. Measures are linear in the size: nothing is rounded to pixels.
#pragma once

#include "CoreFoundation/CFString.h"
#include "CoreGraphics/CGAffineTransform.h"
#include "CoreText/CTFontDescriptor.h"

typedef const struct __CTFont* CTFontRef;

/// The installed font whose family is nearest to `name`, regular. Any name gives a font as long as one is installed:
/// CTFontCopyFamilyName tells whether it is the one that was meant. `matrix` is null: there are no other fonts. Null
/// when no font is installed.
CG_EXTERN CTFontRef CTFontCreateWithName(CFStringRef name, CGFloat size, const CGAffineTransform* matrix);
/// The same with the family and the traits of a descriptor. A weight or slant that the family lacks is imitated where
/// the system's configuration says so.
CG_EXTERN CTFontRef CTFontCreateWithFontDescriptor(CTFontDescriptorRef descriptor, CGFloat size,
                                                   const CGAffineTransform* matrix);
/// The same face at another size; 0 keeps the font's own. `matrix` and `attributes` are null.
CG_EXTERN CTFontRef CTFontCreateCopyWithAttributes(CTFontRef font, CGFloat size, const CGAffineTransform* matrix,
                                                   CTFontDescriptorRef attributes);

/// The name of the family that was found, which the caller releases: as it was asked for when the font has that name
/// among others, else its first.
CG_EXTERN CFStringRef CTFontCopyFamilyName(CTFontRef font);
CG_EXTERN CGFloat CTFontGetSize(CTFontRef font);

/// Heights above and below the baseline, both positive, and the gap between lines.
CG_EXTERN CGFloat CTFontGetAscent(CTFontRef font);
CG_EXTERN CGFloat CTFontGetDescent(CTFontRef font);
CG_EXTERN CGFloat CTFontGetLeading(CTFontRef font);
