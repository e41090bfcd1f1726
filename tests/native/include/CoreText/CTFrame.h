#pragma once
#include <CoreFoundation/CFArray.h>
#include <CoreGraphics/CGContext.h>
typedef const struct __CTFrame* CTFrameRef;
CF_EXPORT CFArrayRef CTFrameGetLines(CTFrameRef frame);
CF_EXPORT void CTFrameGetLineOrigins(CTFrameRef frame, CFRange range, CGPoint* origins);
CF_EXPORT void CTFrameDraw(CTFrameRef frame, CGContextRef context);
