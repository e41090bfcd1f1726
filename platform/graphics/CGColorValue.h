// What a colour is made of. Private to the native layer.
#pragma once

#include "CoreGraphics/CGColor.h"
#include "platform/foundation/NativeObject.h"

struct CGColor final : platform::NativeObject {
  explicit CGColor(const CGFloat* c) : red(c[0]), green(c[1]), blue(c[2]), alpha(c[3]) {}

  const CGFloat red;
  const CGFloat green;
  const CGFloat blue;
  const CGFloat alpha;
};
