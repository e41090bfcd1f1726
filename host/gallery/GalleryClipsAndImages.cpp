// Clips and images of the gallery.
#include <unistd.h>

#include "graphics/images/AGImage.h"
#include "graphics/paths/AGPath.h"
#include "host/gallery/Gallery.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

constexpr AGColor kInk{20, 100, 140};
constexpr AGRect kWhole{0, 0, 64, 48};

// Four by three pixels, each of its own colour; the one on the upper right is clear.
AGImage SmallImage() {
  AGBitmap bitmap(4U, 3U, AGBitmap::kFlagZeroFill);
  for (unsigned int y = 0; y < 3; ++y) {
    for (unsigned int x = 0; x < 4; ++x) {
      const auto level = [](unsigned int value) { return static_cast<unsigned char>(value); };
      bitmap.SetPixelColor(x, y, AGColor(level(60 + 60 * x), level(60 + 80 * y), level(250 - 60 * x)));
    }
  }
  bitmap.SetPixelColor(3, 2, kAGNullColor);
  return AGImage(bitmap);
}

// Four times as many pixels as it is drawn on, in stripes of three.
AGImage Stripes() {
  AGBitmap bitmap(192U, 144U, AGBitmap::kFlagZeroFill);
  AGContext context = bitmap.GetContextOfBitmap();
  context.ClearPixels(kAGColorYellow);
  for (unsigned int x = 0; x < 192; x += 6) context.ClearPixelsRect(kInk, {1.0 * x, 0, x + 3.0, 144});
  return AGImage(bitmap);
}

// The image after a way through a file of the format.
AGImage ThroughFile(const AGImage& image, AGImageFileFormat format) {
  AGImage read;
  AKFilePath path;
  const int descriptor = AKFileUtils::CreateUnusedFileInTemporaryDir(&path);
  if (descriptor < 0) return read;
  close(descriptor);
  if (image.SaveToFile(path, format, 0.2, true)) read.SetupFromFile(path);
  AKFileUtils::RemoveFile(path);
  return read;
}

void Image(AGContext& context, const AGRect& rect, bool keepAspect, AGImageQuality quality) {
  context.DrawImage(SmallImage(), rect, keepAspect, quality);
}

// A step wedge of three greys, for the blend modes of the colour factor to work on.
void DrawWedge(AGContext context) {
  context.colorFactor = 1;
  for (unsigned int i = 0; i < 3; ++i) {
    const auto grey = static_cast<unsigned char>(40 + 80 * i);
    context.brush.SetStyleSolid(AGColor(grey, grey, grey));
    context.DrawRect({20.0 * i, 0, 20.0 * i + 24, 48});
  }
}

std::vector<GalleryItem> ClipItems() {
  return {
      {"clip-rect",
       [](AGContext& context) {
         context.SetClipRect({50, 34, 10, 14});
         context.brush.SetStyleSolid(kInk);
         context.DrawEllipseInRect(kWhole);
       }},
      {"clip-path",
       [](AGContext& context) {
         AGPath clip;
         clip.AddEllipseInRect({8, 6, 56, 42}, false);
         context.SetClipPath(clip);
         context.brush.SetStylePattern(kInk, AGColor(255, 255, 160), 37);
         context.DrawRect(kWhole);
       }},
      {"clip-turned",
       [](AGContext& context) {
         context.transform = {0.866, 0.5, -0.5, 0.866, 16.29, -12.78};
         context.SetClipRect({14, 10, 50, 38});
         context.brush.SetStyleSolid(kInk);
         context.DrawRect({-50, -50, 100, 100});
       }},
      {"clip-gradient",
       [](AGContext& context) {
         AGPath clip;
         clip.AddRoundedRect({8, 6, 56, 42}, 1, false);
         context.SetClipPath(clip);
         context.brush.SetStyleRadialGradient(kAGColorYellow, kInk, 0.5, 0.5, 0.5);
         context.DrawRect(kWhole);
       }},
      {"clip-stroke",
       [](AGContext& context) {
         context.SetClipRect({0, 0, 32, 48});
         context.pen.SetStyleSolid(kInk, 8, kAGPenSizeModeAbsolute);
         context.DrawEllipseInRect({8, 8, 56, 40});
       }},
      {"clip-empty-is-none",
       [](AGContext& context) {
         context.SetClipRect({10, 10, 30, 30});
         context.SetClipRect({10, 10, 10, 30});
         context.brush.SetStyleSolid(kInk);
         context.DrawRect({4, 4, 60, 44});
       }},
  };
}

