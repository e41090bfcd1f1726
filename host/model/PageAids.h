// What helps with drawing on a page and is kept with it: the unit of lengths, the step of the grid, and guides.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/text/Problem.h"

namespace host {

/// In which lengths are shown and typed; coordinates stay map units.
enum class LengthUnit { kPixel, kPoint, kMillimetre, kCentimetre, kInch };
inline constexpr LengthUnit kLengthUnits[] = {LengthUnit::kPixel, LengthUnit::kPoint, LengthUnit::kMillimetre,
                                              LengthUnit::kCentimetre, LengthUnit::kInch};

/// Its name, as it is typed behind a number.
const char* NameOf(LengthUnit unit);
std::optional<LengthUnit> LengthUnitOf(std::string_view name);
/// Map units that it is long.
double MapUnitsOf(LengthUnit unit);
/// So many digits behind the point tell a tenth of a map unit, or finer.
int DigitsOf(LengthUnit unit);
/// A length in map units as a number of the unit, and behind it, when it is not a pixel, the unit's name.
std::string LengthText(double length, LengthUnit unit);

struct PageAids {
  static constexpr double kLeastGrid = 0.1;  ///< map units
  static constexpr double kMostGrid = 10000;
  static constexpr std::size_t kMostGuides = 1000;  ///< of each direction

  LengthUnit unit = LengthUnit::kPixel;
  double gridStep = 10;                  ///< map units
  std::vector<double> verticalGuides;    ///< their x, map units
  std::vector<double> horizontalGuides;  ///< their y

  bool operator==(const PageAids&) const = default;
  /// Of axis 0 those that stand at an x, of axis 1 those that lie at a y.
  std::vector<double>& Guides(int axis) { return axis == 0 ? verticalGuides : horizontalGuides; }
  const std::vector<double>& Guides(int axis) const { return axis == 0 ? verticalGuides : horizontalGuides; }
};

/// Fails for what is out of range.
Result<> CheckAids(const PageAids& aids);

}  // namespace host
