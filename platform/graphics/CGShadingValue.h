// What a shading is made of. Private to the native layer.
#pragma once

#include "CoreGraphics/CGShading.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"

struct CGFunction final : platform::NativeObject {
  CGFunction(void* functionInfo, const CGFunctionCallbacks& functionCallbacks)
      : info(functionInfo), callbacks(functionCallbacks) {}
  ~CGFunction() override {
    if (callbacks.releaseInfo != nullptr) callbacks.releaseInfo(info);
  }

  void* info;
  CGFunctionCallbacks callbacks;
};

struct CGShading final : platform::NativeObject {
  explicit CGShading(CGFunction* shadingFunction) : function(shadingFunction) {}

  const platform::NativeRef<CGFunction> function;
  bool radial = false;
  CGPoint start{0, 0};  ///< of a radial shading: the centre
  CGPoint end{0, 0};
  double startRadius = 0;
  double endRadius = 0;
  bool extendStart = false;
  bool extendEnd = false;
};
