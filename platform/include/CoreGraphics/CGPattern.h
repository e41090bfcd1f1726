// Patterns: a cell that a callback draws, repeated over the plane.
//
// The cell lives in the context's base space: the current matrix neither scales nor turns it, only the phase moves it.
#pragma once

#include "CoreGraphics/CGAffineTransform.h"
#include "CoreGraphics/CGBase.h"

struct CGContext;
struct CGPattern;
typedef struct CGPattern* CGPatternRef;

enum CGPatternTiling {
  kCGPatternTilingNoDistortion = 0,
  kCGPatternTilingConstantSpacingMinimalDistortion = 1,
  kCGPatternTilingConstantSpacing = 2,
};

typedef void (*CGPatternDrawPatternCallback)(void* info, struct CGContext* context);
typedef void (*CGPatternReleaseInfoCallback)(void* info);

struct CGPatternCallbacks {
  unsigned int version;  ///< 0
  CGPatternDrawPatternCallback drawPattern;
  /// May be null. Called once, when the pattern is gone: released, and out of every state and drawing that it was set
  /// in. `info` is used until then. Not called when no pattern was made.
  CGPatternReleaseInfoCallback releaseInfo;
};

/// The cell is drawn once, at one pixel a unit. Null unless the pattern is coloured, the bounds begin at (0, 0) and
/// have whole sides of 1 to 1024 that equal the steps, and the matrix is the identity.
CG_EXTERN CGPatternRef CGPatternCreate(void* info, CGRect bounds, CGAffineTransform matrix, CGFloat xStep,
                                       CGFloat yStep, CGPatternTiling tiling, bool isColored,
                                       const CGPatternCallbacks* callbacks);
CG_EXTERN void CGPatternRelease(CGPatternRef pattern);
