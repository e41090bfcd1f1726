// Texts in other languages: through Mac OS Roman where it has them, behind a signature where it has not.
#include <gtest/gtest.h>

#include "host/Host.h"
#include "host/text/DisplayText.h"
#include "host/text/Problem.h"
#include "kit/host/AKHostServices.h"

namespace host {
namespace {

TEST(DisplayTextTest, TextForBundles_GoesThereAndBack) {
  const struct {
    const char* utf8;
    const char* bytes;
  } cases[] = {{"Curvature", "Curvature"},
               {"Kr\xC3\xBCmmung", "Kr\x9Fmmung"},
               {"?", "?"},
               {"\xE6\x9B\xB2\xE7\x8E\x87", "\xEF\xBB\xBF\xE6\x9B\xB2\xE7\x8E\x87"},
               {"", ""}};
  for (const auto& c : cases) {
    const AKString text = TextForBundles(c.utf8);
    EXPECT_STREQ(text.CStr(), c.bytes);
    EXPECT_EQ(DisplayText(text), c.utf8);
  }
  EXPECT_EQ(DisplayText("Undo \xEF\xBB\xBF\xE6\x9B\xB2"), "Undo \xE6\x9B\xB2") << "a bundle put a word in front";
  EXPECT_EQ(DisplayText("na\x95ve/\xEF\xBB\xBF\xE6\x9B\xB2/\xEF\xBB\xBF\xE6\x9B\xB2/na\x95ve"),
            "na\xC3\xAFve/\xE6\x9B\xB2/\xE6\x9B\xB2/na\xC3\xAFve")
      << "a path, name by name";
  EXPECT_EQ(DisplayText("\xEF\xBB\xBF\xE6\x9B\xB2/\xEF\xBB\xBF\xE6\x9B\xB2"), "\xE6\x9B\xB2/\xE6\x9B\xB2");
  EXPECT_EQ(DisplayText("\xEF\xBB\xBF\xFF"), "\xC3\x94\xC2\xAA\xC3\xB8\xCB\x87") << "no UTF-8: as Mac OS Roman";
}

TEST(LocalisationTest, WithoutCatalogue_TheTextStandsForItself) {
  Host::Instance();
  NKLocaleSetDomain("NoSuchDomain");
  const char* text = "Rectangle";
  EXPECT_EQ(NKLocaleGetString(text), text);
  EXPECT_STREQ(NKLocaleGetString(""), "");
  NKLocaleSetDomain(nullptr);
  EXPECT_EQ(NKLocaleGetString(text), text);
}

TEST(ProblemTest, TakesPartsInTurnAsTheyAre) {
  EXPECT_EQ(Problem(N_("can't open \"%s\": %s"), {"100%s.akd", "no %s"}).English(), "can't open \"100%s.akd\": no %s");
  EXPECT_EQ(Problem(N_("it is a folder"), {"unused"}).English(), "it is a folder");
  const Problem inner(N_("it is a folder"));
  EXPECT_EQ(Problem(N_("can't open \"%s\": %s"), {"a", inner}).English(), "can't open \"a\": it is a folder");
}

// What is not marked for translation is no problem's text.
static_assert(!std::is_constructible_v<Problem, const char*> && !std::is_constructible_v<Problem, std::string>);
static_assert(!std::is_constructible_v<Text, const char*>);
static_assert(!std::is_constructible_v<Result<>, bool>, "success has to be meant");

}  // namespace
}  // namespace host
