// How many blocks the drawing layer asks the allocator for. The C functions below stand in for the library's in the
// whole program, the native layer and its libraries included; operator new goes through them too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/text/AGFont.h"
#include "tests/graphics/images/ImageTestSupport.h"

#if !defined(AK_SANITIZED)  // a sanitizer brings its own allocator

namespace {

std::size_t sBlocks = 0;  // the tests have one thread
std::size_t sLargest = 0;

}  // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
  ++sBlocks;
  sLargest = std::max(sLargest, size);
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  ++sBlocks;
  sLargest = std::max(sLargest, count * size);
  return __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
  ++sBlocks;
  sLargest = std::max(sLargest, size);
  return __libc_realloc(block, size);
}
}

namespace {

template <typename Action>
std::size_t BlocksOf(Action action) {
  const std::size_t before = sBlocks;
  action();
  return sBlocks - before;
}

TEST(AllocationsTest, Copies_AllocateForTheirExtensionsAlone) {
  AGPen pen(kAGBrushStyleLinearGradient, kAGColorRed, kAGColorBlue, 3, kAGPenSizeModeAbsolute);
  AGPen target;
  EXPECT_EQ(BlocksOf([&] {
              const AGPen copy(pen);
              target = copy;
              target.SetBrush(copy.Brush());
            }),
            0U);
  AGContext context(nullptr, {64, 48});
  context.pen = pen;
  EXPECT_EQ(BlocksOf([&] { const AGContext copy(context); }), 0U);
  AGPenCustomArrow arrow;
  arrow.SetBegArrow(3, 0.5);
  pen.SetCustomArrow(arrow);
  EXPECT_EQ(BlocksOf([&] { const AGPen copy(pen); }), 1U);
}

// As many as the header of AGContext.h says; a pixel or a path point that cost a block of its own would show.
TEST(AllocationsTest, Draws_StayWithinTheirHandful) {
  constexpr std::size_t kForRect = 6, kForRoundedRect = 12, kForPaint = 14;
  AGBrush solid, pattern, linear, radial;
  solid.SetStyleSolid(kAGColorRed);
  pattern.SetStylePattern(kAGColorRed, kAGColorYellow, 20);
  linear.SetStyleLinearGradient(kAGColorRed, kAGColorYellow, 0.3, 1);
  radial.SetStyleRadialGradient(kAGColorRed, kAGColorYellow, 0.3, 0.5, 0.5);
  for (const unsigned int flags : {0U, AGBitmap::kFlagLittleEndian}) {
    AGBitmap bitmap(64U, 64U, flags);
    AGContext context = bitmap.GetContextOfBitmap();
    context.pen.SetStyleSolid(kAGColorBlue, 2, kAGPenSizeModeAbsolute);
    for (const AGBrush* brush : {&solid, &pattern, &linear, &radial}) {
      const std::size_t forPaint = brush == &solid ? 0 : kForPaint;
      context.brush = *brush;
      for (const AGAffineTransform& transform :
           {kAGAffineTransformIdentity, AGAffineTransform{0.8, 0.6, -0.6, 0.8, 25, -15}}) {
        context.transform = transform;
        const auto rect = [&] { context.DrawRect({10, 10, 50, 50}); };
        const auto rounded = [&] { context.DrawRoundedRect({10, 10, 50, 50}, 0.5); };
        rounded();  // fills what the native layer keeps for the next draw
        EXPECT_LE(BlocksOf(rect), kForRect + forPaint) << brush->Style() << " " << transform.b;
        EXPECT_LE(BlocksOf(rounded), kForRoundedRect + forPaint) << brush->Style() << " " << transform.b;
      }
    }
  }
}

// What was drawn once in any of many sizes, angles, and above 128 pixels, is kept: no glyph is made anew.
TEST(AllocationsTest, Text_InManyScales_IsKept) {
  AGFont::LowInitialize(0);
  AGBitmap bitmap(200U, 200U, 0U);
  AGContext context = bitmap.GetContextOfBitmap();
  context.brush.SetStyleSolid(kAGColorBlack);
  for (const double first : {8.0, 130.0}) {
    for (const bool turned : {false, true}) {
      const auto draw = [&] {
        for (int i = 0; i < 64; ++i) {
          const double angle = turned ? i * 0.1 : 0;
          const AGFont font("DejaVu Sans", turned ? first : first + i, kAGFontStyleRegular);
          context.DrawText("Hamburgefonts", font, AGPoint{50, 60}, AGAffineTransformRotation(angle), 1);
        }
      };
      draw();
      EXPECT_LT(BlocksOf(draw) / 64, 60U) << first << turned;  // 13 glyphs made anew take hundreds
    }
  }
  AGFont::LowTerminate();
}

std::string BigEndian(std::uint32_t value, int size) {
  std::string bytes;
  for (int i = size - 1; i >= 0; --i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

// The check sum of PNG chunks, as its format describes it.
std::uint32_t Crc32(const std::string& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
  }
  return ~crc;
}

// A sample that says it has `side` by `side` pixels.
std::string WithSides(std::string bytes, std::uint32_t side) {
  if (bytes[1] == 'P') {
    bytes.replace(16, 8, BigEndian(side, 4) + BigEndian(side, 4));
    bytes.replace(29, 4, BigEndian(Crc32(bytes.substr(12, 17)), 4));
  } else if (bytes[0] == '\xFF') {
    const std::size_t frame = std::min(bytes.find("\xFF\xC0"), bytes.find("\xFF\xC2"));
    bytes.replace(frame + 5, 4, BigEndian(side, 2) + BigEndian(side, 2));
  } else {
    for (const char tag : {'\0', '\1'}) {
      const std::size_t entry = bytes.find(std::string{tag, 1, 3, 0, 1, 0, 0, 0});
      bytes.replace(entry + 8, 2, {static_cast<char>(side), static_cast<char>(side >> 8)});
    }
  }
  return bytes;
}

TEST(AllocationsTest, ImagesLargerThanTheirFilesCanBe_AreRefusedBeforeMemoryIsTaken) {
  const file_test::TempFolder folder;
  for (const char* name : {"rgba8.png", "rgba8-interlaced.png", "grey1.png", "baseline.jpg", "progressive.jpg",
                           "cmyk.jpg", "rgb8.tif", "fax.tif", "palette.tif", "strips.tif", "tiled.tif"}) {
    const std::string bytes = file_test::ReadBytes(image_test::Sample(name));
    for (const std::uint32_t side : {32000U, 60000U}) {
      file_test::WriteBytes(folder.Path(name), WithSides(bytes, side));
      sLargest = 0;
      EXPECT_TRUE(image_test::ImageOfFile(folder.Path(name)).IsEmpty()) << name;
      EXPECT_LT(sLargest, std::size_t{4} << 20) << name << " of " << side;
    }
  }
}

}  // namespace

#endif
