#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <thread>
#include <tuple>

#include "kit/system/AKSys.h"

namespace {

TEST(AKSys, Clock_CountsMicrosecondsOfASleep) {
  const double start = AKSys::GetCurrentApplicationTimeMicroSec();
  AKSys::SleepMicroSec(2000);
  const double end = AKSys::GetCurrentApplicationTimeMicroSec();
  EXPECT_GE(end - start, 2000);
  EXPECT_LT(end - start, 2e6);  // a wrong unit would be a thousand times off; a busy machine is not
  AKSys::SleepMicroSec(-1);
  AKSys::SleepMicroSec(0.4);
  EXPECT_LT(AKSys::GetCurrentApplicationTimeMicroSec() - end, 1e6);
  EXPECT_LE(std::llabs(AKSys::GetCurrentDateAndTime() - static_cast<long long>(std::time(nullptr))), 1);
}

TEST(AKSys, IsMainThread_IsFalseOnAnother) {
  bool other = true;
  std::thread([&other] { other = AKSys::IsMainThread(); }).join();
  EXPECT_TRUE(AKSys::IsMainThread());
  EXPECT_FALSE(other);
}

TEST(AKSys, LanguageAndRegion_FollowTheEnvironment) {
  using Text = const char*;
  const std::tuple<Text, Text, Text, Text, Text> cases[] = {
      {"", "", "de_AT.UTF-8@euro", "de", "AT"}, {"fr_fr", "de_DE", "", "fr", "FR"}, {"", "PT_BR", "en_GB", "pt", "BR"},
      {"C.UTF-8", "de_DE", "", "en", "US"},     {"", "", "eo", "eo", "US"},         {"", "", "", "en", "US"}};
  for (const auto& [all, messages, lang, language, region] : cases) {
    setenv("LC_ALL", all, 1);
    setenv("LC_MESSAGES", messages, 1);
    setenv("LANG", lang, 1);
    EXPECT_EQ(AKSys::GetUserLanguage(), language);
    EXPECT_EQ(AKSys::GetUserRegion(), region);
  }
}

TEST(AKRandom, LowRandom_StaysInItsReachAndFillsIt) {
  EXPECT_EQ(AKRandom::randomInit(42), 42U);
  const double first = AKRandom::_lowRandom(0, 0, 1, 1);
  AKRandom::randomInit(42);
  EXPECT_EQ(AKRandom::_lowRandom(0, 0, 1, 1), first);
  EXPECT_LE(std::abs(static_cast<long long>(AKRandom::randomInit(0)) - static_cast<long long>(std::time(nullptr))), 1);
  const std::tuple<double, double, double, double, double, double> cases[] = {
      // value, min, max, amount, reach
      {5, 0, 10, 0.1, 4, 6},      {20, 0, 10, 0.1, 0, 10}, {5, 0, 10, 1, 0, 10}, {0.5, 0, 10, 0.1, 0, 1.5},
      {9.5, 0, 10, 0.1, 8.5, 10}, {5, 0, 10, -0.5, 0, 10}, {5, 0, 10, 0, 5, 5},  {3, 3, 3, 0.5, 3, 3}};
  for (const auto& [value, min, max, amount, low, high] : cases) {
    double smallest = 1e9;
    double largest = -1e9;
    for (int i = 0; i < 4000; ++i) {
      const double number = AKRandom::_lowRandom(value, min, max, amount);
      smallest = std::min(smallest, number);
      largest = std::max(largest, number);
    }
    const double slack = (high - low) * 0.01;  // 4000 draws miss the last percent once in 10^17 times
    EXPECT_TRUE(smallest >= low && smallest <= low + slack) << value << " " << amount;
    EXPECT_TRUE(largest <= high && largest >= high - slack) << value << " " << amount;
  }
}

}  // namespace
