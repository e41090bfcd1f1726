#include "host/text/Expression.h"

#include <charconv>
#include <cmath>
#include <numbers>
#include <string>

namespace host {
namespace {

constexpr double kInch = 72;  // map units

struct Unit {
  std::string_view name;
  Measure measure;
  double factor;
};

// A name that begins with another one comes before it.
constexpr Unit kUnits[] = {
    {"mm", Measure::kLength, kInch / 25.4},
    {"cm", Measure::kLength, kInch / 2.54},
    {"in", Measure::kLength, kInch},
    {"\"", Measure::kLength, kInch},
    {"pt", Measure::kLength, 1},
    {"px", Measure::kLength, 1},
    {"deg", Measure::kAngle, 1},
    {"rad", Measure::kAngle, 180 / std::numbers::pi},
};

// A number of the measure's own units to some power: 0 is a plain one, 1 a length or an angle. A number without a unit
// is either, as what is around it needs.
struct Quantity {
  double value = 0;
  int power = 0;
  bool isBare = true;
};

class Reader {
 public:
  Reader(std::string_view text, Measure measure, std::optional<double> present, Decimals decimals, double unit)
      : rest_(text), measure_(measure), present_(present), decimals_(decimals), unit_(unit) {}

  std::optional<double> Value() {
    Quantity result;
    SkipBlanks();
    const bool goesOn = StartsWithAny({"*", "\u00D7", "/", "\u00F7"});
    if (goesOn ? !(GetPresent(1, &result) && ReadFactors(&result) && ReadTerms(&result)) : !ReadSum(&result)) return {};
    const bool fits = result.isBare || result.power == (measure_ == Measure::kPlain ? 0 : 1);
    if (!rest_.empty() || !fits || !std::isfinite(result.value)) return {};
    return result.isBare ? result.value * BareUnit() : result.value;
  }

 private:
  static constexpr int kDeepest = 50;  // brackets and signs

  void SkipBlanks() {
    for (bool isAny = true; isAny;) {
      isAny = false;
      for (const std::string_view blank : {" ", "\t", "\u00A0", "\u202F"}) {
        if (!rest_.starts_with(blank)) continue;
        rest_.remove_prefix(blank.size());
        isAny = true;
      }
    }
  }
  bool Take(std::string_view what) {
    if (!rest_.starts_with(what)) return false;
    rest_.remove_prefix(what.size());
    SkipBlanks();
    return true;
  }
  bool TakeAny(std::initializer_list<std::string_view> signs) {
    for (const std::string_view sign : signs) {
      if (Take(sign)) return true;
    }
    return false;
  }
  bool StartsWithAny(std::initializer_list<std::string_view> signs) const {
    for (const std::string_view sign : signs) {
      if (rest_.starts_with(sign)) return true;
    }
    return false;
  }

  bool ReadSum(Quantity* sum) { return ReadFactor(sum) && ReadFactors(sum) && ReadTerms(sum); }

  bool ReadTerms(Quantity* sum) {
    for (;;) {
      const bool isMinus = StartsWithAny({"-", "\u2212"});
      if (!TakeAny({"+", "-", "\u2212"})) return true;
      Quantity term;
      if (!ReadFactor(&term) || !ReadFactors(&term)) return false;
      if (!sum->isBare && !term.isBare && sum->power != term.power) return false;
      if (sum->isBare != term.isBare) AddUnit((sum->isBare ? term : *sum).power, sum->isBare ? sum : &term);
      sum->isBare = sum->isBare && term.isBare;
      sum->value += isMinus ? -term.value : term.value;
    }
  }

  double BareUnit() const { return measure_ == Measure::kLength ? unit_ : 1; }

  // A number without a unit becomes one of a power of the unit, beside another that is.
  void AddUnit(int power, Quantity* number) const {
    number->power = power;
    number->value *= std::pow(BareUnit(), power);
  }

  bool ReadFactors(Quantity* product) {
    for (;;) {
      const bool divides = StartsWithAny({"/", "\u00F7"});
      if (!TakeAny({"*", "\u00D7", "/", "\u00F7"})) return true;
      Quantity factor;
      if (!ReadFactor(&factor) || (divides && factor.value == 0)) return false;
      product->power += divides ? -factor.power : factor.power;
      product->value = divides ? product->value / factor.value : product->value * factor.value;
      product->isBare = product->isBare && factor.isBare;
    }
  }

  bool ReadFactor(Quantity* factor) {
    if (++depth_ > kDeepest) return false;
    const bool isRead = ReadFactorWithin(factor);
    --depth_;
    return isRead;
  }

  bool ReadFactorWithin(Quantity* factor) {
    if (Take("+")) return ReadFactor(factor);
    if (TakeAny({"-", "\u2212"})) {
      if (!ReadFactor(factor)) return false;
      factor->value = -factor->value;
      return true;
    }
    if (Take("(")) return ReadSum(factor) && Take(")");
    return ReadNumber(factor);
  }

  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  // Digits with one separator among or before them, and a power of ten.
  bool ReadNumber(Quantity* number) {
    std::string digits;
    bool hasSeparator = false;
    bool hasDigit = false;
    while (!rest_.empty()) {
      const char c = rest_.front();
      const bool isSeparator = c == '.' || (c == ',' && decimals_ == Decimals::kPointOrComma);
      if (!IsDigit(c) && (!isSeparator || hasSeparator)) break;
      hasSeparator = hasSeparator || isSeparator;
      hasDigit = hasDigit || IsDigit(c);
      digits += isSeparator ? '.' : c;
      rest_.remove_prefix(1);
    }
    if (!hasDigit) return false;
    TakePowerOfTen(&digits);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number->value);
    if (error != std::errc() || end != digits.data() + digits.size()) return false;
    SkipBlanks();
    return ReadUnit(number);
  }

  void TakePowerOfTen(std::string* digits) {
    if (!StartsWithAny({"e", "E"})) return;
    const std::size_t sign = rest_.size() > 1 && (rest_[1] == '-' || rest_[1] == '+') ? 1 : 0;
    std::size_t length = 1 + sign;
    while (length < rest_.size() && IsDigit(rest_[length])) ++length;
    if (length == 1 + sign) return;
    digits->append(rest_.substr(0, length));
    rest_.remove_prefix(length);
  }

  bool ReadUnit(Quantity* number) {
    if (Take("%")) return GetPresent(number->value / 100, number);
    if (measure_ != Measure::kLength && Take("\u00B0")) return SetUnit(1, number);
    for (const Unit& unit : kUnits) {
      if (unit.measure == measure_ && Take(unit.name)) return SetUnit(unit.factor, number);
    }
    return true;
  }

  bool SetUnit(double factor, Quantity* number) const {
    number->value *= factor;
    number->isBare = measure_ == Measure::kPlain;
    number->power = number->isBare ? 0 : 1;
    return true;
  }

  bool GetPresent(double share, Quantity* number) const {
    if (!present_) return false;
    number->value = *present_ * share;
    return SetUnit(1, number);
  }

  std::string_view rest_;
  const Measure measure_;
  const std::optional<double> present_;
  const Decimals decimals_;
  const double unit_;
  int depth_ = 0;
};

}  // namespace

std::optional<double> Evaluate(std::string_view text, Measure measure, std::optional<double> present, Decimals decimals,
                               double unit) {
  return Reader(text, measure, present, decimals, unit).Value();
}

}  // namespace host
