#include "CoreGraphics/CGShading.h"

#include <cmath>

#include "platform/foundation/MemoryGuard.h"
#include "platform/graphics/CGColorSpaceValue.h"
#include "platform/graphics/CGShadingValue.h"

CGFunctionRef CGFunctionCreate(void* info, size_t domainDimension, const CGFloat*, size_t rangeDimension,
                               const CGFloat*, const CGFunctionCallbacks* callbacks) {
  if (domainDimension != 1 || rangeDimension != 4 || callbacks == nullptr || callbacks->evaluate == nullptr) {
    return nullptr;
  }
  return platform::MadeOrNull([=] { return new CGFunction(info, *callbacks); });
}

void CGFunctionRelease(CGFunctionRef function) {
  if (function != nullptr) function->Release();
}

namespace {

bool IsDeviceRGB(CGColorSpaceRef space) { return space != nullptr && space->kind == CGColorSpace::Kind::kDeviceRGB; }

bool IsFinite(CGPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace

CGShadingRef CGShadingCreateAxial(CGColorSpaceRef space, CGPoint start, CGPoint end, CGFunctionRef function,
                                  bool extendStart, bool extendEnd) {
  const bool apart = start.x != end.x || start.y != end.y;
  if (!IsDeviceRGB(space) || function == nullptr || !apart || !IsFinite(start) || !IsFinite(end)) return nullptr;
  auto* shading = platform::MadeOrNull([function] { return new CGShading(function); });
  if (shading == nullptr) return nullptr;
  shading->start = start;
  shading->end = end;
  shading->extendStart = extendStart;
  shading->extendEnd = extendEnd;
  return shading;
}

CGShadingRef CGShadingCreateRadial(CGColorSpaceRef space, CGPoint start, CGFloat startRadius, CGPoint end,
                                   CGFloat endRadius, CGFunctionRef function, bool extendStart, bool extendEnd) {
  const bool concentric = start.x == end.x && start.y == end.y;
  const bool radii = startRadius >= 0 && endRadius >= 0 && startRadius != endRadius;
  if (!IsDeviceRGB(space) || function == nullptr || !concentric || !IsFinite(start) || !radii ||
      !std::isfinite(startRadius) || !std::isfinite(endRadius)) {
    return nullptr;
  }
  auto* shading = platform::MadeOrNull([function] { return new CGShading(function); });
  if (shading == nullptr) return nullptr;
  shading->radial = true;
  shading->start = start;
  shading->end = end;
  shading->startRadius = startRadius;
  shading->endRadius = endRadius;
  shading->extendStart = extendStart;
  shading->extendEnd = extendEnd;
  return shading;
}

void CGShadingRelease(CGShadingRef shading) {
  if (shading != nullptr) shading->Release();
}
