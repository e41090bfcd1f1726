#include "host/listings/MethodName.h"

#include "kit/objects/AKClass.h"

namespace host {

const char* MethodName(unsigned int slot) {
  switch (slot) {
    case kAKMethodInitWithArgs:
      return "akmInitWithArgs";
    case kAKMethodInitFromFile:
      return "akmInitFromFile";
    case kAKMethodWriteToFile:
      return "akmWriteToFile";
    case kAKMethodDelete:
      return "akmDelete";
    case kAKMethodSetObjectProperties:
      return "akmSetObjectProperties";
    case kAKMethodGetObjectProperties:
      return "akmGetObjectProperties";
    case kAKMethodDraw:
      return "akmDraw";
    case kAKMethodGetNaturalBounds:
      return "akmGetNaturalBounds";
    case kAKMethodInspector:
      return "akmInspector";
    default:
      return "(the host's)";
  }
}

}  // namespace host
