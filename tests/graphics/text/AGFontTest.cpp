// Fonts: binding under the options, sharing, the registry, measures against the font files themselves.
#include <gtest/gtest.h>
#include <hb.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "CoreText/CTFont.h"
#include "graphics/text/AGFont.h"
#include "tests/graphics/text/TextTestSupport.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class AGFontTest : public TextTest {};

TEST_F(AGFontTest, Binding_EachOption_GivesAFontOrNone) {
  const struct {
    unsigned int options;
    const char* name;
    bool valid;
  } cases[] = {
      {0, "DejaVu Sans", true},
      {0, "dejavu sans", false},  // compared to the letter
      {0, "No Such Font", false},
      {0, "Lucida Grande", false},
      {AGFont::kOptionAcceptSubstitute, "No Such Font", true},
      {AGFont::kOptionFallBack, "No Such Font", false},  // the default font is not installed either
      {AGFont::kOptionFallBack | AGFont::kOptionAcceptSubstitute, "Lucida Grande", true},
      {AGFont::kOptionShare, "DejaVu Serif", true},
      {kAccepting, "", false},
  };
  for (const auto& c : cases) {
    AGFont::LowTerminate();
    AGFont::LowInitialize(c.options);
    for (const AGFontStyle style : {kAGFontStyleRegular, kAGFontStyleBold}) {
      EXPECT_EQ(AGFont(c.name, 12, style).IsValid(), c.valid) << c.options << " " << c.name << " " << style;
    }
  }
}

TEST_F(AGFontTest, FallBack_DefaultFontIsBound_LendsItsFaceAndIsSharedUnderTheUnknownName) {
  AGFont::LowTerminate();
  AGFont::LowInitialize(kAccepting);  // the default font is bound here, to a substitute
  AGFont::SetOption(AGFont::kOptionAcceptSubstitute, false);
  const AGFont borrowed("No Such Font", 17, kAGFontStyleRegular);
  ASSERT_TRUE(borrowed.IsValid());
  EXPECT_DOUBLE_EQ(borrowed.GetAscent(), AGFont(kFamily, 17, 0).GetAscent());
  AGFont::SetOption(AGFont::kOptionShare, false);
  EXPECT_TRUE(AGFont("Lucida Grande", 24, kAGFontStyleRegular).IsValid()) << "described as the default, but not it";
  AGFont::SetOption(AGFont::kOptionShare, true);
  AGFont::SetOption(AGFont::kOptionFallBack, false);
  EXPECT_TRUE(AGFont("No Such Font", 5, kAGFontStyleRegular).IsValid());  // from the cache
  EXPECT_FALSE(AGFont("No Such Font", 5, kAGFontStyleBold).IsValid());    // has a key of its own
  EXPECT_FALSE(AGFont("No Such Font too", 5, kAGFontStyleRegular).IsValid());
}

TEST_F(AGFontTest, Styles_OfOneFamily_HaveFacesOfTheirOwn) {
  const AKString text("Hamburgefonstiv");
  const double regular = AGFont(kFamily, 100, 0).GetTextExtent(text).width;
  const double bold = AGFont(kFamily, 100, kAGFontStyleBold).GetTextExtent(text).width;
  const double italic = AGFont(kFamily, 100, kAGFontStyleItalic).GetTextExtent(text).width;
  const double underlined = AGFont(kFamily, 100, kAGFontStyleUnderline).GetTextExtent(text).width;
  const double unknownBit = AGFont(kFamily, 100, 8).GetTextExtent(text).width;
  EXPECT_GT(bold, regular * 1.05);
  EXPECT_NE(italic, regular);
  EXPECT_LT(std::fabs(italic - regular), 20);  // slanted, not widened
  EXPECT_EQ(underlined, regular);
  EXPECT_EQ(unknownBit, regular);
}

TEST_F(AGFontTest, Sharing_TwoSizesOfOneStyle_EachKeepsItsOwn) {
  const AGFont small(kFamily, 10, kAGFontStyleBold);
  const AGFont large(kFamily, 20, kAGFontStyleBold);
  EXPECT_NE(small.NativeFont(), large.NativeFont());
  EXPECT_DOUBLE_EQ(large.GetAscent(), 2 * small.GetAscent());
  EXPECT_DOUBLE_EQ(CTFontGetSize(small.NativeFont()), 10);
  EXPECT_DOUBLE_EQ(CTFontGetSize(large.NativeFont()), 20);
}

