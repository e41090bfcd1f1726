// What a host tells an object's draw method: where the object is, and the brush and pen to use.
#pragma once

#include <cstddef>
#include <cstdint>

#include "graphics/context/AGContext.h"

struct AKDrawEvent {
  /// Either of these bits asks for full opacity.
  static constexpr std::uint32_t kFlagsFullOpacity = 0x10 | 0x20;

  AGRect bounds;                              ///< in the host's drawing coordinates
  double angle = 0;                           ///< radians, about the centre of the bounds
  const AGBrush* recommendedBrush = nullptr;  ///< owned by the host; null leaves the context's brush
  const AGPen* recommendedPen = nullptr;      ///< owned by the host; null leaves the context's pen
  std::uint32_t flags = 0;                    ///< see kFlagsFullOpacity; the other bits are the host's

  /// Gives the context the recommended brush and pen, and alpha 1 when the flags ask for it. Null is ignored.
  void SetupContextWithRecommendedBrushAndPen(AGContext* context) const;
};

static_assert(offsetof(AKDrawEvent, bounds) == 0);
static_assert(offsetof(AKDrawEvent, angle) == 32);
static_assert(offsetof(AKDrawEvent, recommendedBrush) == 40);
static_assert(offsetof(AKDrawEvent, recommendedPen) == 48);
static_assert(offsetof(AKDrawEvent, flags) == 56);
static_assert(sizeof(AKDrawEvent) == 64);
