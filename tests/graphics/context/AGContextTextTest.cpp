// Drawing, outlining and measuring text: where the ink is, what stays text on a page, and what bad input does.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "AKPlatform/AKVectorContext.h"
#include "CoreText/CTLine.h"
#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLowText.h"
#include "tests/graphics/text/TextTestSupport.h"

namespace {

int sNullTexts = 0;

}  // namespace

// Stands before the native layer's own, and hands on to it.
CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef text) {
  if (text == nullptr) ++sNullTexts;
  static const auto next = reinterpret_cast<decltype(&CTLineCreateWithAttributedString)>(
      dlsym(RTLD_NEXT, "CTLineCreateWithAttributedString"));
  return next(text);
}

namespace {

constexpr AGAffineTransform kHere = kAGAffineTransformIdentity;

class AGContextTextTest : public TextTest {
 protected:
  const AGFont font_{kFamily, 24, kAGFontStyleRegular};
};

// Glyphs are placed on whole pixels and their edges are soft: ink may be a pixel off at either side.
constexpr double kPixel = 1.01;

TEST_F(AGContextTextTest, DrawText_EachScript_LeavesItsInkInsideItsExtent) {
  const std::u16string_view texts[] = {
      u"Hamburgefonstiv",   u"AVAVA Wo",      u"office fluffy",      u"e\u0301 a\u030A x\u0323\u0302",
      u"שלום עולם",         u"مرحبا بالعالم", u"mixed שלום 12 text", u"𝔸𝕓𝕔",
      u"  blanks around  ", u"tab\tand\ttab", u"\U0001F0A1",         u"\xD800 lone",
  };
  for (const std::u16string_view text : texts) {
    const AKUniChars units = Utf16(text);
    const AGSize extent = font_.GetUTextExtent(units);
    AGPath outline;
    outline.AddUText(units, font_, {20, 60}, kAGTextAlignmentLeft);
    const AGRect box = outline.GetFlattenedBoundingBox();
    EXPECT_NEAR(box.Width(), extent.width, 0.1);
    Page page;
    page.context.DrawUText(units, font_, AGPoint{20, 60}, kHere, kAGTextAlignmentLeft);
    const Ink ink = InkOf(page.bitmap);
    ASSERT_FALSE(ink.IsEmpty());
    EXPECT_NEAR(ink.x0, box.x0, kPixel);
    EXPECT_NEAR(ink.x1, box.x1, kPixel);
    EXPECT_NEAR(ink.y0, box.y0, kPixel);
    EXPECT_NEAR(ink.y1, box.y1, kPixel);
    EXPECT_LE(ink.Width(), extent.width + 2 * kPixel);
    EXPECT_LE(ink.y1, 60 + font_.GetAscent() + kPixel);
    EXPECT_GE(ink.y0, 60 - font_.GetDescent() - kPixel);
  }
}

TEST_F(AGContextTextTest, DrawText_EachAlignment_PutsSingleLinesByTheirInkAndFramesLineByLine) {
  const struct {
    const char* text;
    AGTextAlignment alignment;
    double share;  // of the width that lies left of the point
  } cases[] = {
      {"Hill", kAGTextAlignmentLeft, 0},
      {"Hill", kAGTextAlignmentCenter, 0.5},
      {"Hill", kAGTextAlignmentRight, 1},
      {"Hill\nHi", kAGTextAlignmentLeft, 0},
      {"Hill\rHi", kAGTextAlignmentCenter, 0.5},
      {"Hill\r\nHi", kAGTextAlignmentRight, 1},
      {"Hill", 0, 0},
      {"Hill", 4, 0},
  };
  for (const auto& c : cases) {
    Page page;
    page.context.DrawText(c.text, font_, AGPoint{200, 100}, kHere, c.alignment);
    const Ink ink = InkOf(page.bitmap);
    const double bearing = 24 * 0.1;  // of the H, on either side at most
    EXPECT_NEAR(ink.x0, 200 - c.share * ink.Width(), bearing + kPixel) << c.text << c.alignment;
    const bool isFrame = AKString(c.text).Length() > 4;
    // The first baseline is on the point: its letters have no descenders.
    EXPECT_NEAR(ink.y1, 100 + 24 * 0.76, 1.5 * kPixel) << c.text;
    EXPECT_NEAR(ink.y0, isFrame ? 100 - font_.GetLineHeight() : 100, kPixel) << c.text;
  }
}

TEST_F(AGContextTextTest, DrawText_OfFrames_PutsBaselinesALineHeightApart) {
  Page page;
  page.context.DrawText("l\n\nl\n", font_, AGPoint{20, 150}, kHere, kAGTextAlignmentLeft);
  Page lines;
  for (const int i : {0, 2}) {
    lines.context.DrawText("l", font_, AGPoint{20, 150 - i * font_.GetLineHeight()}, kHere, kAGTextAlignmentLeft);
  }
  const Ink frame = InkOf(page.bitmap);
  const Ink single = InkOf(lines.bitmap);
  EXPECT_EQ(frame.y0, single.y0);
  EXPECT_EQ(frame.y1, single.y1);
  EXPECT_EQ(frame.darkness, single.darkness);
  EXPECT_NEAR(font_.GetTextExtent("l\n\nl\n").height, 3 * font_.GetLineHeight(), 1e-9);
}

TEST_F(AGContextTextTest, DrawText_RightToLeftFrame_BeginsAtThePointAllTheSame) {
  for (const std::u16string_view text : {u"שלום  \nעולם", u"hello  \nworld"}) {
    const struct {
      AGTextAlignment alignment;
      double share;
    } cases[] = {{1, 0}, {2, 0.5}, {3, 1}};
    for (const auto& c : cases) {
      Page page;
      page.context.DrawUText(Utf16(text), font_, AGPoint{200, 100}, kHere, c.alignment);
      const Ink ink = InkOf(page.bitmap);
      EXPECT_NEAR(ink.x0, 200 - c.share * ink.Width(), 4) << c.alignment;  // blanks at the end do not count
    }
  }
}

TEST_F(AGContextTextTest, DrawText_WithoutPaintOrText_DrawsNothingAndSaysSo) {
  const struct {
    const char* name;
    void (*change)(AGContext& context);
    const char* text;
    bool draws;
  } cases[] = {
      {"filled", [](AGContext&) {}, "a", true},
      {"no paint", [](AGContext& c) { c.brush.SetStyleNone(); }, "a", false},
      {"clear brush, pen of no size",
       [](AGContext& c) {
         c.brush.SetStyleSolid(kAGNullColor);
         c.pen.SetStyleSolid(kAGColorBlack, 0, kAGPenSizeModeAbsolute);
       },
       "a", false},
      {"pen alone",
       [](AGContext& c) {
         c.brush.SetStyleNone();
         c.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
       },
       "a", true},
      {"alpha below", [](AGContext& c) { c.alpha = 0.0039; }, "a", false},
      {"alpha NaN", [](AGContext& c) { c.alpha = std::nan(""); }, "a", false},
      {"no text", [](AGContext&) {}, "", false},
      {"no port",
       [](AGContext& c) {
         c = AGContext(nullptr, {10, 10});
         c.brush.SetStyleSolid(kAGColorBlack);
       },
       "a", false},
  };
  for (const auto& c : cases) {
    Page page(64, 64);
    c.change(page.context);
    EXPECT_EQ(AGGraphicsLow::AGContextDrawUText(page.context, font_, c.text, AKUniChars(), {20, 20}, kHere, 1), c.draws)
        << c.name;
    EXPECT_EQ(!InkOf(page.bitmap).IsEmpty(), c.draws) << c.name;
  }
  const AGFont none("", 12, kAGFontStyleRegular);
  EXPECT_FALSE(AGGraphicsLow::AGContextDrawUText(Page().context, none, "a", AKUniChars(), {20, 20}, kHere, 1));
}

TEST_F(AGContextTextTest, DrawText_RomanBytes_DrawsTheirCharacters) {
  Page bytes;
  bytes.context.DrawText(
      "\x8E"
      "clair \xA9",
      font_, AGPoint{20, 60}, kHere, kAGTextAlignmentLeft);
  Page units;
  units.context.DrawUText(Utf16(u"éclair ©"), font_, AGPoint{20, 60}, kHere, kAGTextAlignmentLeft);
  EXPECT_EQ(0, std::memcmp(bytes.bitmap.Pixels(), units.bitmap.Pixels(), units.bitmap.ByteCount()));
  EXPECT_FALSE(InkOf(units.bitmap).IsEmpty());
}

TEST_F(AGContextTextTest, DrawText_InARectangle_UsesTheFontsAnchor) {
  const AGRect rect{50, 30, 350, 170};
  const struct {
    int h;
    int v;
    AGTextAlignment alignment;
  } cases[] = {{-5, -1, 1}, {0, 0, 2}, {7, 3, 3}};
  for (const auto& c : cases) {
    Page inRect;
    inRect.context.DrawText("Text", font_, rect, c.h, c.v);
    Page atPoint;
    atPoint.context.DrawUText(Utf16(u"Text"), font_, font_.GetTextPosInBounds(rect, c.h, c.v), kHere, c.alignment);
    EXPECT_EQ(0, std::memcmp(inRect.bitmap.Pixels(), atPoint.bitmap.Pixels(), inRect.bitmap.ByteCount())) << c.h;
  }
}

// The same matrix with the flip in the port and taken back by the context.
TEST_F(AGContextTextTest, DrawText_PortWithYDown_IsUprightAllTheSame) {
  Page up;
  up.context.DrawText("Upg\nfl", font_, AGPoint{40, 120}, kHere, kAGTextAlignmentLeft);
  Page down;
  CGContextConcatCTM(down.context.NativePort(), {1, 0, 0, -1, 0, 200});
  down.context.transform = {1, 0, 0, -1, 0, 200};
  down.context.DrawText("Upg\nfl", font_, AGPoint{40, 120}, kHere, kAGTextAlignmentLeft);
  EXPECT_EQ(0, std::memcmp(up.bitmap.Pixels(), down.bitmap.Pixels(), up.bitmap.ByteCount()));
}

TEST_F(AGContextTextTest, DrawText_ThroughTransforms_GoesFromThePointThroughTheCallsToTheContexts) {
  Page page;
  page.context.transform = {1, 0, 0, 1, 30, -20};
  page.context.DrawText("l", font_, AGPoint{10, 20}, {3, 0, 0, 2, 0, 0}, kAGTextAlignmentLeft);
  AGPath path;
  path.AddText("l", font_, {10, 20}, kAGTextAlignmentLeft);
  path.ApplyTransform({3, 0, 0, 2, 30, -20});
  const AGRect box = path.GetBoundingBox();
  const Ink ink = InkOf(page.bitmap);
  EXPECT_NEAR(ink.x0, box.x0, kPixel);
  EXPECT_NEAR(ink.x1, box.x1, kPixel);
  EXPECT_NEAR(ink.y0, box.y0, kPixel);
  EXPECT_NEAR(ink.y1, box.y1, kPixel);
}

// Where the ink lies on average, in units.
double MiddleOfInk(const AGBitmap& bitmap) {
  double sum = 0;
  double weight = 0;
  for (unsigned int y = 0; y < bitmap.Height(); ++y) {
    for (unsigned int x = 0; x < bitmap.Width(); ++x) {
      const double darkness = 255 - bitmap.GetPixelColor(x, y).Green();
      sum += darkness * (x + 0.5);
      weight += darkness;
    }
  }
  return sum / weight;
}

TEST_F(AGContextTextTest, DrawText_BetweenPixels_MovesInQuarters) {
  const auto middle = [this](double x, double y) {
    Page page(64, 64);
    page.context.DrawText("l", font_, AGPoint{x, y}, kHere, kAGTextAlignmentLeft);
    return MiddleOfInk(page.bitmap);
  };
  const double start = middle(20, 20);
  // Coverage is sampled at 15 places a pixel: a middle is known to half of that.
  for (const double step : {0.25, 0.5, 0.75, 1.0, -0.25})
    EXPECT_NEAR(middle(20 + step, 20) - start, step, 1 / 28.0 + 0.01);
  EXPECT_NEAR(middle(20.1, 20.4), start, 1e-9);
}

TEST_F(AGContextTextTest, DrawText_WithAClip_StaysInsideAndLeavesNoClipBehind) {
  for (const bool strokes : {false, true}) {
    Page page;
    if (strokes) page.context.pen.SetStyleSolid(kAGColorBlack, 2, kAGPenSizeModeAbsolute);
    page.context.SetClipRect({40, 0, 80, 200});
    page.context.DrawStrings({AKString("HHHHHHHH"), AKString("HHHHHHHH")}, font_, {{20, 60}, {20, 120}}, kHere, 1);
    const Ink ink = InkOf(page.bitmap);
    EXPECT_GE(ink.x0, 40);
    EXPECT_LE(ink.x1, 80);
    EXPECT_GT(ink.Height(), 60);  // both strings: the first does not clip the second
    page.context.ResetClip();
    page.context.DrawRect({0, 0, 400, 200});
    EXPECT_EQ(InkOf(page.bitmap).darkness, 400LL * 200 * 255);
  }
}

TEST_F(AGContextTextTest, DrawText_OutlineOnly_LeavesTheInsideOpen) {
  const AGFont large(kFamily, 150, kAGFontStyleBold);
  const auto darkness = [&](bool fills, double pen, AGPenSizeMode mode, double scale) {
    Page page;
    if (!fills) page.context.brush.SetStyleNone();
    if (pen > 0) page.context.pen.SetStyleSolid(kAGColorBlack, static_cast<float>(pen), mode);
    page.context.transform = {scale, 0, 0, scale, 0, 0};
    page.context.DrawText("I", large, AGPoint{100, 20}, kHere, kAGTextAlignmentLeft);
    return InkOf(page.bitmap).darkness;
  };
  const long long fill = darkness(true, 0, kAGPenSizeModeAbsolute, 1);
  const long long outline = darkness(false, 2, kAGPenSizeModeAbsolute, 1);
  const long long both = darkness(true, 2, kAGPenSizeModeAbsolute, 1);
  EXPECT_LT(outline, fill / 3);
  EXPECT_NEAR(static_cast<double>(both), static_cast<double>(fill + outline / 2), static_cast<double>(fill) * 0.01);
  // A relative pen is widened by the context's transform, and the matrix widens every pen: 1/2 of 1/2 of it is left.
  const long long halved = darkness(false, 8, kAGPenSizeModeAbsolute, 0.5);
  const long long relative = darkness(false, 8, kAGPenSizeModeRelative, 0.5);
  EXPECT_NEAR(static_cast<double>(relative) / static_cast<double>(halved), 0.5, 0.05);
}

TEST_F(AGContextTextTest, DrawText_Underlined_IsOneBarUnderTheText) {
  Page page;
  page.context.DrawText("nnnn", AGFont(kFamily, 40, kAGFontStyleUnderline), AGPoint{20, 60}, kHere, 1);
  int rows = 0;
  for (unsigned int y = 40; y < 60; ++y) {
    int dark = 0;
    for (unsigned int x = 0; x < 400; ++x) dark += page.bitmap.GetPixelColor(x, y).Green() < 128 ? 1 : 0;
    if (dark > 90) ++rows;
  }
  EXPECT_GE(rows, 1);
  EXPECT_LE(rows, 4);
}

TEST_F(AGContextTextTest, DrawText_UnderlinedFrames_LeaveBlanksAtTheEndsOfLinesOut) {
  const AGFont font(kFamily, 24, kAGFontStyleUnderline);
  for (const char16_t* text : {u"שלום     \nעולם     ", u"Hill     \nHill     "}) {
    for (const AGTextAlignment alignment : {1, 2, 3}) {
      Page underlined;
      underlined.context.DrawUText(Utf16(text), font, AGPoint{200, 100}, kHere, alignment);
      Page plain;
      plain.context.DrawUText(Utf16(text), font_, AGPoint{200, 100}, kHere, alignment);
      const Ink ink = InkOf(plain.bitmap);
      EXPECT_NEAR(InkOf(underlined.bitmap).x0, ink.x0, 4) << alignment;
      EXPECT_NEAR(InkOf(underlined.bitmap).x1, ink.x1, 4) << alignment;
    }
  }
}

TEST_F(AGContextTextTest, Texts_WithANul_AreTakenWhole) {
  const struct {
    AKString bytes;
    const char16_t* shown;
  } cases[] = {{AKString("Hi\0ll", 5), u"Hill"}, {AKString("\0Hill", 5), u"Hill"}, {AKString("H\0\x8E", 3), u"Hé"}};
  for (const auto& c : cases) {
    EXPECT_EQ(font_.GetTextExtent(c.bytes).width, font_.GetUTextExtent(Utf16(c.shown)).width);
    Page page;
    page.context.DrawStrings({c.bytes}, font_, {{20, 60}}, kHere, kAGTextAlignmentLeft);
    EXPECT_NEAR(InkOf(page.bitmap).Width(), font_.GetUTextExtent(Utf16(c.shown)).width, 2 * kPixel);
  }
  EXPECT_GT(font_.GetTextExtent(AKString("l\0\nl", 4)).height, 1.9 * font_.GetLineHeight());
}

TEST_F(AGContextTextTest, DrawStrings_EmptyOnes_NeverReachTheNativeLayer) {
  Page page;
  sNullTexts = 0;
  page.context.DrawStrings({AKString(), AKString("l"), AKString()}, font_, {{20, 60}, {20, 60}, {20, 60}}, kHere, 1);
  EXPECT_EQ(sNullTexts, 0);
  EXPECT_FALSE(InkOf(page.bitmap).IsEmpty());
}

TEST_F(AGContextTextTest, AddText_FilledAsAPath_LooksAsDrawnText) {
  for (const char* text : {"Hamburg fi", "two\nlines"}) {
    Page drawn;
    drawn.context.DrawText(text, AGFont(kFamily, 60, 0), AGPoint{200, 120}, kHere, kAGTextAlignmentCenter);
    AGPath path;
    path.AddText(text, AGFont(kFamily, 60, 0), {200, 120}, kAGTextAlignmentCenter);
    EXPECT_EQ(path.Origin().x, 200);
    Page filled;
    filled.context.brush.SetFillMode(kAGBrushFillWinding);
    filled.context.DrawPath(path);
    const double a = static_cast<double>(InkOf(drawn.bitmap).darkness);
    const double b = static_cast<double>(InkOf(filled.bitmap).darkness);
    EXPECT_NEAR(a, b, b * 0.01) << text;
  }
  AGPath none;
  none.AddText("", font_, {1, 1}, 1);
  none.AddText("text", kAGNullFont, {1, 1}, 1);
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_FALSE(none.HasOrigin());
}

TEST_F(AGContextTextTest, DrawText_BadInput_EndsSoon) {
  std::mt19937 random(20261);
  AKUniChars words;
  AKUniChars one;
  AKUniChars breaks;
  AKUniChars tabs;
  AKUniChars noise;
  for (int i = 0; i < 1000000; ++i) {
    words.Append(i % 7 == 6 ? u' ' : u'm');
    one.Append(u'W');
    tabs.Append(u'\t');
    breaks.Append(i % 3 == 0 ? u'\r' : u'\n');
  }
  for (int i = 0; i < 20000; ++i) noise.Append(static_cast<unsigned short>(random()));
  AKUniChars wordsAndBreak = words;
  wordsAndBreak.Append(u'\n');
  AKUniChars surrogates;
  for (int i = 0; i < 10000; ++i) surrogates.Append(i % 3 == 0 ? 0xDC00 : 0xD800);
  for (const AKUniChars* text : {&words, &one, &breaks, &tabs, &noise, &wordsAndBreak, &surrogates}) {
    Page page;
    page.context.DrawUText(*text, font_, AGPoint{-5000, 60}, kHere, kAGTextAlignmentLeft);
    const AGSize extent = font_.GetUTextExtent(*text);
    EXPECT_TRUE(std::isfinite(extent.width) && std::isfinite(extent.height));
    page.context.ClearPixels(kAGColorWhite);
    page.context.DrawText("l", font_, AGPoint{10, 20}, kHere, 1);
    EXPECT_FALSE(InkOf(page.bitmap).IsEmpty());
  }
  // A frame wraps what its band of 32000 units can't hold, and ends at its lower edge.
  const AGSize wrapped = font_.GetUTextExtent(wordsAndBreak);
  EXPECT_LE(wrapped.width, 32000);
  EXPECT_GT(wrapped.width, 31000);
  EXPECT_LE(font_.GetUTextExtent(breaks).height, 32000);
}

bool Append(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

std::string TextOfPage(const std::string& pdf) {
  char pattern[] = "/tmp/textXXXXXX";
  const std::string folder = mkdtemp(pattern);
  std::FILE* file = std::fopen((folder + "/page.pdf").c_str(), "wb");
  std::fwrite(pdf.data(), 1, pdf.size(), file);
  std::fclose(file);
  EXPECT_EQ(std::system(("cd " + folder + " && pdftotext -enc UTF-8 page.pdf page.txt").c_str()), 0);
  std::string text(1 << 16, '\0');
  file = std::fopen((folder + "/page.txt").c_str(), "rb");
  text.resize(file == nullptr ? 0 : std::fread(text.data(), 1, text.size(), file));
  if (file != nullptr) std::fclose(file);
  std::filesystem::remove_all(folder);
  return text;
}

// The reader guesses blanks from distances, and guesses them inside Hebrew words whoever wrote the page.
std::string WithoutBlanks(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
  return text;
}

TEST_F(AGContextTextTest, PDF_TextOfEachScript_CanBeTakenOutAgain) {
  const struct {
    const char16_t* text;
    const char* expected;
  } cases[] = {
      {u"Hamburgefonstiv", "Hamburgefonstiv"},
      {u"office fluffy", "office fluffy"},
      {u"שלום", "שלום"},
      {u"𝔸𝕓𝕔", "𝔸𝕓𝕔"},
      {u"first\nsecond", "first\nsecond"},
      {u"naïve Ω", "naïve Ω"},
  };
  for (const bool outlined : {false, true}) {
    for (const auto& c : cases) {
      std::string file;
      CGContextRef page = CGVectorContextCreatePDF(400, 200, &Append, &file);
      AGContext context(page, {400, 200});
      if (outlined) {
        context.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
      } else {
        context.brush.SetStyleSolid(kAGColorBlack);
      }
      context.DrawUText(Utf16(c.text), font_, AGPoint{20, 100}, kHere, kAGTextAlignmentLeft);
      EXPECT_TRUE(CGVectorContextFinish(page));
      CGContextRelease(page);
      const std::string text = WithoutBlanks(TextOfPage(file));
      EXPECT_NE(text.find(WithoutBlanks(c.expected)), std::string::npos) << c.expected << " in " << text;
    }
  }
}

}  // namespace
