// Images made of a bitmap's pixels.
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGImage.h"
#include "graphics/bitmaps/AGBitmapBase.h"
#include "graphics/images/AGImage.h"
#include "graphics/native/AGGraphicsLowImageFile.h"

bool AGImage::SetupFromBitmap(const AGBitmapBase& bitmap) {
  Clear();
  return Own(AGGraphicsLow::CountedImage(CGBitmapContextCreateImage(bitmap.NativeContext())));
}
