#include "CoreGraphics/CGColorSpace.h"

#include "platform/graphics/CGColorSpaceValue.h"

namespace {

// There is one of each kind, which every user shares: getting it can't fail.
CGColorSpaceRef Shared(CGColorSpace* space) {
  space->Retain();
  return space;
}

}  // namespace

CGColorSpaceRef CGColorSpaceCreateDeviceRGB() {
  static CGColorSpace space(CGColorSpace::Kind::kDeviceRGB);
  return Shared(&space);
}

CGColorSpaceRef CGColorSpaceCreatePattern(CGColorSpaceRef base) {
  static CGColorSpace space(CGColorSpace::Kind::kPattern);
  return base == nullptr ? Shared(&space) : nullptr;
}

void CGColorSpaceRelease(CGColorSpaceRef space) {
  if (space != nullptr) space->Release();
}
