#pragma once
#include <CoreFoundation/CFDictionary.h>
#include <CoreText/CTFont.h>
typedef const struct __CTRun* CTRunRef;
CF_EXPORT CFIndex CTRunGetGlyphCount(CTRunRef run);
CF_EXPORT CFDictionaryRef CTRunGetAttributes(CTRunRef run);
CF_EXPORT void CTRunGetGlyphs(CTRunRef run, CFRange range, CGGlyph* buffer);
CF_EXPORT void CTRunGetPositions(CTRunRef run, CFRange range, CGPoint* buffer);
