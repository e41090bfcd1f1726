// The page of path operations.
#include <cstdio>

#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/ShapesPage.h"
#include "host/pictures/PictureFile.h"

namespace host {
namespace {

int RunShapes(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  std::string error;
  if (!line.Parse(words, 0, 1, &error)) return Fail(error);
  const bool named = !line.Positional().empty();
  const std::string path = named ? line.Positional()[0] : "out/shapes.png";
  if (!named && !MakeFolder("out", &error)) return Fail(error);
  if (!SavePNG(*DrawShapesPage(), path, &error)) return Fail(error);
  std::printf("%s: %zu shapes\n", path.c_str(), ShapeItems().size());
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
