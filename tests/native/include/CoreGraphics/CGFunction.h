#pragma once
#include <CoreGraphics/CGBase.h>
typedef struct CGFunction* CGFunctionRef;
typedef void (*CGFunctionEvaluateCallback)(void* info, const CGFloat* in, CGFloat* out);
typedef void (*CGFunctionReleaseInfoCallback)(void* info);
struct CGFunctionCallbacks {
  unsigned int version;
  CGFunctionEvaluateCallback evaluate;
  CGFunctionReleaseInfoCallback releaseInfo;
};
typedef struct CGFunctionCallbacks CGFunctionCallbacks;
CG_EXTERN CGFunctionRef CGFunctionCreate(void* info, size_t domainDimension, const CGFloat* domain,
                                         size_t rangeDimension, const CGFloat* range,
                                         const CGFunctionCallbacks* callbacks);
CG_EXTERN void CGFunctionRelease(CGFunctionRef function);
