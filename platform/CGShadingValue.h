// What a shading is made of. Private to the native layer.
#pragma once

#include <array>
#include <cstdint>

#include "CoreGraphics/CGShading.h"
#include "platform/NativeObject.h"

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
  /// Colours at the inputs i / (kTableSize - 1), components 0 to 1, not premultiplied.
  static constexpr int kTableSize = 1025;
  struct Color {
    double red, green, blue, alpha;
  };

  bool radial = false;
  CGPoint start{0, 0};  ///< of a radial shading: the centre
  CGPoint end{0, 0};
  double startRadius = 0;
  double endRadius = 0;
  bool extendStart = false;
  bool extendEnd = false;
  std::array<Color, kTableSize> table;
};
