#include "graphics/context/AKDrawEvent.h"

void AKDrawEvent::SetupContextWithRecommendedBrushAndPen(AGContext* context) const {
  if (context == nullptr) return;
  if ((flags & kFlagsFullOpacity) != 0) context->alpha = 1.0;
  if (recommendedBrush != nullptr) context->brush = *recommendedBrush;
  if (recommendedPen != nullptr) context->pen = *recommendedPen;
}
