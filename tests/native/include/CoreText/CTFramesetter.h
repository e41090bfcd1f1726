#pragma once
#include <CoreFoundation/CFAttributedString.h>
#include <CoreText/CTFrame.h>
typedef const struct __CTFramesetter* CTFramesetterRef;
CF_EXPORT CTFramesetterRef CTFramesetterCreateWithAttributedString(CFAttributedStringRef attrString);
CF_EXPORT CTFrameRef CTFramesetterCreateFrame(CTFramesetterRef framesetter, CFRange stringRange, CGPathRef path,
                                              CFDictionaryRef frameAttributes);
