#include "CoreGraphics/CGColor.h"

#include "platform/foundation/MemoryGuard.h"
#include "platform/graphics/CGColorSpaceValue.h"
#include "platform/graphics/CGColorValue.h"

CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components) {
  if (space == nullptr || space->kind != CGColorSpace::Kind::kDeviceRGB || components == nullptr) return nullptr;
  return platform::MadeOrNull([=] { return new CGColor(components); });
}

void CGColorRelease(CGColorRef color) {
  if (color != nullptr) color->Release();
}
