#include "CoreFoundation/CFBase.h"

#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NotNull.h"

// Every native object has NativeObject as its first base, so that a pointer to the one is a pointer to the other.

CFTypeRef CFRetain(CFTypeRef object) {
  platform::MustBeThere(object);
  static_cast<const platform::NativeObject*>(object)->Retain();
  return object;
}

void CFRelease(CFTypeRef object) {
  platform::MustBeThere(object);
  static_cast<const platform::NativeObject*>(object)->Release();
}