TEST_F(AGFontTest, Copies_ShareTheNativeFontUntilOneIsChanged) {
  auto original = std::make_unique<AGFont>(kFamily, 10, kAGFontStyleBold);
  AGNativeFont* const native = original->NativeFont();
  AGFont copy(*original);
  AGFont assigned("DejaVu Serif", 3, kAGFontStyleRegular);
  assigned = copy;
  const AGFont& same = assigned;
  assigned = same;
  EXPECT_TRUE(copy.IsEqual(*original) && assigned.IsEqual(copy) && copy.IsEqual(copy));
  EXPECT_TRUE(copy.NativeFont() == native && assigned.NativeFont() == native);
  assigned.SetSize(20);
  EXPECT_FALSE(assigned.IsEqual(copy) || AGFont("Other", 10, kAGFontStyleBold).IsEqual(copy) ||
               AGFont(kFamily, 10, kAGFontStyleRegular).IsEqual(copy));
  original.reset();
  EXPECT_DOUBLE_EQ(assigned.GetAscent(), 2 * copy.GetAscent());
  copy = AGFont();
  EXPECT_FALSE(copy.IsValid());
}

// More glyphs than the store of their pixels keeps: those that were forgotten look as before when they come again.
TEST_F(AGFontTest, ManyLargeGlyphs_AreForgottenAndMadeAgain) {
  const auto draw = [](double size) {
    Page page(1000, 800);
    page.context.DrawText("W", AGFont(kFamily, size, 0), AGPoint{5, 50}, kAGAffineTransformIdentity,
                          kAGTextAlignmentLeft);
    const auto* pixels = static_cast<const unsigned char*>(page.bitmap.Pixels());
    return std::vector<unsigned char>(pixels, pixels + page.bitmap.ByteCount());
  };
  const std::vector<unsigned char> first = draw(700);
  std::size_t kept = 0;
  for (int i = 1; i <= 130; ++i) {
    static_cast<void>(draw(700 + i));
    if (i == 65) kept = mallinfo2().uordblks + mallinfo2().hblkhd;  // 32 MB and more were made
  }
  EXPECT_LT(mallinfo2().uordblks + mallinfo2().hblkhd, kept + (16 << 20)) << "half a megabyte a glyph";
  EXPECT_EQ(draw(700), first);
}

TEST_F(AGFontTest, Setters_AfterBinding_RebindWhatChanged) {
  AGFont font(kFamily, 10, kAGFontStyleRegular);
  AGNativeFont* native = font.NativeFont();
  font.SetBold(false);
  font.SetSize(10);
  font.SetName(kFamily);
  EXPECT_EQ(font.NativeFont(), native);  // nothing changed
  const double height = font.GetLineHeight();
  font.SetSize(30);
  EXPECT_NEAR(font.GetLineHeight(), 3 * height, 1e-9);
  font.SetName("DejaVu Sans Mono", 10);
  EXPECT_NEAR(font.GetTextExtent("iiiiiiii").width, font.GetTextExtent("oooooooo").width, 2.5);
  font.SetSize(11);
  font.MulSize(1.5, true);
  EXPECT_EQ(font.Size(), 17);
  font.MulSize(0.5, false);
  EXPECT_EQ(font.Size(), 8.5);
  font.Clear();
  EXPECT_FALSE(font.IsValid());
  font.SetName(kFamily, 9);
  EXPECT_TRUE(font.IsValid());
}

TEST_F(AGFontTest, Registry_FontsOfBefore_AreBoundAndUnboundWithTheKit) {
  AGFont::LowTerminate();
  const AGFont early("No Such Font", 12, kAGFontStyleRegular);
  { const AGFont dead("Gone Before It Is Bound", 12, kAGFontStyleRegular); }
  AGFont::LowInitialize(AGFont::kOptionAcceptSubstitute);
  AGFont::SetOption(AGFont::kOptionAcceptSubstitute, false);
  EXPECT_TRUE(early.IsValid());  // since the initialisation, when substitutes were accepted
  AGFont::LowTerminate();
  EXPECT_EQ(AGFont::Options(), 0U);
  EXPECT_FALSE(early.IsValid());
}

