// How the lines of a paragraph are set.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "CoreGraphics/CGBase.h"

typedef const struct CTParagraphStyle* CTParagraphStyleRef;

enum CTTextAlignment : uint8_t { kCTTextAlignmentLeft = 0, kCTTextAlignmentRight = 1, kCTTextAlignmentCenter = 2 };

/// The direction that a paragraph is read in as a whole; natural is that of its first letter that has one.
enum CTWritingDirection : int8_t {
  kCTWritingDirectionNatural = -1,
  kCTWritingDirectionLeftToRight = 0,
  kCTWritingDirectionRightToLeft = 1
};

enum CTParagraphStyleSpecifier : uint32_t {
  kCTParagraphStyleSpecifierAlignment = 0,
  kCTParagraphStyleSpecifierBaseWritingDirection = 13
};

/// Filled by position: not every system calls the first field the same.
struct CTParagraphStyleSetting {
  CTParagraphStyleSpecifier specifier;
  size_t valueSize;
  const void* value;  ///< a CTTextAlignment or a CTWritingDirection
};

/// Settings of another kind or size are skipped; without one of alignment lines are set from the left, in whatever
/// direction they are read. Of lines alone (CTLine.h) nothing of it is used. The caller releases the style.
CG_EXTERN CTParagraphStyleRef CTParagraphStyleCreate(const CTParagraphStyleSetting* settings, size_t count);
