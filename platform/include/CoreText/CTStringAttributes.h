// Names of the attributes of text.
#pragma once

#include "CoreFoundation/CFString.h"

/// A CTFont; without it a line has no glyphs.
CG_EXTERN const CFStringRef kCTFontAttributeName;
/// A CGColor: what glyphs are filled with; black without it.
CG_EXTERN const CFStringRef kCTForegroundColorAttributeName;
/// A CGColor: what glyphs are stroked with; the foreground colour without it.
CG_EXTERN const CFStringRef kCTStrokeColorAttributeName;
/// A 32-bit number: 1 draws a single line under the text, 0 none.
CG_EXTERN const CFStringRef kCTUnderlineStyleAttributeName;
/// A CTParagraphStyle.
CG_EXTERN const CFStringRef kCTParagraphStyleAttributeName;
