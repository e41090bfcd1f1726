#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace {

AKValue Number(double number) { return AKValueSetasFloat64(number); }
AKValue Text(const char* text) { return AKValueSetasAKString(text); }

TEST(AKValue, ScalarGetters_WithConversion_FollowTheTable) {
  constexpr long long kMax = std::numeric_limits<long long>::max();
  constexpr long long kMin = std::numeric_limits<long long>::min();
  const double nan = std::nan("");
  const struct {
    AKValue value;
    int boolean;  // -1: fails
    bool hasInteger;
    long long integer;
    bool hasFloat;
    double number;
  } cases[] = {
      {AKValueSetasBool(true), 1, true, 1, true, 1},
      {AKValueSetasBool(false), 0, true, 0, true, 0},
      {AKValueSetasSInt(-7), 1, true, -7, true, -7},
      {Number(2.5), 1, true, 3, true, 2.5},
      {Number(-2.5), 1, true, -2, true, -2.5},
      {Number(-0.0), 0, true, 0, true, 0},
      {Number(nan), 1, true, 0, true, nan},
      {Number(1e300), 1, true, kMax, true, 1e300},
      {Number(-1e300), 1, true, kMin, true, -1e300},
      {Text("12"), 1, true, 12, true, 12},
      {Text("0.75"), 0, true, 0, true, 0.75},  // the text reads as the integer 0 first
      {Text(".75"), 1, true, 1, true, 0.75},
      {Text("x"), -1, false, 0, false, 0},
      {Text(""), -1, false, 0, false, 0},
      {AKValue(), -1, false, 0, false, 0},
      {AKValueSetasBinary(AKMemoryBlock("1", 1)), -1, false, 0, false, 0},
      {AKValueSetasAKDictionary(AKDictionary()), -1, false, 0, false, 0},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(&expected - cases);
    bool boolean = false;
    long long integer = 99;
    double number = 99;
    EXPECT_EQ(expected.value.GetasBool(&boolean, true) ? (boolean ? 1 : 0) : -1, expected.boolean);
    EXPECT_EQ(expected.value.GetasInteger(&integer, true), expected.hasInteger);
    EXPECT_EQ(integer, expected.hasInteger ? expected.integer : 99);
    EXPECT_EQ(expected.value.GetasFloat(&number, true), expected.hasFloat);
    EXPECT_TRUE(std::isnan(expected.number) || number == (expected.hasFloat ? expected.number : 99));
    const int direct = expected.value.GetasBool(&boolean, false) + expected.value.GetasInteger(&integer, false) +
                       expected.value.GetasFloat(&number, false);
    const AKValueType type = expected.value.Type();
    EXPECT_EQ(direct, type == kAKValueTypeBool || type == kAKValueTypeInteger || type == kAKValueTypeFloat ? 1 : 0);
  }
}

TEST(AKValue, IsEqual_AcrossKinds_ComparesTypeAndContent) {
  AKValueArray array(2);
  array[0] = Number(1);
  const AKValue values[] = {AKValue(),
                            AKValueSetasSInt(1),
                            Number(1),
                            AKValueSetasBool(true),
                            Text("1"),
                            AKValueSetasBinary(AKMemoryBlock("1", 1)),
                            AKValueSetasAKValueArray(array),
                            AKValueSetasAKDictionary(AKDictionary())};
  for (const AKValue& first : values) {
    for (const AKValue& second : values) {
      EXPECT_EQ(first.IsEqual(AKValue(second)), &first == &second);
    }
  }
  EXPECT_TRUE(Number(0.0).IsEqual(Number(-0.0)));
  const AKValue nan = Number(std::nan(""));
  EXPECT_TRUE(nan.IsEqual(nan));
  EXPECT_FALSE(nan.IsEqual(AKValue(nan)));
}

TEST(AKValue, Assigned_FromItsOwnInside_BecomesThatPart) {
  AKDictionary dictionary;
  dictionary.SetValue("A.B.C", Text("deep"));
  AKValue value = AKValueSetasAKDictionary(dictionary);
  value = value.GetasAKDictionary()->GetValue("A");
  EXPECT_EQ(value.GetasAKDictionary()->GetUniqueSubKey(), AKString("B"));
  value.SetasAKDictionary(*value.GetasAKDictionary()->GetValue("B").GetasAKDictionary());
  value.SetasAKString(*value.GetasAKDictionary()->GetValue("C").GetasAKString());
  EXPECT_TRUE(value == Text("deep"));
  dictionary = *dictionary.GetValue("A").GetasAKDictionary();
  EXPECT_TRUE(dictionary.ContainsKey("B.C"));
  dictionary.SetValue("B", dictionary.GetValue("B.C"));
  EXPECT_TRUE(dictionary.GetValue("B") == Text("deep"));
  AKValueArray array(1);
  array[0].SetasAKValueArray(AKValueArray(3));
  array[0].GetasAKValueArray(&array);
  EXPECT_EQ(array.Count(), 3U);
}

}  // namespace
