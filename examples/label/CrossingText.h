// Text as it crosses between host and bundle, and as it is drawn.
//
// A text that the host hands out is Mac OS Roman, or, where that lacks a character, UTF-8 behind the bytes EF BB BF.
// A bundle passes either on as it is; only who draws it has to know which it is.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/text/AKString.h"

/// The code units of either form. What is no UTF-8 becomes U+FFFD, byte by byte.
AKUniChars CodeUnitsOf(const AKString& text);
