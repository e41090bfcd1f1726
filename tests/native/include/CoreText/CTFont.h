#pragma once
#include <CoreGraphics/CGPath.h>
#include <CoreText/CTFontDescriptor.h>
#include <CoreText/CTFontTraits.h>
typedef const struct __CTFont* CTFontRef;
typedef unsigned short CGGlyph;
CF_EXPORT CTFontRef CTFontCreateWithName(CFStringRef name, CGFloat size, const CGAffineTransform* matrix);
CF_EXPORT CTFontRef CTFontCreateWithFontDescriptor(CTFontDescriptorRef descriptor, CGFloat size,
                                                   const CGAffineTransform* matrix);
CF_EXPORT CTFontRef CTFontCreateCopyWithAttributes(CTFontRef font, CGFloat size, const CGAffineTransform* matrix,
                                                   CTFontDescriptorRef attributes);
CF_EXPORT CFStringRef CTFontCopyFamilyName(CTFontRef font);
CF_EXPORT CGFloat CTFontGetAscent(CTFontRef font);
CF_EXPORT CGFloat CTFontGetDescent(CTFontRef font);
CF_EXPORT CGFloat CTFontGetLeading(CTFontRef font);
CF_EXPORT CGPathRef CTFontCreatePathForGlyph(CTFontRef font, CGGlyph glyph, const CGAffineTransform* matrix);
