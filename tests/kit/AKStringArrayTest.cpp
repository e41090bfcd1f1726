#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "kit/AKStringArray.h"

namespace {

using Strings = std::initializer_list<AKString>;

TEST(AKStringArray, SplitToArray_KeepsEmptyPiecesAndTrims) {
  struct Case {
    const char *text, *separators, *trim;
    AKStringArray expected;
  };
  for (const Case& c : {Case{" a ; b ,,", nullptr, nullptr, Strings{"a", "b", "", ""}},
                        {"a,", nullptr, nullptr, Strings{"a", ""}},
                        {"", nullptr, nullptr, AKStringArray()},
                        {" \t ", nullptr, nullptr, Strings{""}},
                        {" a,b ", "", nullptr, Strings{"a,b"}},
                        {" a|b ", "|", "", Strings{" a", "b "}},
                        {"\xFF"
                         "a\xFF,",
                         "\xFF", ",", Strings{"", "a", ""}}}) {
    EXPECT_EQ(AKString(c.text).SplitToArray(c.separators, c.trim), c.expected) << c.text;
  }
}

TEST(AKStringArray, BuildFromArray_LosesLeadingEmptyElementsOnly) {
  AKString text("old");
  EXPECT_EQ(text.BuildFromArray(AKStringArray(Strings{"", "", "x", "", "y"}), "-"), "x--y");
  EXPECT_EQ(AKStringArray(Strings{"", "a"}).ConcatToString(","), "a");
  EXPECT_EQ(AKStringArray(Strings{"a", ""}).ConcatToString(", "), "a, ");
  EXPECT_EQ(AKStringArray().ConcatToString(","), "");
  // An element, and the separator, that is the string being built.
  const AKStringArray both(Strings{text, text});
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
  AKStringArray array(Strings{"old"});
  EXPECT_EQ(array.AssignWithCStrings(list), AKStringArray(Strings{"a", ""}));
  EXPECT_EQ(array.AssignWithCStrings(list, 4), AKStringArray(Strings{"a", "", "", "b"}));
  const AKStringArray copy(array);
  EXPECT_EQ(array.ToUpperCase()[3], "B");
  EXPECT_EQ(copy[3], "b");
  EXPECT_TRUE(array.AssignWithCStrings(list, 0).IsEmpty());
  EXPECT_TRUE(array.AssignWithCStrings(nullptr, 3).IsEmpty());
  EXPECT_TRUE(array.AssignWithCStrings(nullptr).IsEmpty());
}

}  // namespace
