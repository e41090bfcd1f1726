// The writers against printf, in whose formats their texts are stated, and against the readers.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>

#include "kit/text/AKTextConversions.h"

namespace {

std::string Format(double value, int decimals, int width = 0) {
  char text[400];
  std::snprintf(text, sizeof(text), "%0*.*f", width, decimals < 0 ? 6 : std::min(decimals, 9), value);
  return text;
}

// Doubles of every size, with many that lie half-way between two decimals.
double Real(std::mt19937_64* random) {
  const auto number = (*random)();
  if (number % 3 == 0) return std::bit_cast<double>((*random)());
  return static_cast<double>(static_cast<int>(number >> 32) % 200001) / (number % 3 == 1 ? 16 : 1000);
}

TEST(Writers, Reals_OfAnySize_AgreeWithPrintf) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  char text[1500];
  for (int i = 0; i < 100000; ++i) {
    const double a = Real(&random);
    const double b = Real(&random);
    const int decimals = static_cast<int>(random() % 14) - 2;
    const std::string pair = Format(a, decimals).append(";").append(Format(b, decimals));
    ASSERT_EQ(strSetasFloat64(text, a, decimals), Format(a, decimals));
    ASSERT_EQ(strSetasFloat32(text, static_cast<float>(a), decimals), Format(static_cast<float>(a), decimals));
    ASSERT_EQ(strSetasAGPoint(text, {a, b}, decimals), std::string("(").append(pair).append(")"));
    const std::string twice = std::string("(").append(pair).append(";").append(pair).append(")");
    ASSERT_EQ(strSetasAGRect(text, {a, b, a, b}, decimals), twice);
  }
  EXPECT_STREQ(strSetasAGSize(text, {-HUGE_VAL, 1}, 2), "(-inf;1.00)");
  EXPECT_STREQ(strSetasAGInterval(text, {-0.0, std::nan("")}, 0), "(-0;nan)");
}

TEST(Writers, Integers_AtTheirLimits) {
  char text[32];
  EXPECT_STREQ(strSetasBool(text, true), "1");
  EXPECT_STREQ(strSetasSInt(text, std::numeric_limits<int>::min()), "-2147483648");
  EXPECT_STREQ(strSetasUInt32(text, 0xFFFFFFFFU), "4294967295");
  EXPECT_STREQ(strSetasSInt64(text, std::numeric_limits<long long>::min()), "-9223372036854775808");
  EXPECT_STREQ(strSetasUInt64(text, ~0ULL), "18446744073709551615");
}

TEST(Writers, Times_AgreeWithPrintfAndReadBack) {
  const std::tuple<double, int, bool, std::string> cases[] = {
      {75.5, 1, true, "01:15.5"},         {5, 0, true, "5"},
      {3725, 0, false, "1:02:05"},        {-5.25, 2, true, "-5.25"},
      {-75.5, 1, true, "-01:15.5"},       {59.996, 2, false, "0:00:60.00"},
      {65, -1, true, "01:5.000000"},      {HUGE_VAL, 0, false, "inf"},
      {1e300, 0, false, Format(1e300, 0)}};
  char text[400];
  for (const auto& [seconds, decimals, compact, expected] : cases) {
    EXPECT_EQ(strSetasTimeHMS(text, seconds, decimals, compact), expected);
  }
  EXPECT_STREQ(strSetasTimeHMS(text, 5, 7, false), "0:00: 5.0000000");
  static constexpr const char* kSecondFormats[] = {"%02.0lf", "%04.1lf", "%05.2lf", "%06.3lf", "%07.4lf",
                                                   "%08.5lf", "%09.6lf", "%10.7lf", "%11.8lf", "%12.9lf"};
  std::mt19937 random(5);
  for (int i = 0; i < 20000; ++i) {
    const double seconds = (static_cast<double>(random()) / 65536 - 32768) / (i % 100 + 1);
    const int decimals = static_cast<int>(random() % 10);
    const int whole = static_cast<int>(std::fabs(seconds));
    char start[32];
    std::snprintf(start, sizeof(start), "%s%d:%02d:", seconds < 0 ? "-" : "", whole / 3600, whole / 60 % 60);
    char end[32];
    std::snprintf(end, sizeof(end), kSecondFormats[decimals], whole % 60 + (std::fabs(seconds) - whole));
    ASSERT_EQ(strSetasTimeHMS(text, seconds, decimals, false), start + std::string(end));
    double back = 0;
    ASSERT_TRUE(strGetasTimeHMS(strSetasTimeHMS(text, seconds, decimals, i % 2 == 0), &back, 0));
    ASSERT_NEAR(back, seconds, 0.51 * std::pow(10.0, -decimals)) << text;
  }
}

