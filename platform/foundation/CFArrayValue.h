// What a native array is made of. Private to the native layer.
#pragma once

#include <utility>
#include <vector>

#include "CoreFoundation/CFArray.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"

struct CFArray final : platform::NativeObject {
  using Item = platform::NativeRef<const platform::NativeObject>;

  explicit CFArray(std::vector<Item> arrayItems) : items(std::move(arrayItems)) {}

  const std::vector<Item> items;
};
