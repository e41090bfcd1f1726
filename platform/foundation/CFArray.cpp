#include "CoreFoundation/CFArray.h"

#include "platform/foundation/CFArrayValue.h"
#include "platform/foundation/NotNull.h"

CFIndex CFArrayGetCount(CFArrayRef array) {
  platform::MustBeThere(array);
  return array == nullptr ? 0 : static_cast<CFIndex>(array->items.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  platform::MustBeThere(array);
  if (index < 0 || index >= CFArrayGetCount(array)) return nullptr;
  return array->items[static_cast<std::size_t>(index)].Get();
}
