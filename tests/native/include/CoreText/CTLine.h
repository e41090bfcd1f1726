#pragma once
#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFAttributedString.h>
#include <CoreGraphics/CGContext.h>
typedef const struct __CTLine* CTLineRef;
CF_EXPORT CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef attrString);
CF_EXPORT CFArrayRef CTLineGetGlyphRuns(CTLineRef line);
CF_EXPORT CGRect CTLineGetImageBounds(CTLineRef line, CGContextRef context);
CF_EXPORT double CTLineGetTypographicBounds(CTLineRef line, CGFloat* ascent, CGFloat* descent, CGFloat* leading);
CF_EXPORT void CTLineDraw(CTLineRef line, CGContextRef context);
