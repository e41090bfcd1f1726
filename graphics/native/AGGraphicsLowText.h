// The text half of the bridge: drawing, outlining and measuring text in a font.
//
// A text is an AKString or an array of UTF-16 code units; the array counts when the string is empty. A text with a line
// break (CR or LF) is set as a frame of lines, any other as a single line. Everything here uses the same attributed
// text, so that what is measured and outlined is what is drawn. Missing pieces end a call without drawing.
#pragma once

#include "CoreFoundation/CFAttributedString.h"
#include "graphics/context/AGContext.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGTextAlignment.h"
#include "kit/geometry/AGArrays.h"
#include "kit/text/AKStringArray.h"

namespace AGGraphicsLow {

/// Draws a text whose first baseline begins, has its middle, or ends at the point, through `transform` and then the
/// context's own: filled with the brush's first colour, outlined with that of the pen's brush. The width of a single
/// line is that of what it paints. Returns whether it drew.
bool AGContextDrawUText(const AGContext& context, const AGFont& font, const AKString& string, const AKUniChars& text,
                        const AGPoint& point, const AGAffineTransform& transform, AGTextAlignment alignment);

/// Draws each string as a single line at the point of the same index; what has no counterpart is left out. Returns
/// whether it drew any.
bool AGContextDrawStrings(const AGContext& context, const AGFont& font, const AKStringArray& strings,
                          const AGPointArray& points, const AGAffineTransform& transform, AGTextAlignment alignment);

/// Appends the outlines of the text, placed as AGContextDrawUText places it. The path takes its origin from the point,
/// if it has none. Returns whether there was anything to add.
bool AGPathAddUText(AGPath* path, const AGFont& font, const AKString& string, const AKUniChars& text,
                    const AGPoint& point, AGTextAlignment alignment);

/// The width of what the longest line paints, and the heights of the lines; zero when there is no text or the font is
/// not valid.
AGSize AGFontGetUTextExtent(const AGFont& font, const AKString& string, const AKUniChars& text);

/// Ascent, descent and leading of a line of the font.
double AGFontGetLineHeight(const AGFont& font);

/// The text with its attributes, null when it is empty; the caller releases it. Colours with an alpha of 0 are left
/// out. `*hasLineBreak`, which may be null, receives whether there is one.
CFAttributedStringRef _LowCFAttributedStringCreate(const AKString& string, const AKUniChars& text, const AGFont& font,
                                                   AGTextAlignment alignment, AGColor fill, AGColor stroke,
                                                   bool* hasLineBreak);

/// True when a code unit is 10 or 13.
bool IsOneAtLeastCharCR(const AKUniChars& text);

}  // namespace AGGraphicsLow
