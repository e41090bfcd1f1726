// The gallery as a page or as single pictures.
#include <cstdio>

#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/Gallery.h"
#include "host/pictures/PictureFile.h"

namespace host {
namespace {

bool SaveItems(const std::string& folder, std::string* error) {
  if (!MakeFolder(folder, error)) return false;
  for (const GalleryItem& item : GalleryItems()) {
    if (!SavePNG(*DrawGalleryItem(item, 0), folder + "/" + item.name + ".png", error)) return false;
  }
  return true;
}

int RunGallery(const std::vector<std::string>& words) {
  CommandLine line({"items"}, {});
  std::string error;
  if (!line.Parse(words, 0, 1, &error)) return Fail(error);
  const bool named = !line.Positional().empty();
  if (line.Has("items") && !SaveItems(line.Value("items", ""), &error)) return Fail(error);
  if (line.Has("items") && !named) return 0;

  const std::string path = named ? line.Positional()[0] : "out/gallery.png";
  if (!named && !MakeFolder("out", &error)) return Fail(error);
  if (!SavePNG(*DrawGalleryPage(), path, &error)) return Fail(error);
  std::printf("%s: %zu pictures\n", path.c_str(), GalleryItems().size());
  return 0;
}

}  // namespace

const Command kGalleryCommand = {
    "gallery", "draw a page of everything that can be drawn",
    "usage: objecthost gallery [PICTURE.png] [--items FOLDER]\n\n"
    "Draws one small picture for each kind of brush, pen, shape, clip and image, all on one labelled page\n"
    "(out/gallery.png). With --items each picture goes into FOLDER as a file of its own too, and the page\n"
    "is left out unless it is named.\n",
    &RunGallery};

}  // namespace host
