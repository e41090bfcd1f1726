// Lines and frames of the native layer beside HarfBuzz and pango used directly, and text as a clip.
#include <gtest/gtest.h>
#include <hb.h>
#include <pango/pangocairo.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "AKPlatform/AKPixelOrder.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreText/CTFont.h"
#include "CoreText/CTFramesetter.h"
#include "CoreText/CTLine.h"
#include "CoreText/CTStringAttributes.h"

namespace {

struct Releaser {
  void operator()(const void* object) const { CFRelease(object); }
};
template <typename T>
using Owned = std::unique_ptr<T, Releaser>;

constexpr double kSize = 50;

Owned<const __CTFont> NewFont(const char* family, double size) {
  const Owned<const CFString> name(CFStringCreateWithCString(nullptr, family, kCFStringEncodingUTF8));
  return Owned<const __CTFont>(CTFontCreateWithName(name.get(), size, nullptr));
}

Owned<const CFAttributedString> Attributed(std::u16string_view text, const __CTFont* font) {
  const Owned<const CFString> string(CFStringCreateWithCharacters(
      nullptr, reinterpret_cast<const UniChar*>(text.data()), static_cast<CFIndex>(text.size())));
  const Owned<const CFAttributedString> plain(CFAttributedStringCreate(nullptr, string.get(), nullptr));
  Owned<CFAttributedString> result(CFAttributedStringCreateMutableCopy(nullptr, 0, plain.get()));
  if (font != nullptr) {
    CFAttributedStringSetAttribute(result.get(), CFRangeMake(0, static_cast<CFIndex>(text.size())),
                                   kCTFontAttributeName, font);
  }
  return Owned<const CFAttributedString>(result.release());
}

Owned<const CTLine> NewLine(std::u16string_view text, const char* family = "DejaVu Sans", double size = kSize) {
  return Owned<const CTLine>(CTLineCreateWithAttributedString(Attributed(text, NewFont(family, size).get()).get()));
}

// The advance of a text of one direction and one script in the font's file.
double AdvanceByHarfBuzz(std::u16string_view text) {
  hb_blob_t* blob = hb_blob_create_from_file("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  hb_face_t* face = hb_face_create(blob, 0);
  hb_font_t* font = hb_font_create(face);
  hb_buffer_t* buffer = hb_buffer_create();
  hb_buffer_add_utf16(buffer, reinterpret_cast<const uint16_t*>(text.data()), static_cast<int>(text.size()), 0, -1);
  hb_buffer_guess_segment_properties(buffer);
  hb_shape(font, buffer, nullptr, 0);
  unsigned int count = 0;
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
  double advance = 0;
  for (unsigned int i = 0; i < count; ++i) advance += positions[i].x_advance;
  advance *= kSize / hb_face_get_upem(face);
  hb_buffer_destroy(buffer);
  hb_font_destroy(font);
  hb_face_destroy(face);
  hb_blob_destroy(blob);
  return advance;
}

TEST(CTLineTest, Width_OfEachScript_IsHarfBuzzsAdvance) {
  for (const std::u16string_view text : {u"Hamburgefonstiv", u"AVAVAToWa", u"officeflfi", u"e\u0301o\u0302",
                                         u"שלוםעולם", u"مرحبابالعالم", u"Привет", u"Ελληνικά"}) {
    const double width = CTLineGetTypographicBounds(NewLine(text).get(), nullptr, nullptr, nullptr);
    EXPECT_NEAR(width, AdvanceByHarfBuzz(text), kSize * 1e-4 * static_cast<double>(text.size()));
  }
}

class PangoLayoutByHand {
 public:
  PangoLayoutByHand(std::u16string_view text, const char* family, double size) {
    PangoFontMap* map = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    PangoContext* context = pango_font_map_create_context(map);
    pango_context_set_round_glyph_positions(context, FALSE);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    layout_ = pango_layout_new(context);
    g_object_unref(context);
    g_object_unref(map);
    PangoFontDescription* description = pango_font_description_from_string(family);
    pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
    pango_layout_set_font_description(layout_, description);
    pango_font_description_free(description);
    char* utf8 = g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(text.data()), static_cast<glong>(text.size()),
                                 nullptr, nullptr, nullptr);
    pango_layout_set_text(layout_, utf8, -1);
    g_free(utf8);
  }
  PangoLayoutByHand(const PangoLayoutByHand&) = delete;
  PangoLayoutByHand& operator=(const PangoLayoutByHand&) = delete;
  ~PangoLayoutByHand() { g_object_unref(layout_); }

  PangoLayout* Get() const { return layout_; }

 private:
  PangoLayout* layout_;
};

TEST(CTLineTest, ImageBounds_AreThoseOfPangosInk) {
  for (const char16_t* text :
       {u"Hamburgefonstiv", u"mixed שלום text", u"e\u0301 q", u"٣ مرحبا", u"  x  ", u"fi\U0001D538"}) {
    for (const char* family : {"DejaVu Sans", "DejaVu Serif"}) {
      const PangoLayoutByHand layout(text, family, kSize);
      PangoRectangle ink{};
      PangoRectangle logical{};
      pango_layout_line_get_extents(pango_layout_get_line_readonly(layout.Get(), 0), &ink, &logical);
      const Owned<const CTLine> line = NewLine(text, family);
      const CGRect box = CTLineGetImageBounds(line.get(), nullptr);
      // Pango's own extents come from an outline of 50 units a size, in steps of 1/64.
      constexpr double kTolerance = 0.1;
      EXPECT_NEAR(box.origin.x, ink.x / 1024.0, kTolerance) << family;
      EXPECT_NEAR(box.size.width, ink.width / 1024.0, kTolerance) << family;
      EXPECT_NEAR(box.origin.y, -(ink.y + ink.height) / 1024.0, kTolerance) << family;
      EXPECT_NEAR(box.size.height, ink.height / 1024.0, kTolerance) << family;
      EXPECT_NEAR(CTLineGetTypographicBounds(line.get(), nullptr, nullptr, nullptr), logical.width / 1024.0,
                  kTolerance);
    }
  }
}

TEST(CTLineTest, ImageBounds_WithoutInk_AreEmpty) {
  for (const std::u16string_view text : {u"   ", u"\n", u"\t", u"\x01\x02", u"\u200B"}) {
    const CGRect box = CTLineGetImageBounds(NewLine(text).get(), nullptr);
    EXPECT_TRUE(CGRectIsEmpty(box));
    EXPECT_EQ(box.size.width, 0);
  }
  EXPECT_EQ(CTLineGetTypographicBounds(NewLine(u"ab\n\r\x01").get(), nullptr, nullptr, nullptr),
            CTLineGetTypographicBounds(NewLine(u"ab").get(), nullptr, nullptr, nullptr));
}

TEST(CTLineTest, Tabs_GoOnToTheNextMultipleOf8Spaces) {
  const auto width = [](std::u16string_view text) {
    return CTLineGetTypographicBounds(NewLine(text).get(), nullptr, nullptr, nullptr);
  };
  const double stop = width(u"        ");
  EXPECT_NEAR(width(u"\t"), stop, 1e-6);
  EXPECT_NEAR(width(u"a\t"), stop, 1e-6);
  EXPECT_NEAR(width(u"\t\tb"), 2 * stop + width(u"b"), 1e-6);
  EXPECT_NEAR(width(u"MMMMMM\tb"), (std::floor(width(u"MMMMMM") / stop) + 1) * stop + width(u"b"), 1e-6);
}

TEST(CTLineTest, MissingPieces_GiveNoLineAndNoFrame) {
  EXPECT_EQ(CTLineCreateWithAttributedString(Attributed(u"a", nullptr).get()), nullptr);
  EXPECT_EQ(NewLine(u""), nullptr);
}

#ifndef NDEBUG
// Other layers crash without a word.
TEST(NullRule, DebugBuildsNameTheFunction) {
  const struct {
    const char* name;
    void (*call)();
  } calls[] = {
      {"CFRelease", [] { CFRelease(nullptr); }},
      {"CFArrayGetCount", [] { CFArrayGetCount(nullptr); }},
      {"CTLineCreateWithAttributedString", [] { CTLineCreateWithAttributedString(nullptr); }},
      {"CTFontCreateCopyWithAttributes", [] { CTFontCreateCopyWithAttributes(nullptr, 12, nullptr, nullptr); }},
  };
  for (const auto& [name, call] : calls) EXPECT_DEATH(call(), std::string(name) + " was called with null");
}
#endif

TEST(CTFontTest, CopyFamilyName_IsTheOneThatWasFound) {
  const struct {
    const char* asked;
    const char* found;
  } cases[] = {{"DejaVu Serif", "DejaVu Serif"}, {"dejavu serif", "DejaVu Serif"}, {"Lucida Grande", "DejaVu Sans"}};
  for (const auto& c : cases) {
    const Owned<const CFString> family(CTFontCopyFamilyName(NewFont(c.asked, 12).get()));
    std::string name;
    for (CFIndex i = 0; i < CFStringGetLength(family.get()); ++i) {
      UniChar unit = 0;
      CFStringGetCharacters(family.get(), CFRangeMake(i, 1), &unit);
      name.push_back(static_cast<char>(unit));
    }
    EXPECT_EQ(name, c.found);
  }
}

Owned<const CTFrame> NewFrame(std::u16string_view text, double width, double height) {
  const Owned<const __CTFont> font = NewFont("DejaVu Sans", kSize);
  const Owned<const CTFramesetter> setter(CTFramesetterCreateWithAttributedString(Attributed(text, font.get()).get()));
  CGMutablePathRef path = CGPathCreateMutable();
  CGPathAddRect(path, nullptr, CGRectMake(7, 0, width, -height));
  Owned<const CTFrame> frame(CTFramesetterCreateFrame(setter.get(), CFRangeMake(0, 0), path, nullptr));
  CGPathRelease(path);
  return frame;
}

CFIndex LineCount(const CTFrame* frame) { return CFArrayGetCount(CTFrameGetLines(frame)); }

TEST(CTFrameTest, Breaks_EndLines_AndTheBottomEndsTheFrame) {
  const struct {
    std::u16string_view text;
    double height;
    CFIndex lines;
  } cases[] = {{u"a\nb", 1000, 2},   {u"a\r\nb", 1000, 2},   {u"a\n\rb", 1000, 3}, {u"a\n", 1000, 1},
               {u"\n\n\n", 1000, 3}, {u"a\u2028b", 1000, 2}, {u"a\nb", 100, 1},    {u"a", 10, 0}};
  for (const auto& c : cases) EXPECT_EQ(LineCount(NewFrame(c.text, 500, c.height).get()), c.lines) << c.height;
}

// Pango breaks by the same rules but keeps room for hyphens and for blanks at the end of a paragraph, so that now and
// then it needs a line more: it gives an upper bound, the width of a frame the lower one.
TEST(CTFrameTest, WideParagraphs_FitAndNeedNoMoreLinesThanPangos) {
  constexpr unsigned int kSeed = 4711;
  std::mt19937 random(kSeed);
  const std::u16string_view words[] = {u"a ",     u"word ", u"Hamburgefonstiv ", u"co-operate ", u"x.y, ",    u"end. ",
                                       u"日本語", u"שלום ", u"e\u0301e\u0301 ",  u"(see ",       u"1,000.50 "};
  for (int round = 0; round < 100; ++round) {
    std::u16string text;
    const int count = 2 + static_cast<int>(random() % 30);
    for (int i = 0; i < count; ++i) text += words[random() % std::size(words)];
    const double width = 480 + random() % 900;
    const PangoLayoutByHand layout(text, "DejaVu Sans", kSize);
    pango_layout_set_width(layout.Get(), static_cast<int>(width * PANGO_SCALE));
    pango_layout_set_wrap(layout.Get(), PANGO_WRAP_WORD);
    const Owned<const CTFrame> frame = NewFrame(text, width, 1e6);
    const int most = pango_layout_get_line_count(layout.Get());
    const std::string where = "seed " + std::to_string(kSeed) + ", round " + std::to_string(round);
    EXPECT_LE(LineCount(frame.get()), most) << where;
    EXPECT_GE(LineCount(frame.get()), most - 1 - most / 8) << where;
    const double blank = CTLineGetTypographicBounds(NewLine(u" ").get(), nullptr, nullptr, nullptr);
    double sum = 0;
    for (CFIndex i = 0; i < LineCount(frame.get()); ++i) {
      const auto* line = static_cast<CTLineRef>(CFArrayGetValueAtIndex(CTFrameGetLines(frame.get()), i));
      const double lineWidth = CTLineGetTypographicBounds(line, nullptr, nullptr, nullptr);
      EXPECT_LE(lineWidth, width + blank) << where;  // a blank may hang over
      sum += lineWidth;
    }
    const double whole = CTLineGetTypographicBounds(NewLine(text).get(), nullptr, nullptr, nullptr);
    EXPECT_NEAR(sum, whole, 0.01 * whole) << where;  // nothing is lost or set twice; kerning goes at the breaks
    std::vector<CGPoint> origins(static_cast<std::size_t>(LineCount(frame.get())));
    CTFrameGetLineOrigins(frame.get(), CFRangeMake(0, 0), origins.data());
    for (std::size_t i = 1; i < origins.size(); ++i) EXPECT_LT(origins[i].y, origins[i - 1].y);
  }
}

// A bitmap of the caller's memory, black on white.
class Canvas {
 public:
  Canvas() : pixels_(kSide * kSide * 4, 255) {
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    context_ = CGBitmapContextCreate(pixels_.data(), kSide, kSide, 8, kSide * 4, space, kCGBitmapBlueFirst);
    CGColorSpaceRelease(space);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() { CGContextRelease(context_); }

  CGContextRef Context() const { return context_; }
  int Dark(int x0, int x1) const {
    int count = 0;
    for (int y = 0; y < kSide; ++y) {
      for (int x = x0; x < x1; ++x) count += pixels_[static_cast<std::size_t>((y * kSide + x) * 4 + 1)] < 128 ? 1 : 0;
    }
    return count;
  }

  static constexpr int kSide = 200;

 private:
  std::vector<unsigned char> pixels_;
  CGContextRef context_;
};

TEST(CGContextTextTest, TextClips_TogetherNarrowWhatIsPaintedLater) {
  const Owned<const CTLine> line = NewLine(u"I", "DejaVu Sans", 100);
  for (const CGTextDrawingMode mode : {kCGTextClip, kCGTextFillClip, kCGTextFill, kCGTextInvisible}) {
    const Canvas canvas;
    CGContextSaveGState(canvas.Context());
    CGContextSetTextDrawingMode(canvas.Context(), mode);
    CGContextSetTextPosition(canvas.Context(), 20, 50);
    CTLineDraw(line.get(), canvas.Context());
    CGContextSetTextPosition(canvas.Context(), 120, 50);
    CTLineDraw(line.get(), canvas.Context());
    const bool fills = mode == kCGTextFill || mode == kCGTextFillClip;
    const int letter = 10 * 73;  // an I is a bar of about 10 by 73 hundredths of the size
    EXPECT_NEAR(canvas.Dark(0, 100), fills ? letter : 0, 120) << mode;
    EXPECT_NEAR(canvas.Dark(100, 200), fills ? letter : 0, 120) << mode;
    CGContextFillRect(canvas.Context(), CGRectMake(0, 0, 100, 200));
    const bool clips = mode == kCGTextClip || mode == kCGTextFillClip;
    EXPECT_NEAR(canvas.Dark(0, 100), clips ? letter : 100 * 200, 120) << mode;
    CGContextRestoreGState(canvas.Context());
    CGContextFillRect(canvas.Context(), CGRectMake(0, 0, 200, 200));
    EXPECT_EQ(canvas.Dark(0, 200), 200 * 200) << mode;
  }
}

}  // namespace
