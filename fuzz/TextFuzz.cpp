// Text of any code units, drawn, measured and outlined. The first byte chooses style, alignment and paint, the others
// are UTF-16, little-endian.
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/text/AGFont.h"

namespace {

// The outline's box is no wider than the extent says; a frame is as wide as its widest line, whose lines stand apart.
void CheckMeasures(const AGFont& font, const AKUniChars& text) {
  const AGSize extent = font.GetUTextExtent(text);
  AGPath outline;
  outline.AddUText(text, font, {0, 0}, kAGTextAlignmentLeft);
  const AGRect box = outline.GetFlattenedBoundingBox();
  const bool hasBreak = extent.height > 1.5 * font.GetLineHeight();
  if (!std::isfinite(extent.width) || !std::isfinite(extent.height)) std::abort();
  if (!hasBreak && box.Width() > extent.width + 0.1 * font.Size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  [[maybe_unused]] static const bool initialized = [] {
    AGFont::LowInitialize(AGFont::kOptionShare | AGFont::kOptionAcceptSubstitute);
    return true;
  }();
  if (size == 0) return 0;
  AKUniChars text;
  for (std::size_t i = 1; i + 1 < size; i += 2) text.Append(static_cast<unsigned short>(data[i] | data[i + 1] << 8));
  const AGFont font("DejaVu Sans", 16, data[0] & 0x7U);
  const AGTextAlignment alignment = data[0] >> 3 & 0x3U;
  const AGBitmap bitmap(96U, 64U, AGBitmap::kFlagZeroFill);
  AGContext context = bitmap.GetContextOfBitmap();
  if ((data[0] & 0x20) != 0) context.SetClipRect({10, 10, 80, 50});
  if ((data[0] & 0x40) == 0) context.brush.SetStyleSolid(kAGColorBlack);
  if ((data[0] & 0x80) != 0) context.pen.SetStyleSolid(kAGColorRed, 1, kAGPenSizeModeAbsolute);
  context.DrawUText(text, font, AGPoint{48, 32}, kAGAffineTransformIdentity, alignment);
  CheckMeasures(font, text);
  return 0;
}
