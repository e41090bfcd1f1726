// The readers against the C library's scanner, which the accepted texts are stated in.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextLocale.h"

namespace {

// Texts near the edges of what scanf takes as a number.
class TextMaker {
 public:
  explicit TextMaker(unsigned int seed) : random_(seed) {}

  std::string Number() {
    static const char* const kNumbers[] = {"0",
                                           "-0",
                                           "+5",
                                           "1",
                                           "42",
                                           "-17",
                                           "255",
                                           "256",
                                           "4294967297",
                                           "-2147483649",
                                           "9223372036854775807",
                                           "9223372036854775808",
                                           "-9223372036854775809",
                                           "18446744073709551615",
                                           "99999999999999999999999",
                                           "1.5",
                                           "-.5",
                                           "5.",
                                           ".",
                                           "-",
                                           "+",
                                           "",
                                           "1e3",
                                           "1E-3",
                                           "1e",
                                           "1e+",
                                           "1.e2x",
                                           "1e400",
                                           "-1e400",
                                           "1e-400",
                                           "4.9e-324",
                                           "3.4e39",
                                           "1e-46",
                                           "0x",
                                           "0x1p3",
                                           "0x1.8",
                                           "-0x10",
                                           "00012",
                                           "inf",
                                           "-INFINITY",
                                           "infin",
                                           "nan",
                                           "nan(12)",
                                           "i",
                                           "1_000",
                                           "1,5",
                                           "0.1",
                                           "123456.789012345678901234567890",
                                           "+-1",
                                           "- 1",
                                           "0e0",
                                           "1.7976931348623159e308"};
    std::string text = Below(6) == 0 ? std::string(Below(70), " \t\n"[Below(3)]) : std::string();
    if (Below(3) != 0) return text + kNumbers[Below(std::size(kNumbers))];
    for (unsigned int n = Below(9); n > 0; --n) text += "0123456789.-+exX :;naf"[Below(22)];
    return text;
  }

  /// Numbers after the given punctuation marks, now and then with a mark missing.
  std::string Fields(const std::string& marks) {
    std::string text;
    for (const char mark : marks) text += std::string(Below(12) != 0 ? 1 : 0, mark) + Number();
    return text + std::string(Below(2), ')');
  }

 private:
  unsigned int Below(std::size_t limit) { return static_cast<unsigned int>(random_() % limit); }

