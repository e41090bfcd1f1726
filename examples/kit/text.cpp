// Fonts and text: measuring, cutting to a width, drawing.
#include <cstdio>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AGContext.h"
#include "graphics/text/AGFont.h"

int main() {
  AGFont font("DejaVu Sans", 20, kAGFontStyleRegular);
  const AGSize extent = font.GetTextExtent("Label");
  std::printf("%d, one line: %d\n", font.IsValid(), extent.height == font.GetLineHeight());  // prints: 1, one line: 1
  font.MulSize(2, true);
  std::printf("%g, wider: %d\n", font.Size(),
              font.GetTextExtent("Label").width > extent.width);      // prints: 40, wider: 1
  std::printf("%s\n", font.GetTextTruncated("Label", 10000).CStr());  // prints: Label

  // A family that is not there gives no valid font, measures of 0, and no text.
  const AGFont missing("No Such Family", 20, kAGFontStyleRegular);
  std::printf("%d %g\n", missing.IsValid(), missing.GetTextExtent("Label").width);  // prints: 0 0

  // In the middle of a rectangle, filled with the brush.
  AGBitmap bitmap(120, 60, AGBitmap::kFlagZeroFill);
  AGContext context = bitmap.GetContextOfBitmap();
  context.brush.SetStyleSolid(kAGColorBlack);
  context.DrawText("|||", font, {0, 0, 120, 60}, 0, 0);
  unsigned int painted = 0;
  for (unsigned int x = 0; x < 120; ++x) painted += bitmap.GetPixelColor(x, 30).Alpha() > 128 ? 1 : 0;
  std::printf("%d\n", painted > 0 && bitmap.GetPixelColor(0, 30) == kAGNullColor);  // prints: 1
}
