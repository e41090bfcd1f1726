// Sums with units, against values worked out by hand and against trees that are written out.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>

#include "host/text/Expression.h"

namespace host {
namespace {

constexpr double kMillimetre = 72 / 25.4;

TEST(ExpressionTest, Values) {
  const struct {
    const char* text;
    Measure measure;
    std::optional<double> value;  // with a present value of 80
  } cases[] = {
      {"12", Measure::kPlain, 12},
      {" -1.5 ", Measure::kPlain, -1.5},
      {",5", Measure::kPlain, 0.5},
      {"1,25e2", Measure::kPlain, 125},
      {"2+3*4", Measure::kPlain, 14},
      {"(2 + 3) \u00D7 4", Measure::kPlain, 20},
      {"7 - 2 - 1", Measure::kPlain, 4},
      {"24 / 4 / 2", Measure::kPlain, 3},
      {"2 - -3", Measure::kPlain, 5},
      {"\u22122", Measure::kPlain, -2},
      {"45\u00B0", Measure::kPlain, 45},
      {"50%", Measure::kPlain, 40},
      {"100 % + 5", Measure::kPlain, 85},
      {"*2", Measure::kPlain, 160},
      {"/ 4 + 1", Measure::kPlain, 21},
      {"1in", Measure::kLength, 72},
      {"1\"", Measure::kLength, 72},
      {"25,4 mm", Measure::kLength, 72},
      {"2.54cm", Measure::kLength, 72},
      {"3pt + 4 px", Measure::kLength, 7},
      {"5 + 10mm", Measure::kLength, 5 + 10 * kMillimetre},
      {"2 * (10mm - 1)", Measure::kLength, 2 * (10 * kMillimetre - 1)},
      {"10mm / 4", Measure::kLength, 2.5 * kMillimetre},
      {"20mm / 5mm * 3pt", Measure::kLength, 12},
      {"50% + 1pt", Measure::kLength, 41},
      {"*2", Measure::kLength, 160},
      {"90\u00B0 / 4", Measure::kAngle, 22.5},
      {"0.5rad", Measure::kAngle, 90 / std::numbers::pi},
      {"10 deg", Measure::kAngle, 10},
      {"", Measure::kPlain, {}},
      {"8o", Measure::kPlain, {}},
      {"1 2", Measure::kPlain, {}},
      {"1.2.3", Measure::kPlain, {}},
      {".", Measure::kPlain, {}},
      {"1e", Measure::kPlain, {}},
      {"1e999", Measure::kPlain, {}},
      {"nan", Measure::kPlain, {}},
      {"inf", Measure::kPlain, {}},
      {"2 +", Measure::kPlain, {}},
      {"(2", Measure::kPlain, {}},
      {"2)", Measure::kPlain, {}},
      {"1 / 0", Measure::kPlain, {}},
      {"1 / (2 - 2)", Measure::kPlain, {}},
      {"1mm", Measure::kPlain, {}},
      {"1mm", Measure::kAngle, {}},
      {"45\u00B0", Measure::kLength, {}},
      {"2mm * 3mm", Measure::kLength, {}},
      {"2mm / 3mm", Measure::kLength, {}},
      {"1mm + 2mm / 1mm", Measure::kLength, {}},
      {"1 / 2mm", Measure::kLength, {}},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.text);
    const auto value = Evaluate(one.text, one.measure, 80);
    ASSERT_EQ(value.has_value(), one.value.has_value());
    if (value) {
      EXPECT_NEAR(*value, *one.value, 1e-9);
    }
  }
  const std::pair<const char*, double> inMillimetres[] = {{"20", 20},      {"20 + 5mm", 25},       {"1cm - 2 * 3", 4},
                                                          {"2 * 1cm", 20}, {"(1 + 1cm) / 2", 5.5}, {"50% + 1", 11}};
  for (const auto& [text, expected] : inMillimetres) {
    const auto value =
        Evaluate(text, Measure::kLength, 20 * kMillimetre, Decimals::kPointOrComma, kMillimetre).value_or(0);
    EXPECT_NEAR(value / kMillimetre, expected, 1e-9) << text;
  }
  for (const char* text : {"50%", "*2"}) EXPECT_FALSE(Evaluate(text, Measure::kPlain, {})) << text;
  EXPECT_FALSE(Evaluate("1,5", Measure::kLength, {}, Decimals::kPoint));
  EXPECT_FALSE(Evaluate(std::string(100000, '(') + "1" + std::string(100000, ')'), Measure::kPlain, {}));
  EXPECT_TRUE(Evaluate(std::string(1000000, ' ') + "1", Measure::kPlain, {}));
  EXPECT_FALSE(Evaluate(std::string(100000, '-') + "1", Measure::kPlain, {}));
}

// A random sum as text, with its value as the compiler's own arithmetic has it.
struct Tree {
  std::string text;
  double value;
};

Tree Grow(std::mt19937& random, int depth) {
  const auto any = [&random](unsigned int count) { return static_cast<int>(random() % count); };
  if (depth == 0 || any(4) == 0) {
    const int tenths = any(1000);
    char text[16];
    std::snprintf(text, sizeof(text), "%d%c%d", tenths / 10, ".,"[any(2)], tenths % 10);
    return {text, tenths / 10.0};
  }
  const Tree a = Grow(random, depth - 1);
  const Tree b = Grow(random, depth - 1);
  const std::string blank(static_cast<std::size_t>(any(2)), ' ');
  const auto joined = [&](char sign) { return "(" + a.text + ")" + blank + sign + blank + "(" + b.text + ")"; };
  switch (any(5)) {
    case 0:
      return {a.text + blank + "+" + blank + b.text, a.value + b.value};
    case 1:
      return {joined('-'), a.value - b.value};
    case 2:
      return {joined('*'), a.value * b.value};
    case 3:
      return std::fabs(b.value) > 1e-3 ? Tree{joined('/'), a.value / b.value} : a;
    default:
      return {"-(" + a.text + ")", -a.value};
  }
}

TEST(ExpressionTest, RandomSums_HaveTheirValues) {
  const unsigned int seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int i = 0; i < 5000; ++i) {
    const Tree tree = Grow(random, 5);
    const auto value = Evaluate(tree.text, Measure::kPlain, {});
    ASSERT_TRUE(value) << tree.text;
    ASSERT_NEAR(*value, tree.value, 1e-9 * std::max(1.0, std::fabs(tree.value))) << tree.text;
  }
}

}  // namespace
}  // namespace host
