// The text conversions in a process whose numbers have a decimal comma. The first argument names a folder for the
// locale that the program makes for itself: nothing is asked of the machine but the locales package.
#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "kit/files/AKFilePath.h"
#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextLocale.h"

namespace {

std::string sLocales;  // the folder of the locales that the test makes

std::string Printed() {
  char text[32];
  std::snprintf(text, sizeof(text), "%.2f", 1.5);
  return text;
}

TEST(DecimalComma, Readers_TakeADot) {
  AGPoint point;
  EXPECT_TRUE(strGetasAGPoint("(1.5;2.5)", &point, {}));
  EXPECT_EQ(point, (AGPoint{1.5, 2.5}));
  EXPECT_TRUE(strGetasAGPoint("(1,5;0x1.8p1)", &point, {}));  // the scanner's own comma stays good
  EXPECT_EQ(point, (AGPoint{1.5, 3}));
  double seconds = 0;
  EXPECT_TRUE(strGetasTimeHMS("1:00.25", &seconds, 0));
  EXPECT_EQ(seconds, 60.25);
}

TEST(DecimalComma, PreparedText_IsReadByTheLibrarysScanner) {
  char prepared[64];
  double value = 0;
  EXPECT_EQ(std::sscanf(strPrepareFloatScanf(prepared, "12.75"), "%lf", &value), 1);
  EXPECT_EQ(value, 12.75);
  EXPECT_EQ(std::string(strPrepareFloatScanf(prepared, std::string(100, '.').c_str())), std::string(63, ','));
}

TEST(DecimalComma, Writers_WriteACommaOutsideAScope) {
  char text[128];
  EXPECT_STREQ(strSetasFloat64(text, -1.5, 2), "-1,50");
  EXPECT_STREQ(strSetasAGRect(text, {1, 2.5, 3, 4}, 1), "(1,0;2,5;3,0;4,0)");
  EXPECT_STREQ(strSetasTimeHMS(text, 65.5, 1, true), "01:05,5");
  EXPECT_STREQ(strSetasMemory(text, 1500), "1,5 KB");
  EXPECT_STREQ(strSetasDuration(text, 0.0015, -1), "1,500ms");
  EXPECT_STREQ(strSetasDuration(text, 5.5, -1), "5.50s");  // put together from whole numbers
}

TEST(DecimalComma, Scopes_MakeDotsAndNest) {
  char text[64];
  double value = 0;
  {
    const AKScopedPrintfFloatSepAsDot outer;
    EXPECT_EQ(Printed(), "1.50");
    EXPECT_STREQ(localeconv()->decimal_point, ".");
    {
      const AKScopedPrintfFloatSepAsDot inner;
      EXPECT_STREQ(strSetasFloat64(text, 0.25, 2), "0.25");
    }
    EXPECT_EQ(Printed(), "1.50");
    EXPECT_STREQ(localeconv()->decimal_point, ".");
    EXPECT_TRUE(strGetasFloat64("2.5", &value, 0));
    EXPECT_EQ(value, 2.5);
    std::string other;
    std::thread([&other] { other = Printed(); }).join();
    EXPECT_EQ(other, "1,50");
  }
  EXPECT_EQ(Printed(), "1,50");
  EXPECT_STREQ(localeconv()->decimal_point, ",");
  EXPECT_STREQ(strSetasFloat64(text, 0.25, 2), "0,25");
}

// In Turkish the small letter of I is not i.
TEST(TurkishLetters, Extensions_AreComparedByAscii) {
  setenv("LOCPATH", sLocales.c_str(), 1);
  ASSERT_NE(std::setlocale(LC_CTYPE, "tr_TR.UTF-8"), nullptr);
  EXPECT_NE(std::tolower('I'), 'i') << "this locale tells nothing";
  EXPECT_TRUE(AKFilePath("X.TIFF").HasExtension("tiff"));
  EXPECT_TRUE(AKFilePath("x.tiff").HasExtension(".TIFF"));
  EXPECT_FALSE(AKFilePath("x.tiff").HasExtension("tif"));
  std::setlocale(LC_CTYPE, "de_DE.UTF-8");
  unsetenv("LOCPATH");
}

}  // namespace

// localedef warns, and then exits with 1, on definitions that it takes.
static bool MakeLocale(const std::string& name, const std::string& folder) {
  const std::string path = folder + "/" + name + ".UTF-8";
  return std::system(("localedef --no-archive -i " + name + " -f UTF-8 '" + path + "' 2>/dev/null").c_str()) >= 0;
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) return 2;
  sLocales = argv[1];
  const std::string& folder = sLocales;
  if (!MakeLocale("de_DE", folder) || !MakeLocale("tr_TR", folder) || setenv("LOCPATH", folder.c_str(), 1) != 0)
    return 2;
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
    std::fprintf(stderr, "localedef gave no decimal-comma locale\n");
    return 1;
  }
  unsetenv("LOCPATH");  // as long as it is set, newlocale loses a little memory each time
  return RUN_ALL_TESTS();
}
