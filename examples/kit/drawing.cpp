// Drawing: a bitmap, a context on it, shapes, a clip, and what a host hands to akmDraw.
#include <cstdio>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/bitmaps/AGBitmapOfContext.h"
#include "graphics/bitmaps/AGImageCreate.h"
#include "graphics/context/AKDrawEvent.h"

namespace {

void Print(const AGBitmapBase& bitmap, unsigned int x, unsigned int y) {
  const AGColor color = bitmap.GetPixelColor(x, y);
  std::printf("%d %d %d %d\n", color.Red(), color.Green(), color.Blue(), color.Alpha());
}

// What a class does: a copy of the host's context, the recommended brush and pen, nothing where nothing would show.
void Draw(const AGContext& context, const AKDrawEvent& event) {
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  if (!copy.WouldFillOrStroke()) return;
  AGPath path;
  path.AddRoundedRect(event.bounds, 0.5, true);
  copy.DrawPath(path, AGAffineTransformRotation(event.angle, event.bounds.Center()));
}

void DrawHalf(AGContext& context, double, const AGRect& bounds, const void*) {
  context.brush.SetStyleSolid(kAGColorGreen);
  context.DrawRect({bounds.x0, bounds.y0, bounds.Center().x, bounds.y1});
}

}  // namespace

int main() {
  AGBitmap bitmap(40, 30, AGBitmap::kFlagZeroFill);
  const AGContext context = bitmap.GetContextOfBitmap();
  AGBrush brush;
  brush.SetStyleSolid(kAGColorRed);
  AKDrawEvent event;
  event.bounds = {10, 5, 30, 25};
  event.recommendedBrush = &brush;
  Draw(context, event);
  Print(bitmap, 20, 15);  // prints: 255 0 0 255
  Print(bitmap, 10, 5);   // prints: 0 0 0 0

  // y points up: row 0 is the lowest. A clip keeps what is drawn within it.
  AGContext lower(context);
  lower.SetClipRect({0, 0, 40, 15});
  lower.brush.SetStyleSolid(kAGColorBlue);
  lower.DrawRect({0, 0, 40, 30});
  Print(bitmap, 20, 10);  // prints: 0 0 255 255
  Print(bitmap, 20, 20);  // prints: 255 0 0 255

  // The pixels of a context that somebody else made.
  const AGBitmapOfContext seen(context, 0);
  std::printf("%u x %u, the same: %d\n", seen.Width(), seen.Height(),
              seen.Pixels() == bitmap.Pixels());  // prints: 40 x 30, the same: 1

  // An image that a procedure draws, two pixels a unit.
  const auto image = AGImageCreateWithProc(&DrawHalf, {10, 4}, 2, 1, nullptr);
  std::printf("%u x %u\n", image->Width(), image->Height());  // prints: 20 x 8
}
