// How the lines of a paragraph are set.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "CoreGraphics/CGBase.h"

typedef const struct CTParagraphStyle* CTParagraphStyleRef;

enum CTTextAlignment : uint8_t { kCTTextAlignmentLeft = 0, kCTTextAlignmentRight = 1, kCTTextAlignmentCenter = 2 };

enum CTParagraphStyleSpecifier : uint32_t { kCTParagraphStyleSpecifierAlignment = 0 };

/// Filled by position: not every system calls the first field the same.
struct CTParagraphStyleSetting {
  CTParagraphStyleSpecifier specifier;
  size_t valueSize;
  const void* value;  ///< a CTTextAlignment
};

/// Settings of another kind or size are skipped; without one lines are set from the left, in whatever direction they
/// are read. The caller releases the style.
CG_EXTERN CTParagraphStyleRef CTParagraphStyleCreate(const CTParagraphStyleSetting* settings, size_t count);
