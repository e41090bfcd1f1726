// What native text is made of. Private to the native layer.
#pragma once

#include <utility>
#include <vector>

#include "CoreFoundation/CFString.h"
#include "platform/foundation/NativeObject.h"

struct CFString final : platform::NativeObject {
  explicit CFString(std::vector<UniChar> codeUnits) : units(std::move(codeUnits)) {}

  const std::vector<UniChar> units;
};
