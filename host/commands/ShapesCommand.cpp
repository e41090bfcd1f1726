// The page of path operations.
#include <cstdio>
#include <new>

#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/ShapesPage.h"
#include "host/pictures/MemoryWatch.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

namespace host {
namespace {

int RunShapes(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  const bool named = !line.Positional().empty();
  const std::string path = named ? line.Positional()[0] : "out/shapes.png";
  if (!named) {
    if (const auto done = MakeFolder("out"); !done) return Fail(done.Why());
  }
  const MemoryWatch watch;
  const auto page = DrawShapesPage();
  if (MemoryWatch::RanOut()) throw std::bad_alloc();
  if (const auto done = SavePNG(*page, path); !done) return Fail(done.Why());
  Output::Print("%s: %zu shapes\n", Printable(path).c_str(), ShapeItems().size());
  return 0;
}

}  // namespace

const Command kShapesCommand = {
    "shapes", "draw a page of every operation of a path",
    "usage: objecthost shapes [PICTURE.png]\n\n"
    "Draws what each operation of a path adds, in a labelled grid (out/shapes.png): in blue the box of all\n"
    "points, control points included, in red the box of the curves themselves, as a dot the origin.\n",
    &RunShapes};

}  // namespace host
