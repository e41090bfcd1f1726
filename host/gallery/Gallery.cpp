#include "host/gallery/Gallery.h"

#include "host/gallery/StrokeFont.h"
#include "host/pictures/MemoryWatch.h"

namespace host {
namespace {

constexpr unsigned int kColumns = 10;
constexpr unsigned int kZoom = 2;
constexpr unsigned int kMargin = 8;
constexpr unsigned int kLabelHeight = 7;
constexpr unsigned int kCellWidth = kGalleryWidth * kZoom + kMargin;
constexpr unsigned int kCellHeight = kGalleryHeight * kZoom + kLabelHeight + 2 * kMargin;

// Pixel by pixel, since a resampled picture would hide the very pixels that the page is there to show.
void CopyEnlarged(const AGBitmap& from, AGBitmap* to, unsigned int left, unsigned int bottom) {
  for (unsigned int y = 0; y < from.Height() * kZoom; ++y) {
    for (unsigned int x = 0; x < from.Width() * kZoom; ++x) {
      to->SetPixelColor(left + x, bottom + y, from.GetPixelColor(x / kZoom, y / kZoom));
    }
  }
}

}  // namespace

std::vector<GalleryItem> GalleryItems() {
  std::vector<GalleryItem> items;
  for (auto part :
       {&GalleryFills, &GalleryGradients, &GalleryStrokes, &GalleryShapes, &GalleryClipsAndImages, &GalleryText}) {
    const std::vector<GalleryItem> more = part();
    items.insert(items.end(), more.begin(), more.end());
  }
  return items;
}

std::unique_ptr<AGBitmap> DrawGalleryItem(const GalleryItem& item, unsigned int bitmapFlags) {
  auto bitmap = std::make_unique<AGBitmap>(kGalleryWidth, kGalleryHeight, bitmapFlags);
  if (!bitmap->IsOpen()) return bitmap;
  AGContext context = bitmap->GetContextOfBitmap();
  context.ClearPixels(kAGColorWhite);
  item.draw(context);
  return bitmap;
}

std::unique_ptr<AGBitmap> DrawGalleryPage() {
  const std::vector<GalleryItem> items = GalleryItems();
  const unsigned int rows = (static_cast<unsigned int>(items.size()) + kColumns - 1) / kColumns;
  auto page = std::make_unique<AGBitmap>(kColumns * kCellWidth + kMargin, rows * kCellHeight + kMargin, 0U);
  if (!page->IsOpen()) return page;
  AGContext context = page->GetContextOfBitmap();
  context.ClearPixels(AGColor(225, 225, 225));
  context.pen.SetStyleSolid(kAGColorBlack, 1, kAGPenSizeModeAbsolute);
  for (unsigned int i = 0; i < items.size(); ++i) {
    const unsigned int left = kMargin + i % kColumns * kCellWidth;
    const unsigned int bottom = page->Height() - (i / kColumns + 1) * kCellHeight + kLabelHeight + kMargin;
    CopyEnlarged(*DrawGalleryItem(items[i], 0), page.get(), left, bottom);
    DrawStrokeText(context, items[i].name, {left + 0.5, bottom - kLabelHeight - 3.5}, kLabelHeight);
    MemoryWatch::Look();
  }
  return page;
}

}  // namespace host
