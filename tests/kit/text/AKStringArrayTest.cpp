#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <tuple>

#include "kit/text/AKStringArray.h"

namespace {

using Strings = AKStringArray;

TEST(AKStringArray, SplitToArray_KeepsEmptyPiecesAndTrims) {
  const std::tuple<const char*, const char*, const char*, Strings> cases[] = {
      {" a ; b ,,", nullptr, nullptr, {"a", "b", "", ""}},
      {"a,", nullptr, nullptr, {"a", ""}},
      {"", nullptr, nullptr, {}},
      {" \t ", nullptr, nullptr, {""}},
      {" a,b ", "", nullptr, {"a,b"}},
      {" a|b ", "|", "", {" a", "b "}},
      {"\xFF"
       "a\xFF,",
       "\xFF",
       ",",
       {"", "a", ""}}};
  for (const auto& [text, separators, trim, expected] : cases) {
    EXPECT_EQ(AKString(text).SplitToArray(separators, trim), expected) << text;
  }
}

TEST(AKStringArray, BuildFromArray_LosesLeadingEmptyElementsOnly) {
  AKString text("old");
  EXPECT_EQ(text.BuildFromArray((Strings{"", "", "x", "", "y"}), "-"), "x--y");
  EXPECT_EQ((Strings{"", "a"}).ConcatToString(","), "a");
  EXPECT_EQ((Strings{"a", ""}).ConcatToString(", "), "a, ");
  EXPECT_EQ(AKStringArray().ConcatToString(","), "");
  // An element, and the separator, that is the string being built.
  const Strings both{text, text};
  EXPECT_EQ(text.BuildFromArray(both, text), "x--yx--yx--y");
}

TEST(AKStringArray, SplitAndConcat_OfTextsWithoutBlanks_AreInverse) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int i = 0; i < 2000; ++i) {
    std::string text = "x";  // a first element that is not empty
    for (unsigned int length = random() % 30; length > 0; --length) text += "ab,"[random() % 3];
    const AKStringArray pieces = AKString(text).SplitToArray(",", nullptr);
    EXPECT_EQ(pieces.ConcatToString(","), text.c_str());
    std::istringstream stream(text + ",");  // getline drops an empty last piece unless it is ended
    unsigned int count = 0;
    for (std::string piece; std::getline(stream, piece, ','); ++count) ASSERT_EQ(pieces[count], piece.c_str());
    EXPECT_EQ(pieces.Count(), count);
  }
}

TEST(AKStringArray, AssignWithCStrings_EndsAtNullOrTakesTheCount) {
  const char* const list[] = {"a", "", nullptr, "b", nullptr};
  Strings array{"old"};
  EXPECT_EQ(array.AssignWithCStrings(list), (Strings{"a", ""}));
  EXPECT_EQ(array.AssignWithCStrings(list, 4), (Strings{"a", "", "", "b"}));
  const AKStringArray copy(array);
  EXPECT_EQ(array.ToUpperCase()[3], "B");
  EXPECT_EQ(copy[3], "b");
  EXPECT_TRUE(array.AssignWithCStrings(list, 0).IsEmpty());
  EXPECT_TRUE(array.AssignWithCStrings(nullptr, 3).IsEmpty());
  EXPECT_TRUE(array.AssignWithCStrings(nullptr).IsEmpty());
}

}  // namespace
