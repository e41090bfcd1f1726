#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "kit/text/AKArgs.h"

namespace {

TEST(AKArgs, Tokeniser_SplitsAtBlanksOutsideQuotes) {
  const std::tuple<const char*, bool, std::vector<AKString>> cases[] = {
      {"-title:\"two words\" -x:1", true, {"-title:two words", "-x:1"}},
      {"\t-a\t \"b\tc\"", true, {"-a", "b\tc"}},
      {"-title:\"two words\" -x:1", false, {"-title:\"two words\"", "-x:1"}},
      {"a\nb c", true, {"a\nb", "c"}},
      {"-a ", true, {"-a"}},
      {"-a  ", true, {"-a", ""}},
      {"-a \t  ", true, {"-a", ""}},
      {"-a \"\" b", true, {"-a", "", "b"}},
      {"-a \"b c", true, {"-a", "b c"}},
      {"\"\" -a", true, {}},
      {"\"\" -a", false, {"\"\"", "-a"}},
      {" \t ", true, {}},
      {nullptr, true, {}}};
  for (const auto& [text, strip, expected] : cases) {
    const AKArgs arguments(text, strip);
    ASSERT_EQ(arguments.Count(), expected.size()) << text;
    for (unsigned int i = 0; i < arguments.Count(); ++i) EXPECT_EQ(arguments.GetArg(i), expected[i]) << text;
  }
}

TEST(AKArgs, Vector_TakesEveryEntry) {
  const char* list[] = {"program", "-a", nullptr};
  const AKArgs arguments(3, list);
  EXPECT_EQ(arguments.Count(), 3U);
  EXPECT_STREQ(arguments.argv(0), "program");
  EXPECT_STREQ(arguments.argv(2), "");
  EXPECT_EQ(arguments.argv(-1), nullptr);
  EXPECT_EQ(arguments.argv(3), nullptr);
  EXPECT_EQ(arguments.GetArg(3), kAKNullString);
  EXPECT_EQ(AKArgs(-1, list).Count() + AKArgs(3, nullptr).Count(), 0U);
}

TEST(AKArgs, GetParam_TakesTheFirstPrefix) {
  const AKArgs arguments("-id:7 -defaultSize:3 -id:8", true);
  EXPECT_TRUE(arguments.IsParam("-default"));
  EXPECT_FALSE(arguments.IsParam("-Default"));
  EXPECT_EQ(arguments.GetParam("-id:"), "7");
  EXPECT_EQ(arguments.GetParam("-none:"), "");
  AKString value("old");
  EXPECT_FALSE(AKArgs().GetParam("-id:", &value));
  EXPECT_EQ(value, "old");
  EXPECT_FALSE(arguments.GetParam("-none:", &value));
  EXPECT_EQ(value, "");
  AKString key("-defaultSize:");
  EXPECT_TRUE(arguments.GetParam(key, &key));
  EXPECT_EQ(key, "3");
}

}  // namespace