std::vector<GalleryItem> ImageItems() {
  return {
      {"image-at-point",
       [](AGContext& context) {
         context.DrawImage(SmallImage(), AGPoint{10, 20}, kAGAffineTransformIdentity, 0);
         context.DrawImage(SmallImage(), AGPoint{5, 5}, AGAffineTransformScaling(4, 2), 1);
       }},
      {"image-stretched",
       [](AGContext& context) {
         Image(context, {4, 4, 60, 44}, false, 1);
       }},
      {"image-tall-aspect",
       [](AGContext& context) {
         Image(context, {4, 2, 28, 46}, true, 1);
       }},
      {"image-wide-aspect",
       [](AGContext& context) {
         Image(context, {4, 14, 60, 34}, true, 1);
       }},
      {"image-mirrored",
       [](AGContext& context) {
         Image(context, {60, 4, 4, 44}, false, 1);
       }},
      {"image-enlarged-high",
       [](AGContext& context) {
         Image(context, {8, 6, 56, 42}, true, 3);
       }},
      {"image-shrunk-low",
       [](AGContext& context) {
         context.DrawImage(Stripes(), AGRect{8, 6, 56, 42}, true, 1);
       }},
      {"image-shrunk-high",
       [](AGContext& context) {
         context.DrawImage(Stripes(), AGRect{8, 6, 56, 42}, true, 3);
       }},
      {"image-alpha",
       [](AGContext& context) {
         DrawWedge(context);
         context.alpha = 0.5;
         Image(context, {8, 6, 56, 42}, true, 1);
       }},
      {"image-factor-below",
       [](AGContext& context) {
         DrawWedge(context);
         context.colorFactor = 0.5;
         Image(context, {8, 6, 56, 42}, true, 1);
       }},
      {"image-factor-above",
       [](AGContext& context) {
         DrawWedge(context);
         context.colorFactor = 1.5;
         Image(context, {8, 6, 56, 42}, true, 1);
       }},
      {"image-files",
       [](AGContext& context) {
         // Left to right: without loss, and what little quality makes of edges.
         context.DrawImage(ThroughFile(Stripes(), AGImageFileFormat::kTIFF), AGRect{2, 4, 30, 44}, false, 3);
         context.DrawImage(ThroughFile(SmallImage(), AGImageFileFormat::kPNG), AGRect{32, 26, 62, 46}, true, 1);
         context.DrawImage(ThroughFile(SmallImage(), AGImageFileFormat::kJPEG), AGRect{32, 2, 62, 22}, true, 1);
       }},
      {"image-turned",
       [](AGContext& context) {
         context.transform = {0.866, 0.5, -0.5, 0.866, 16.29, -12.78};
         Image(context, {10, 8, 54, 40}, false, 3);
       }},
      {"image-clipped",
       [](AGContext& context) {
         AGPath clip;
         clip.AddEllipseInRect({8, 6, 56, 42}, false);
         context.SetClipPath(clip);
         Image(context, kWhole, false, 1);
       }},
  };
}

}  // namespace

std::vector<GalleryItem> GalleryClipsAndImages() {
  std::vector<GalleryItem> items = ClipItems();
  const std::vector<GalleryItem> images = ImageItems();
  items.insert(items.end(), images.begin(), images.end());
  return items;
}

}  // namespace host
