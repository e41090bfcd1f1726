// Images: from bitmaps and files, drawn into rectangles; pictures that are an image or a path.
#include <cstdio>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AGContext.h"
#include "graphics/images/AGImage.h"
#include "graphics/images/AGImageCacheInfo.h"
#include "graphics/images/AGPicture.h"
#include "graphics/images/AGSharedImages.h"
#include "kit/files/AKFileUtils.h"

int main() {
  AGBitmap bitmap(8, 8, AGBitmap::kFlagZeroFill);
  bitmap.ClearPixels(kAGColorRed);
  const AGImage image(bitmap);                              // a snapshot: the bitmap may go
  std::printf("%u x %u\n", image.Width(), image.Height());  // prints: 8 x 8

  AKFilePath folder;
  AKFileUtils::CreateUnusedFolderInTemporaryDir(&folder);
  const AKFilePath path = folder / AKFilePath("red.png");
  AGImage back;
  const bool saved = image.SaveToFile(path, AGImageFileFormat::kPNG, 1, false);
  const bool read = back.SetupFromFile(path);
  std::printf("%d %d\n", saved, read);  // prints: 1 1
  AKFileUtils::RemoveFile(path);
  const bool again = back.SetupFromFile(path);
  std::printf("%d %d\n", again, back.IsEmpty());  // prints: 0 1
  AKFileUtils::RemoveFolder(folder);

  // A picture is an image or a path; both are drawn into a rectangle.
  AGBitmap page(40, 20, AGBitmap::kFlagZeroFill);
  const AGContext context = page.GetContextOfBitmap();
  const AGPicture picture(image);
  context.DrawPicture(picture, {0, 0, 40, 20}, true, kAGImageQualityHigh);
  std::printf("%d %d\n", page.GetPixelColor(20, 10) == kAGColorRed,
              page.GetPixelColor(5, 10) == kAGNullColor);  // prints: 1 1

  // Which scale a drawn image is kept at.
  AGImageCacheInfo kept(kAGImageQualityHigh);
  const bool changed = kept.SetImageScale(100);
  std::printf("%d, %g\n", changed, kept.ImageScale());  // prints: 1, 8

  // Images of the application's resources, each loaded once; here it has none.
  std::printf("%d %u\n", AGSharedImages::Shared().RegisterImage("logo.png") == nullptr,
              AGSharedImages::Shared().Count());  // prints: 1 0
}
