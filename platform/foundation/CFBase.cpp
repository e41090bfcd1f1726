#include "CoreFoundation/CFBase.h"

#include "platform/foundation/NativeObject.h"

// Every native object has NativeObject as its first base, so that a pointer to the one is a pointer to the other.

CFTypeRef CFRetain(CFTypeRef object) {
  static_cast<const platform::NativeObject*>(object)->Retain();
  return object;
}

void CFRelease(CFTypeRef object) { static_cast<const platform::NativeObject*>(object)->Release(); }
