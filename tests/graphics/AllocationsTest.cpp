// How many blocks the drawing layer asks the allocator for. The C functions below stand in for the library's in the
// whole program, the native layer and its libraries included; operator new goes through them too.
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>

#include "graphics/AGBitmap.h"

#if !defined(AK_SANITIZED)  // a sanitizer brings its own allocator

namespace {

std::size_t sBlocks = 0;  // the tests have one thread

}  // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
  ++sBlocks;
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  ++sBlocks;
  return __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
  ++sBlocks;
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

}  // namespace

#endif
