// Commands that make, open, save and export documents.
#include "host/commands/EditCommand.h"
#include "host/commands/PageOptions.h"
#include "host/commands/ProgressBar.h"
#include "host/pictures/DocumentPicture.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

std::unique_ptr<DocumentSession> NewSession(const CommandLine& line, std::string* error) {
  AGSize size{640, 480};
  AGColor background = kAGColorWhite;
  if (!ParsePageOptions(line, &size, &background, error)) return nullptr;
  auto document = std::make_unique<Document>(size);
  document->SetPage(size, background);
  return std::make_unique<DocumentSession>(std::move(document));
}

// A script may leave changes unsaved only when it says so.
bool MayLeave(const EditContext& context, const EditArguments& arguments, std::string* error) {
  if (!context.session || !context.session->HasUnsavedChanges() || arguments.Has("discard")) return true;
  *error = context.Name() + " has unsaved changes: \"save\" it, or give --discard";
  return false;
}

bool RunNew(EditContext& context, const EditArguments& arguments, std::string* error) {
  if (!MayLeave(context, arguments, error)) return false;
  auto session = NewSession(arguments.line, error);
  if (!session) return false;
  context.SetSession(std::move(session));
  return true;
}

bool RunOpen(EditContext& context, const EditArguments& arguments, std::string* error) {
  if (!MayLeave(context, arguments, error)) return false;
  auto session = DocumentSession::Open(arguments.words[0], error);
  if (!session) return false;
  context.SetSession(std::move(session));
  return true;
}

bool RunSave(EditContext& context, const EditArguments& arguments, std::string* error) {
  if (context.session->IsStepOpen()) {
    *error = "a step is open: \"end\" or \"cancel\" comes first";
    return false;
  }
  if (arguments.words.empty()) return context.session->Save(arguments.Has("overwrite"), error);
  return context.session->SaveAs(arguments.words[0], error);
}

bool RunClose(EditContext& context, const EditArguments& arguments, std::string* error) {
  if (!MayLeave(context, arguments, error)) return false;
  context.SetSession(nullptr);
  return true;
}

bool RunExport(EditContext& context, const EditArguments& arguments, std::string* error) {
  PictureOptions options;
  const std::string scale = arguments.Value("scale", "1");
  if (!ParseFinite(scale, &options.scale) || options.scale <= 0) {
    *error = "\"" + scale + "\" is no scale: a number above 0 is needed";
    return false;
  }
  const std::string quality = arguments.Value("quality", "0.9");
  if (!ParseFinite(quality, &options.quality) || options.quality < 0 || options.quality > 1) {
    *error = "\"" + quality + "\" is no quality: a number from 0 to 1 is needed";
    return false;
  }
  options.transparent = arguments.Has("transparent");
  ProgressBar progress("drawing");
  return ExportPicture(context.Doc(), arguments.words[0], options, &progress, error);
}

}  // namespace

int RunNewOnFile(const std::vector<std::string>& words) {
  CommandLine line({"size", "background"}, {});
  std::string error;
  if (!line.Parse(words, 1, 1, &error)) return Fail(error);
  const auto session = NewSession(line, &error);
  return session && session->SaveAs(line.Positional()[0], &error) ? 0 : Fail(error);
}

const EditCommand kNewEdit = {"new",
                              EditUse::kWithoutDocument,
                              "make an empty document",
                              "usage: objecthost new FILE [--size W,H] [--background R,G,B]\n\n"
                              "Makes an empty document with a page of W by H units (640,480) and an opaque\n"
                              "background (255,255,255). An existing file is replaced. In a script there is no FILE:\n"
                              "\"save\" names it.\n",
                              "size background",
                              "discard",
                              0,
                              0,
                              &RunNew};

const EditCommand kOpenEdit = {
    "open", EditUse::kWithoutDocument, "open a document: open FILE [--discard]", "", "", "discard", 1, 1, &RunOpen};
const EditCommand kSaveEdit = {
    "save", EditUse::kScriptOnly, "save it: save [FILE] [--overwrite]", "", "", "overwrite", 0, 1, &RunSave};
const EditCommand kCloseEdit = {"close",  EditUse::kScriptOnly, "close it: close [--discard]", "", "", "discard", 0, 0,
                                &RunClose};

const EditCommand kDrawEdit = {
    "draw",
    EditUse::kEverywhere,
    "draw a document into a picture file",
    "usage: objecthost draw FILE PICTURE [--scale S] [--quality Q] [--transparent]\n\n"
    "Draws the page into a file whose name ends in .png, .jpg, .tif, .pdf or .svg, S pixels or\n"
    "points a unit (1), with its background unless --transparent is given. Q, for .jpg, is from 0,\n"
    "the smallest file, to 1, the best picture (0.9).\n",
    "scale quality",
    "transparent",
    1,
    1,
    &RunExport};

const EditCommand kExportEdit = {"export",
                                 EditUse::kEverywhere,
                                 "the same as \"draw\"",
                                 "usage: objecthost export FILE PICTURE [--scale S] [--quality Q] [--transparent]\n\n"
                                 "What \"draw\" does.\n",
                                 "scale quality",
                                 "transparent",
                                 1,
                                 1,
                                 &RunExport};

}  // namespace host
