#include "host/view/PropertyHandles.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "host/model/ObjectProperties.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

// On the diagonal from the upper right corner inwards, as far as the centres of the roundest corners.
HandleTrack RoundingTrack(const AGRect& bounds, double inset) {
  const double most = std::min(std::fabs(bounds.Width()), std::fabs(bounds.Height())) / 2;
  return {{bounds.x1 - inset, bounds.y1 - inset}, {bounds.x1 - most, bounds.y1 - most}};
}

constexpr PropertyHandle kHandles[] = {
    {N_("Rounding"), 0, 1, &RoundingTrack},
};

}  // namespace

double HandleTrack::Nearest(const AGPoint& point) const {
  const AGPoint along = atMost - atLeast;
  const AGPoint d = point - atLeast;
  const double length = along.x * along.x + along.y * along.y;
  return length > 0 ? std::clamp((d.x * along.x + d.y * along.y) / length, 0.0, 1.0) : 0;
}

std::optional<double> PropertyHandle::FractionOf(const DocumentObject& object) const {
  double value = 0;
  if (object.IsPlaceholder() ||
      !AKValueGetasFloat64(PropertiesOf(object).GetValue(AKString(property)), &value, false)) {
    return std::nullopt;
  }
  return std::clamp((value - least) / (most - least), 0.0, 1.0);
}

std::string NumberText(double number) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof(text), number).ptr};
}

std::span<const PropertyHandle> PropertyHandles() { return kHandles; }

}  // namespace host