  std::mt19937 random_;
};

/// `expected` counts when `matched` is set; the default that the reader must else store is not a value of any text.
template <typename T, typename Reader>
void Check(Reader reader, const std::string& text, bool matched, T expected, T fallback) {
  T value{};
  ASSERT_EQ(reader(text.c_str(), &value, fallback), matched) << text;
  const auto bits = [](const T& number) { return std::bit_cast<std::array<unsigned char, sizeof(T)>>(number); };
  ASSERT_EQ(bits(value), bits(matched ? expected : fallback)) << text;  // -0 is not 0, and a NaN is itself
}

class Readers : public testing::Test {
 protected:
  const unsigned int seed_ = std::random_device()();
  testing::ScopedTrace trace_{__FILE__, __LINE__, seed_};
  TextMaker maker_{seed_};
};

TEST_F(Readers, Numbers_OfAnyText_AgreeWithScanf) {
  for (int i = 0; i < 100000 && !HasFatalFailure(); ++i) {
    const std::string whole = maker_.Number();
    const std::string text = whole.substr(0, 63);  // what a reader looks at
    long integer = 0;
    double real = 0;
    float real32 = 0;
    const bool isInteger = std::sscanf(text.c_str(), "%ld", &integer) == 1;
    const bool isReal = std::sscanf(text.c_str(), "%lf", &real) == 1;
    const bool isReal32 = std::sscanf(text.c_str(), "%f", &real32) == 1;
    const bool isUnsigned = isInteger && integer >= 0;
    Check<bool>(strGetasBool, whole, isInteger && (integer == 0 || integer == 1), integer == 1, integer != 1);
    Check<int>(strGetasSInt, whole, isInteger, static_cast<int>(integer), -77);
    Check<int>(strGetasSInt32, whole, isInteger, static_cast<int>(integer), -77);
    Check<long long>(strGetasSInt64, whole, isInteger, integer, -77);
    Check<unsigned int>(strGetasUInt, whole, isUnsigned, static_cast<unsigned int>(integer), 77);
    Check<unsigned int>(strGetasUInt32, whole, isUnsigned, static_cast<unsigned int>(integer), 77);
    Check<unsigned long long>(strGetasUInt64, whole, isUnsigned, static_cast<unsigned long long>(integer), 77);
    Check<double>(strGetasFloat64, whole, isReal, real, -77);
    Check<float>(strGetasFloat32, whole, isReal32, real32, -77);
  }
}

TEST_F(Readers, DoublesWrittenWithSeventeenDigits_ReadBackExactly) {
  std::mt19937_64 random(seed_);
  for (int i = 0; i < 50000 && !HasFatalFailure(); ++i) {
    const auto value = std::bit_cast<double>(random());
    char text[64];
    std::snprintf(text, sizeof(text), "%.17g", value);
    if (!std::isnan(value)) Check<double>(strGetasFloat64, text, true, value, 0);
  }
}

TEST_F(Readers, Geometry_OfAnyText_AgreesWithScanf) {
  for (int i = 0; i < 50000 && !HasFatalFailure(); ++i) {
    const std::string whole = maker_.Fields("(;;;");
    AGRect r;
    const int count = std::sscanf(whole.substr(0, 63).c_str(), "(%lf;%lf;%lf;%lf)", &r.x0, &r.y0, &r.x1, &r.y1);
    Check<AGRect>(strGetasAGRect, whole, count == 4, r, {1, 2, 3, 4});
    Check<AGPoint>(strGetasAGPoint, whole, count >= 2, {r.x0, r.y0}, {8, 9});
    Check<AGSize>(strGetasAGSize, whole, count >= 2, {r.x0, r.y0}, {8, 9});
    Check<AGInterval>(strGetasAGInterval, whole, count >= 2, {r.x0, r.y0}, {8, 9});
  }
}

TEST_F(Readers, Times_OfAnyText_AgreeWithScanf) {
  for (int i = 0; i < 50000 && !HasFatalFailure(); ++i) {
    const std::string whole = maker_.Number() + maker_.Fields(i % 2 == 0 ? "::" : ":");
    const std::string text = whole.substr(0, 63);
    int a = 0;
    int b = 0;
    double s = 0;
    bool matched = true;
    double expected = 0;
    if (std::sscanf(text.c_str(), "%d:%d:%lf", &a, &b, &s) == 3) {
      expected = std::fabs(a) * 3600 + std::fabs(b) * 60 + std::fabs(s);
    } else if (std::sscanf(text.c_str(), "%d:%lf", &a, &s) == 2) {
      expected = std::fabs(a) * 60 + std::fabs(s);
    } else {
      matched = std::sscanf(text.c_str(), "%lf", &expected) == 1;
      a = 1;  // the number has its own sign
    }
    const char* const start = text.c_str() + std::strspn(text.c_str(), " \t");
    if (a < 0 || (a == 0 && *start == '-')) expected = -expected;
    Check<double>(strGetasTimeHMS, whole, matched, expected, -77);
  }
  const std::pair<const char*, double> cases[] = {{"1:02:03.5", 3723.5}, {"-0:30", -30},  {"90", 90},
                                                  {" \t-0:00:1", -1},    {"\n-0:30", 30}, {"-0.5", -0.5},
                                                  {"-1:30", -90},        {"1:-30", 90}};
  for (const auto& [text, seconds] : cases) Check<double>(strGetasTimeHMS, text, true, seconds, 0);
}

TEST_F(Readers, Colors_OfAnyText_AgreeWithScanf) {
  const auto byte = [](unsigned int value) { return static_cast<unsigned char>(std::min(value, 255U)); };
  for (int i = 0; i < 50000 && !HasFatalFailure(); ++i) {
    const std::string text = maker_.Fields("(;;;");
    unsigned int c[4] = {};
    const int count = std::sscanf(text.c_str(), "(%u;%u;%u;%u)", &c[0], &c[1], &c[2], &c[3]);
    const AGColor color(byte(c[0]), byte(c[1]), byte(c[2]), count == 4 ? byte(c[3]) : 255);
    Check<AGColor>(strGetasAGColor, text, count >= 3, color, kAGColorCyan);
  }
  const std::tuple<const char*, bool, AGColor> cases[] = {{"FF000080", true, {255, 0, 0, 128}},
                                                          {"01ff03", true, {1, 255, 3}},
                                                          {"12 xyz", true, {0, 0, 0x12}},
                                                          {"#FF0000", false, {}},
                                                          {"#FF000", false, {}},
                                                          {"FF000000F", false, {}}};
  for (const auto& [text, matched, color] : cases) {
    Check<AGColor>(strGetasAGColorHex, text, matched, color, kAGColorCyan);
  }
}

TEST_F(Readers, NullText_GivesTheDefault) {
  double real = 0;
  AGRect rect;
  AGColor color;
  EXPECT_FALSE(strGetasFloat64(nullptr, &real, 7) || strGetasAGRect(nullptr, &rect, {1, 2, 3, 4}) ||
               strGetasAGColor(nullptr, &color, kAGColorRed) || strGetasAGColorHex(nullptr, &color, kAGColorRed) ||
               strGetasTimeHMS(nullptr, &real, 7));
  EXPECT_TRUE(real == 7 && rect.y1 == 4 && color == kAGColorRed);
}

}  // namespace
