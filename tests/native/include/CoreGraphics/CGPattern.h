#pragma once
#include <CoreGraphics/CGAffineTransform.h>
typedef struct CGContext* CGContextRef;
typedef struct CGPattern* CGPatternRef;
enum CGPatternTiling : int32_t {
  kCGPatternTilingNoDistortion,
  kCGPatternTilingConstantSpacingMinimalDistortion,
  kCGPatternTilingConstantSpacing
};
typedef void (*CGPatternDrawPatternCallback)(void* info, CGContextRef context);
typedef void (*CGPatternReleaseInfoCallback)(void* info);
struct CGPatternCallbacks {
  unsigned int version;
  CGPatternDrawPatternCallback drawPattern;
  CGPatternReleaseInfoCallback releaseInfo;
};
typedef struct CGPatternCallbacks CGPatternCallbacks;
CG_EXTERN CGPatternRef CGPatternCreate(void* info, CGRect bounds, CGAffineTransform matrix, CGFloat xStep,
                                       CGFloat yStep, CGPatternTiling tiling, bool isColored,
                                       const CGPatternCallbacks* callbacks);
CG_EXTERN void CGPatternRelease(CGPatternRef pattern);
