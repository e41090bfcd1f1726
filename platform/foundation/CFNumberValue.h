// What native numbers and booleans are made of. Private to the native layer.
#pragma once

#include <cstdint>

#include "CoreFoundation/CFNumber.h"
#include "platform/foundation/NativeObject.h"

struct CFNumber final : platform::NativeObject {
  explicit CFNumber(std::int64_t value) : isInteger(true), integer(value), real(static_cast<double>(value)) {}
  explicit CFNumber(double value) : isInteger(false), integer(0), real(value) {}

  const bool isInteger;
  const std::int64_t integer;
  const double real;
};

struct CFBoolean final : platform::NativeObject {
  explicit CFBoolean(bool booleanValue) : value(booleanValue) {}

  const bool value;
};
