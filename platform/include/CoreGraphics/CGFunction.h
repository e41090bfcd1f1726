// Functions of one number with several results, evaluated by a callback.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGBase.h"
#include "CoreGraphics/CGGeometry.h"

struct CGFunction;
typedef struct CGFunction* CGFunctionRef;

typedef void (*CGFunctionEvaluateCallback)(void* info, const CGFloat* in, CGFloat* out);
typedef void (*CGFunctionReleaseInfoCallback)(void* info);

struct CGFunctionCallbacks {
  unsigned int version;  ///< 0
  CGFunctionEvaluateCallback evaluate;
  /// May be null. Called once, when the function is gone: released, and every shading of it too. `info` is used until
  /// then. Not called when no function was made.
  CGFunctionReleaseInfoCallback releaseInfo;
};

/// Domain and range are pairs of a least and a greatest value for each input and output; null leaves them open. Null
/// unless there are one input, four outputs and an evaluate callback.
CG_EXTERN CGFunctionRef CGFunctionCreate(void* info, size_t domainDimension, const CGFloat* domain,
                                         size_t rangeDimension, const CGFloat* range,
                                         const CGFunctionCallbacks* callbacks);
CG_EXTERN void CGFunctionRelease(CGFunctionRef function);
