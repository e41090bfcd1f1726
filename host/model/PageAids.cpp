#include "host/model/PageAids.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace host {
namespace {

struct UnitInfo {
  LengthUnit unit;
  const char* name;
  double mapUnits;
  int digits;
};

constexpr UnitInfo kUnits[] = {{LengthUnit::kPixel, "px", 1, 1},
                               {LengthUnit::kPoint, "pt", 1, 1},
                               {LengthUnit::kMillimetre, "mm", 72 / 25.4, 2},
                               {LengthUnit::kCentimetre, "cm", 72 / 2.54, 3},
                               {LengthUnit::kInch, "in", 72, 3}};

const UnitInfo& InfoOf(LengthUnit unit) { return kUnits[static_cast<std::size_t>(unit)]; }

}  // namespace

const char* NameOf(LengthUnit unit) { return InfoOf(unit).name; }
double MapUnitsOf(LengthUnit unit) { return InfoOf(unit).mapUnits; }
int DigitsOf(LengthUnit unit) { return InfoOf(unit).digits; }

std::optional<LengthUnit> LengthUnitOf(std::string_view name) {
  const auto* const found = std::ranges::find_if(kUnits, [name](const UnitInfo& info) { return name == info.name; });
  return found == std::end(kUnits) ? std::nullopt : std::optional(found->unit);
}

std::string LengthText(double length, LengthUnit unit) {
  char text[400];
  std::snprintf(text, sizeof(text), "%.*f", DigitsOf(unit), length / MapUnitsOf(unit));
  return unit == LengthUnit::kPixel ? text : std::string(text) + " " + NameOf(unit);
}

Result<> CheckAids(const PageAids& aids) {
  if (!(aids.gridStep >= PageAids::kLeastGrid && aids.gridStep <= PageAids::kMostGrid)) {
    return Problem(N_("the step of a grid is a length from 0.1 to 10000"));
  }
  for (int axis = 0; axis < 2; ++axis) {
    if (aids.Guides(axis).size() > PageAids::kMostGuides) {
      return Problem(N_("a page has at most %s guides of each direction"), {std::to_string(PageAids::kMostGuides)});
    }
    if (!std::ranges::all_of(aids.Guides(axis), [](double place) { return std::isfinite(place); })) {
      return Problem(N_("a guide has no place"));
    }
  }
  return {};
}

}  // namespace host
