// Native images that are counted, and the files that they come from and go to.
#pragma once

#include "graphics/images/AGImage.h"

namespace AGGraphicsLow {

/// Adds a new native image, which may be null, to the counters and returns it.
CGImage* CountedImage(CGImage* image);
/// Takes it out of the counters and releases it; null is ignored.
void DeleteCountedImage(CGImage* image);
unsigned int CountedImages();
unsigned long long CountedImageBytes();

/// The first image of the file, counted; null when there is none or the path is empty.
CGImage* LoadImageFile(const AKFilePath& path);
/// See AGImage::SaveToFile; a null image gives false.
bool SaveImageFile(CGImage* image, const AKFilePath& path, AGImageFileFormat format, double quality,
                   bool highResolution);

}  // namespace AGGraphicsLow
