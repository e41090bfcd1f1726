// What the tests of text share: the kit's fonts for the time of a test, text, and the ink on a bitmap.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGTextAlignment.h"

inline constexpr const char* kFamily = "DejaVu Sans";

class TextTest : public testing::Test {
 protected:
  static constexpr unsigned int kAccepting =
      AGFont::kOptionShare | AGFont::kOptionFallBack | AGFont::kOptionAcceptSubstitute;

  void SetUp() override { AGFont::LowInitialize(kAccepting); }
  void TearDown() override { AGFont::LowTerminate(); }
};

inline AKUniChars Utf16(std::u16string_view text) {
  AKUniChars units;
  for (const char16_t unit : text) units.Append(unit);
  return units;
}

/// The pixels darker than `level`, in units, y up: x0 > x1 when there are none.
struct Ink {
  int x0 = 1 << 20;
  int y0 = 1 << 20;
  int x1 = -1;
  int y1 = -1;
  long long darkness = 0;  ///< the sum of 255 - green

  bool IsEmpty() const { return x0 > x1; }
  int Width() const { return x1 - x0; }
  int Height() const { return y1 - y0; }
};

inline Ink InkOf(const AGBitmap& bitmap, int level = 250) {
  Ink ink;
  for (int y = 0; y < static_cast<int>(bitmap.Height()); ++y) {
    for (int x = 0; x < static_cast<int>(bitmap.Width()); ++x) {
      const int green = bitmap.GetPixelColor(unsigned(x), unsigned(y)).Green();
      ink.darkness += 255 - green;
      if (green >= level) continue;
      ink.x0 = std::min(ink.x0, x);
      ink.y0 = std::min(ink.y0, y);
      ink.x1 = std::max(ink.x1, x + 1);
      ink.y1 = std::max(ink.y1, y + 1);
    }
  }
  return ink;
}

/// A white page to draw on in black.
struct Page {
  explicit Page(unsigned int width = 400, unsigned int height = 200)
      : bitmap(width, height, 0), context(bitmap.GetContextOfBitmap()) {
    context.ClearPixels(kAGColorWhite);
    context.brush.SetStyleSolid(kAGColorBlack);
  }

  AGBitmap bitmap;
  AGContext context;
};
