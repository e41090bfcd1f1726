// Numbers as people type them: sums with units, such as "20 mm + 5" or "50 %".
//
//   sum      product, then any number of + or - with another
//   product  factor, then any number of *, / (or their typographic signs) with another
//   factor   a sign before a factor, a sum in brackets, or a number with or without a unit
//
// A text that begins with * or / goes on from the present value: "/ 2" halves it. Blanks are allowed anywhere but
// within a number.
#pragma once

#include <optional>
#include <string_view>

namespace host {

/// What a number is of, which says what units it may have.
enum class Measure {
  kPlain,   ///< ° alone, which changes nothing, since degrees are shown so
  kLength,  ///< mm, cm, in, ", pt and px: a map unit is a point of a page, and a pixel at scale 1
  kAngle,   ///< in degrees: °, deg and rad
};

/// How decimals are written: in fields a comma will do too, in lists of numbers it is what lies between two of them.
enum class Decimals { kPointOrComma, kPoint };

/// The value of a text, in map units or degrees. A number without a unit has `unit` map units where a length is asked
/// for. `present` is what a percent sign means hundredths of, as the unit of a
/// number, and where a text that begins with * or / begins; without it such texts have no value.
///
/// None for what is not written so, for quantities that don't fit each other (a product of two lengths, a length where
/// a plain number is asked for), for a division by nothing, and for what is not finite.
std::optional<double> Evaluate(std::string_view text, Measure measure, std::optional<double> present,
                               Decimals decimals = Decimals::kPointOrComma, double unit = 1);

}  // namespace host
