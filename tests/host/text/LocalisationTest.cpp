// Texts in other languages: through Mac OS Roman where it has them, behind a signature where it has not.
#include <gtest/gtest.h>

#include "host/Host.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
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

TEST(LocalisationTest, ErrorText_TakesPartsInTurnAsTheyAre) {
  EXPECT_EQ(ErrorText("can't open \"%s\": %s", {"100%s.akd", "no %s"}), "can't open \"100%s.akd\": no %s");
  EXPECT_EQ(ErrorText("it is a folder", {"unused"}), "it is a folder");
}

}  // namespace
}  // namespace host
