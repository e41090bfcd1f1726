// Commands that make pictures of documents, and objects of pictures.
#include "host/commands/EditCommand.h"
#include "host/pictures/DocumentPicture.h"
#include "host/pictures/Thumbnail.h"
#include "host/terminal/ProgressBar.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

// What is drawn: the page, the drawing, or some of its objects.
Result<> ParseArea(const EditContext& context, const EditArguments& arguments, PictureOptions* options) {
  ObjectIDs ids;
  if (arguments.Has("selected") || arguments.Has("objects")) {
    const std::string text = arguments.Has("selected") ? "selected" : arguments.Value("objects", "");
    if (const auto done = ParseObjects(context, text, &ids); !done) return done.Why();
    options->objects = ids;
  } else if (arguments.Has("drawing")) {
    ids = context.session->ShownObjects();
  } else {
    return {};
  }
  AGRect box;
  if (!GetPictureBox(context.Doc(), ids, &box)) return Problem(N_("there is no object to draw"));
  options->area = box;
  return {};
}

// --scale, or what comes to one: dots an inch of 72 units, or pixels along a side.
Result<> ParseScale(const EditContext& context, const EditArguments& arguments, PictureOptions* options) {
  const AGSize page = context.Doc().Page();
  const AGRect area = options->area.value_or(AGRect{0, 0, page.width, page.height});
  const std::pair<const char*, double> ways[] = {
      {"scale", 1}, {"dpi", 72}, {"width", area.Width()}, {"height", area.Height()}};
  int given = 0;
  for (const auto& [option, unit] : ways) {
    if (!arguments.Has(option)) continue;
    const std::string text = arguments.Value(option, "");
    if (!ParseFinite(text, &options->scale) || options->scale <= 0) {
      return Problem(N_("\"%s\" is no scale: a number above 0 is needed"), {text});
    }
    options->scale /= unit;
    ++given;
  }
  if (given > 1) return Problem(N_("--scale, --dpi, --width and --height exclude each other"));
  return {};
}

Result<> RunExport(EditContext& context, const EditArguments& arguments) {
  PictureOptions options;
  if (const auto done = ParseArea(context, arguments, &options); !done) return done.Why();
  if (const auto done = ParseScale(context, arguments, &options); !done) return done.Why();
  const std::string quality = arguments.Value("quality", "0.9");
  if (!ParseFinite(quality, &options.quality) || options.quality < 0 || options.quality > 1) {
    return Problem(N_("\"%s\" is no quality: a number from 0 to 1 is needed"), {quality});
  }
  options.transparent = arguments.Has("transparent");
  ProgressBar progress("drawing");
  return ExportPicture(context.Doc(), arguments.words[0], options, &progress);
}

Result<> RunThumbnail(EditContext& context, const EditArguments& arguments) {
  const std::string text = arguments.words.size() < 2 ? "256" : arguments.words[1];
  std::size_t side = 0;
  if (!ParseIndex(text, &side) || side < 1 || side > 4096) {
    return Problem(N_("\"%s\" is no size: a number of pixels from 1 to 4096 is needed"), {text});
  }
  return SaveThumbnail(context.Doc(), arguments.words[0], static_cast<double>(side));
}

Result<> RunImport(EditContext& context, const EditArguments& arguments) {
  DocumentSession& session = *context.session;
  ImportPlace place;
  std::vector<double> n;
  if (arguments.Has("bounds")) {
    if (const auto done =
            ParseList(arguments.Value("bounds", ""), 4, N_("--bounds takes four numbers as X0,Y0,X1,Y1"), &n);
        !done)
      return done.Why();
    place.bounds = {n[0], n[1], n[2], n[3]};
    if (place.bounds->IsEmpty()) return Problem(N_("the bounds have no area"));
  } else if (arguments.Has("at")) {
    if (const auto done = ParseList(arguments.Value("at", ""), 2, N_("--at takes two numbers as X,Y"), &n); !done)
      return done.Why();
    place.corner = {n[0], n[1]};
  }
  LayerID layer = session.Layers().Active();
  if (arguments.Has("layer")) {
    if (const auto done = ParseLayer(context, arguments.Value("layer", ""), &layer); !done) return done.Why();
  }
  session.Layers().SetActive(layer);
  const auto taken = session.Import().TakeFile(arguments.words[0], place);
  if (!taken) return taken.Why();
  for (const ObjectID id : session.Selection().IDs()) {
    context.output += (context.output.empty() ? "" : " ") + std::to_string(context.Doc().NumberOf(id));
  }
  context.output += "\n";
  if (const auto summary = taken->Summary()) Warn(summary->English());
  return {};
}

}  // namespace

const EditCommand kDrawEdit = {
    "draw",
    EditUse::kEverywhere,
    "draw a document into a picture file",
    "usage: objecthost draw FILE PICTURE [--drawing | --objects OBJECTS | --selected]\n"
    "                  [--scale S | --dpi D | --width PIXELS | --height PIXELS] [--quality Q] [--transparent]\n\n"
    "Draws the page into a file whose name ends in .png, .jpg, .tif, .pdf or .svg, or as much of it\n"
    "as shows all that is drawn (--drawing), or some objects alone: a number, several as in 0,2-4, or, in\n"
    "scripts, those that are selected. S is pixels or points a unit (1), D dots an inch of 72 units, PIXELS\n"
    "those along a side. It has the page's background unless --transparent is given. Q, for .jpg, is from 0,\n"
    "the smallest file, to 1, the best picture (0.9).\n",
    "scale dpi width height quality objects",
    "transparent drawing selected",
    1,
    1,
    &RunExport};

const EditCommand kExportEdit = {"export",
                                 EditUse::kEverywhere,
                                 "the same as \"draw\"",
                                 "usage: objecthost export FILE PICTURE [--drawing | --objects OBJECTS | --selected]\n"
                                 "                  [--scale S | --dpi D | --width PIXELS | --height PIXELS]\n"
                                 "                  [--quality Q] [--transparent]\n\n"
                                 "What \"draw\" does.\n",
                                 kDrawEdit.valueOptions,
                                 kDrawEdit.flagOptions,
                                 1,
                                 1,
                                 &RunExport};

const EditCommand kThumbnailEdit = {
    "thumbnail",
    EditUse::kEverywhere,
    "draw a document as a small picture",
    "usage: objecthost thumbnail FILE PICTURE [SIZE]\n\n"
    "Draws the page into a PNG file, whatever its name ends in, the longer side SIZE pixels (256).\n"
    "File managers show documents by it.\n",
    "",
    "",
    1,
    2,
    &RunThumbnail};

const EditCommand kImportEdit = {
    "import",
    EditUse::kEverywhere,
    "add a picture file to a document",
    "usage: objecthost import FILE PICTURE [--at X,Y | --bounds X0,Y0,X1,Y1] [--layer LAYER]\n\n"
    "Adds a PNG, JPEG or TIFF file, with all its bytes, as a picture, or the rectangles of an SVG file,\n"
    "and prints their numbers. They are as large as the file says, an inch 72 units, the left lower\n"
    "corner at X,Y, or the left upper one at that of the page; or they fill bounds. What of an SVG file is\n"
    "not taken is counted on standard error: other elements, sheared rectangles, and paint that is no colour.\n",
    "at bounds layer",
    "",
    1,
    1,
    &RunImport};

}  // namespace host