// Takes minutes when a font that dies is looked for among all of them.
TEST_F(AGFontTest, Registry_ManyFonts_DieInAnyOrder) {
  AGFont::LowTerminate();
  for (const int order : {0, 1, 2}) {
    std::vector<std::unique_ptr<AGFont>> fonts(200000);
    for (auto& font : fonts) font = std::make_unique<AGFont>("No Such Font", 12, kAGFontStyleRegular);
    fonts[77777]->SetName(kFamily);
    AGFont* kept = fonts[77777].release();
    if (order == 1) std::reverse(fonts.begin(), fonts.end());
    if (order == 2) std::shuffle(fonts.begin(), fonts.end(), std::mt19937(7));
    for (auto& font : fonts) font.reset();
    AGFont::LowInitialize(0);
    EXPECT_TRUE(kept->IsValid());
    AGFont::LowTerminate();
    delete kept;
  }
}

TEST_F(AGFontTest, SecondInitialisation_DefaultFonts_AreUnboundAgain) {
  AGFont::LowTerminate();
  AGFont::LowInitialize(kAccepting);
  EXPECT_TRUE(kAGFontDefault.IsValid());
  EXPECT_TRUE(kAGFontDefaultMini.IsValid());
  AGFont::LowTerminate();
  EXPECT_FALSE(kAGFontDefault.IsValid());
  EXPECT_FALSE(kAGFontDefaultMini.IsValid());
}

TEST_F(AGFontTest, EagerBinding_FailsAtOnce_AndIsNotTriedAgain) {
  AGFont::LowTerminate();
  AGFont::LowInitialize(AGFont::kOptionBindEagerly);
  AGFont eager("No Such Font", 12, kAGFontStyleRegular);
  AGFont::SetOption(AGFont::kOptionAcceptSubstitute, true);
  EXPECT_FALSE(eager.IsValid());
  AGFont::SetOption(AGFont::kOptionBindEagerly, false);
  const AGFont lazy("No Such Font", 12, kAGFontStyleRegular);
  EXPECT_TRUE(lazy.IsValid());
  eager.SetBold(true);
  EXPECT_TRUE(eager.IsValid());
}

TEST_F(AGFontTest, Sizes_ThatAreNone_MeasureNothingAndDrawNothing) {
  for (const double size : {0.0, -0.0, -12.0, kNaN, -kInfinity}) {
    const AGFont font(kFamily, size, kAGFontStyleRegular);
    EXPECT_NE(font.NativeFont(), nullptr) << size;
    EXPECT_FALSE(font.IsValid()) << size;
    EXPECT_EQ(font.GetAscent() + font.GetDescent() + font.GetLeading() + font.GetLineHeight(), 0) << size;
    EXPECT_EQ(font.GetTextExtent("text\ntext").width, 0) << size;
    Page page(64, 64);
    page.context.DrawText("text", font, AGPoint{10, 20}, kAGAffineTransformIdentity, kAGTextAlignmentLeft);
    EXPECT_TRUE(InkOf(page.bitmap).IsEmpty()) << size;
  }
}

TEST_F(AGFontTest, Sizes_Extreme_AreLinearAndLeaveTheContextUsable) {
  const double unit = AGFont(kFamily, 1, 0).GetTextExtent("text").width;
  for (const double size : {1e-300, 1e-9, 0.01, 1e4, 1e7, 1e200, kInfinity}) {
    const AGFont font(kFamily, size, kAGFontStyleUnderline);
    if (size < kInfinity) {
      EXPECT_NEAR(font.GetTextExtent("text").width / size, unit, unit * 1e-9) << size;
    }
    Page page(64, 64);
    page.context.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
    page.context.DrawText("text", font, AGPoint{10, 20}, kAGAffineTransformIdentity, kAGTextAlignmentCenter);
    page.context.DrawText("te\nxt", font, AGPoint{10, 20}, kAGAffineTransformIdentity, kAGTextAlignmentRight);
    page.context.ClearPixels(kAGColorWhite);
    page.context.DrawText("l", AGFont(kFamily, 30, 0), AGPoint{10, 20}, kAGAffineTransformIdentity, 1);
    EXPECT_FALSE(InkOf(page.bitmap).IsEmpty()) << size;
  }
}

