#include "CoreGraphics/CGColorSpace.h"

#include "platform/graphics/CGColorSpaceValue.h"

CGColorSpaceRef CGColorSpaceCreateDeviceRGB() { return new CGColorSpace(CGColorSpace::Kind::kDeviceRGB); }

CGColorSpaceRef CGColorSpaceCreatePattern(CGColorSpaceRef base) {
  return base == nullptr ? new CGColorSpace(CGColorSpace::Kind::kPattern) : nullptr;
}

void CGColorSpaceRelease(CGColorSpaceRef space) {
  if (space != nullptr) space->Release();
}