TEST(Writers, Durations_ChooseUnitAndScale) {
  const std::tuple<double, int, const char*> cases[] = {{75.25, -1, "1m15s"},
                                                        {5.5, -1, "5.50s"},
                                                        {3725, -1, "1h02m05s"},
                                                        {0, 3, "0s"},
                                                        {-4, 3, "0s"},
                                                        {std::nan(""), 3, "0s"},
                                                        {9e-7, 3, "0s"},
                                                        {0.0015, 0, "1.500ms"},
                                                        {0.05, 0, "0.050s"},
                                                        {0.1, -1, "0.100s"},
                                                        {0.9999, -1, "1.000s"},
                                                        {59.96, -1, "1m00.0s"},
                                                        {59.5, 0, "1m00s"},
                                                        {12.34, -1, "12.3s"},
                                                        {75.25, 2, "1m15.25s"},
                                                        {75.25, 7, "1m15.250s"},
                                                        {3599.96, 1, "1h00m00.0s"},
                                                        {1.05, 1, "1.1s"},
                                                        {1e300, 0, "2500000000000h00m00s"}};
  char text[64];
  for (const auto& [seconds, decimals, expected] : cases)
    EXPECT_STREQ(strSetasDuration(text, seconds, decimals), expected);
}

TEST(Writers, Dates_AreLocalTime) {
  setenv("TZ", "AKT-3", 1);  // three hours ahead of UTC
  tzset();
  char text[128];
  EXPECT_STREQ(strSetasSysDate(text, 951865199, true, true, false), "Wed 01/03/2000 01:59");
  EXPECT_STREQ(strSetasSysDate(text, 951865199, false, true, true), "01/03/2000 01:59:59");
  EXPECT_STREQ(strSetasSysDate(text, -5, false, false, false), "01/01/1970");
  EXPECT_STREQ(strSetasSysDate(text, std::numeric_limits<long long>::max(), true, true, true), "");
}

TEST(Writers, MemorySizesAndChannels) {
  const std::pair<long long, const char*> cases[] = {{0, "0 Byte"},
                                                     {-3, "0 Byte"},
                                                     {1, "1 Bytes"},
                                                     {999, "999 Bytes"},
                                                     {1000, "1.0 KB"},
                                                     {1500, "1.5 KB"},
                                                     {10000, "10.0 KB"},
                                                     {15000, "15 KB"},
                                                     {999999, "1000 KB"},
                                                     {1000000, "1.0 MB"},
                                                     {2500000000, "2.5 GB"},
                                                     {1000000000000, "1.0 TB"},
                                                     {123456789012345, "123 TB"},
                                                     {9223372036854775807, "9223372 TB"}};
  char text[64];
  for (const auto& [bytes, expected] : cases) EXPECT_STREQ(strSetasMemory(text, bytes), expected);
  const char* const channels[] = {"<None>", "<None>", "Mono", "Stereo", "3Ch"};
  for (int i = -1; i < 4; ++i) EXPECT_STREQ(strSetasChannCount(text, i), channels[i + 1]);
}

