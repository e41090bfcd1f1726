// What a colour space is made of. Private to the native layer.
#pragma once

#include "CoreGraphics/CGColorSpace.h"
#include "platform/foundation/NativeObject.h"

struct CGColorSpace final : platform::NativeObject {
  enum class Kind { kDeviceRGB, kPattern };

  explicit CGColorSpace(Kind spaceKind) : kind(spaceKind) {}

  const Kind kind;
};
