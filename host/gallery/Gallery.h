// The gallery: one small picture for each thing that the drawing layer can do.
//
// An item draws into a context of kGalleryWidth by kGalleryHeight units that is white and has its state at the
// defaults. The pictures are the references of the drawing layer: tests compare them pixel by pixel.
#pragma once

#include <memory>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AGContext.h"

namespace host {

inline constexpr unsigned int kGalleryWidth = 64;
inline constexpr unsigned int kGalleryHeight = 48;

struct GalleryItem {
  const char* name;  ///< small letters, digits and dashes; unique, since files are named by it
  void (*draw)(AGContext& context);
};

/// All items, in the order in which they are shown.
std::vector<GalleryItem> GalleryItems();

/// The item on a new bitmap made with these flags of AGBitmap.
std::unique_ptr<AGBitmap> DrawGalleryItem(const GalleryItem& item, unsigned int bitmapFlags);

/// All items in a labelled grid, each at twice its size.
std::unique_ptr<AGBitmap> DrawGalleryPage();

// The parts of GalleryItems, one file an area.
std::vector<GalleryItem> GalleryFills();
std::vector<GalleryItem> GalleryGradients();
std::vector<GalleryItem> GalleryStrokes();
std::vector<GalleryItem> GalleryShapes();
std::vector<GalleryItem> GalleryClipsAndImages();
std::vector<GalleryItem> GalleryText();

}  // namespace host