// The font's file, read by HarfBuzz without any of the layers between.
TEST_F(AGFontTest, Metrics_AreThoseOfTheFile) {
  const struct {
    const char* family;
    AGFontStyle style;
    const char* file;
  } cases[] = {{"DejaVu Sans", 0, "DejaVuSans.ttf"},
               {"DejaVu Sans", kAGFontStyleBold, "DejaVuSans-Bold.ttf"},
               {"DejaVu Serif", 0, "DejaVuSerif.ttf"},
               {"DejaVu Sans Mono", kAGFontStyleBold, "DejaVuSansMono-Bold.ttf"}};
  for (const auto& c : cases) {
    hb_blob_t* blob = hb_blob_create_from_file((std::string("/usr/share/fonts/truetype/dejavu/") + c.file).c_str());
    hb_face_t* face = hb_face_create(blob, 0);
    hb_font_t* file = hb_font_create(face);
    hb_font_extents_t extents{};
    ASSERT_TRUE(hb_font_get_h_extents(file, &extents)) << c.file;
    const double scale = 36.5 / hb_face_get_upem(face);
    const AGFont font(c.family, 36.5, c.style);
    // FreeType gives the ascender of a scaled font in whole pixels of the size that fonts are loaded at, 1024.
    constexpr double kTolerance = 36.5 / 1024;
    EXPECT_NEAR(font.GetAscent(), extents.ascender * scale, kTolerance) << c.file;
    EXPECT_NEAR(font.GetDescent(), -extents.descender * scale, kTolerance) << c.file;
    EXPECT_NEAR(font.GetLeading(), extents.line_gap * scale, kTolerance) << c.file;
    EXPECT_NEAR(font.GetLineHeight(), font.GetAscent() + font.GetDescent() + font.GetLeading(), 1e-9) << c.file;
    hb_font_destroy(file);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
  }
}

TEST_F(AGFontTest, GetTextTruncated_CutsByTheRatioOfTheWidths) {
  const AGFont font("DejaVu Sans Mono", 10, kAGFontStyleRegular);
  const AKString text("abcdefghijklmnopqrst");
  const double width = font.GetTextExtent(text).width;
  const struct {
    double maxWidth;
    const char* expected;
  } cases[] = {
      {width, "abcdefghijklmnopqrst"},
      {kInfinity, "abcdefghijklmnopqrst"},
      {width * 0.999, "abcdefghijklmnopqrs..."},
      {width * 0.51, "abcdefghij..."},
      {width * 0.151, "abc..."},
      {width * 0.149, "..."},
      {0, "..."},
      {-5, "..."},
      {kNaN, "..."},
  };
  for (const auto& c : cases) EXPECT_EQ(font.GetTextTruncated(text, c.maxWidth), c.expected) << c.maxWidth;
  EXPECT_EQ(font.GetTextTruncated("", 0), "");
}

TEST_F(AGFontTest, GetTextPosInBounds_EachAlignment_GivesItsAnchor) {
  const AGFont font(kFamily, 20, kAGFontStyleRegular);
  const double ascent = font.GetAscent();
  const double descent = font.GetDescent();
  const AGRect bounds{10, 20, 111, 61};
  const struct {
    int h;
    int v;
    AGPoint expected;
  } cases[] = {{-1, -9, {10, 20 + descent}},
               {7, 1, {111, 61 - ascent}},
               {0, 0, {61, std::floor(40.5 - (ascent - descent) / 2 + 0.5)}}};
  for (const auto& c : cases) {
    const AGPoint point = font.GetTextPosInBounds(bounds, c.h, c.v);
    EXPECT_DOUBLE_EQ(point.x, c.expected.x) << c.h;
    EXPECT_DOUBLE_EQ(point.y, c.expected.y) << c.v;
  }
}

TEST_F(AGFontTest, GetFontNameList_ListsEachInstalledFamilyOnce) {
  const AKStringArray& names = AGFont::GetFontNameList();
  EXPECT_EQ(names.ConcatToString(","), "DejaVu Sans,DejaVu Sans Mono,DejaVu Serif,LayeredSans,Noto Color Emoji");
  EXPECT_EQ(&AGFont::GetFontNameList(), &names);
}

}  // namespace