TEST(Writers, Colors_ReadBack) {
  char text[32];
  EXPECT_STREQ(strSetasAGColor(text, {255, 0, 7}, true), "(255;000;007;255)");
  EXPECT_STREQ(strSetasAGColor(text, {255, 0, 7, 3}, false), "(255;000;007)");
  EXPECT_STREQ(strSetasAGColorHex(text, {255, 1, 0, 3}, false), "FF0100");
  std::mt19937 random(3);
  for (int i = 0; i < 1000; ++i) {
    AGColor color;
    color.rgba = static_cast<std::uint32_t>(random());
    AGColor decimal;
    AGColor hex;
    ASSERT_TRUE(strGetasAGColor(strSetasAGColor(text, color, true), &decimal, {}));
    ASSERT_TRUE(strGetasAGColorHex(strSetasAGColorHex(text, color, true), &hex, {}));
    ASSERT_TRUE(decimal == color && hex == color) << text;
  }
}

TEST(MessageTexts, Rings_KeepEightTextsAnOverloadAndCutLongOnes) {
  const char* texts[8];
  for (unsigned char i = 0; i < 8; ++i) texts[i] = _akstr(AGColor(i, 0, 0, 1));
  const char* const point = _akstr(AGPoint{1, 2}, 1);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(texts[i], "(00" + std::to_string(i) + ";000;000;001)");
  EXPECT_EQ(_akstr(kAGColorRed), texts[0]);
  EXPECT_STREQ(point, "(1.0;2.0)");
  EXPECT_EQ(std::string(_akstr(AGSize{1e300, 1e300}, 9)).size(), 31U);
  EXPECT_EQ(std::string(_akstr(AGRect{1e300, 0, 0, 0}, -1)).size(), 63U);
}

TEST(SuffixNumbers, FindReplaceAndAdd) {
  const std::tuple<const char*, unsigned int, unsigned int> found[] = {
      {"abc", 0, 0}, {"123456789", 23456789, 8}, {"Layer 09", 9, 2}, {"7", 7, 1}, {"", 0, 0}, {"a\xB2", 0, 0}};
  for (const auto& [text, value, digits] : found) {
    unsigned int v = 77;
    unsigned int d = 77;
    EXPECT_EQ(AKStringSuffixNumberFind(text, &v, &d), digits != 0);
    EXPECT_TRUE(v == value && d == digits) << text;
  }
  const std::tuple<const char*, unsigned int, bool, const char*> added[] = {
      {"Layer 09", 1, false, "Layer 10"}, {"Copy", 1, true, "Copy2"},          {"Copy", 1, false, "Copy"},
      {"x99", 1, false, "x100"},          {"x00000007", 1, false, "x0000008"}, {"123456789", 1, false, "123456790"},
      {"v007", 0xFFFFFFFF, false, "v006"}};
  for (const auto& [original, increment, add, result] : added) {
    AKString text(original);
    EXPECT_EQ(AKStringSuffixNumberAdd(&text, increment, 1, add), std::string(original) != result);
    EXPECT_EQ(text, result);
  }
}

TEST(Hexa, DumpsAndHashCodes) {
  EXPECT_EQ(AKStringHexaFromBinaryData("\x00\x9F\xA0", 3, "0x"), "0x009FA0");
  EXPECT_EQ(AKStringHexaFromBinaryData(AKMemoryBlock("\xFF", 1), ""), "FF");
  EXPECT_TRUE(AKStringHexaFromBinaryData("x", 0, "0x").IsEmpty() &&
              AKStringHexaFromBinaryData(nullptr, 3, "0x").IsEmpty());
  EXPECT_EQ(AKStringComputeHashCode32("AB"), 65U * 128 + 66);
  // Ten more bytes turn the first one by 70 places, 6 more than the word has; four more turn it by 28 of 32.
  EXPECT_EQ(AKStringComputeHashCode64(AKString("\x80\0\0\0\0\0\0\0\0\0\0", 11)), 0x80ULL << 6);
  EXPECT_EQ(AKStringComputeHashCode32(AKString("\x81\0\0\0\0", 5)), (0x81U << 28) + (0x81U >> 4));
}

}  // namespace
