// The gallery as a page or as single pictures.
#include <cstdio>
#include <new>

#include "host/Fonts.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/Gallery.h"
#include "host/pictures/MemoryWatch.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

namespace host {
namespace {

Result<> SaveItems(const std::string& folder) {
  if (const auto done = MakeFolder(folder); !done) return done.Why();
  for (const GalleryItem& item : GalleryItems()) {
    if (const auto done = SavePNG(*DrawGalleryItem(item, 0), folder + "/" + item.name + ".png"); !done)
      return done.Why();
  }
  return {};
}

int RunGallery(const std::vector<std::string>& words) {
  CommandLine line({"items"}, {});
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  const Fonts fonts;
  const bool named = !line.Positional().empty();
  if (line.Has("items")) {
    if (const auto done = SaveItems(line.Value("items", "")); !done) return Fail(done.Why());
  }
  if (line.Has("items") && !named) return 0;

  const std::string path = named ? line.Positional()[0] : "out/gallery.png";
  if (!named) {
    if (const auto done = MakeFolder("out"); !done) return Fail(done.Why());
  }
  const MemoryWatch watch;
  const auto page = DrawGalleryPage();
  if (MemoryWatch::RanOut()) throw std::bad_alloc();
  if (const auto done = SavePNG(*page, path); !done) return Fail(done.Why());
  Output::Print("%s: %zu pictures\n", Printable(path).c_str(), GalleryItems().size());
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
