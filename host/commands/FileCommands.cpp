// Commands that make, open and save documents.
#include "host/commands/EditCommand.h"
#include "host/commands/PageOptions.h"

namespace host {
namespace {

Result<std::unique_ptr<DocumentSession>> NewSession(const CommandLine& line) {
  AGSize size{640, 480};
  AGColor background = kAGColorWhite;
  if (const auto done = ParsePageOptions(line, &size, &background); !done) return done.Why();
  auto document = std::make_unique<Document>(size);
  document->SetPage(size, background);
  return std::make_unique<DocumentSession>(std::move(document));
}

// A script may leave changes unsaved only when it says so.
Result<> MayLeave(const EditContext& context, const EditArguments& arguments) {
  if (!context.session || !context.session->File().HasUnsavedChanges() || arguments.Has("discard")) return {};
  return Problem(N_("%s has unsaved changes: \"save\" it, or give --discard"), {context.Name()});
}

Result<> RunNew(EditContext& context, const EditArguments& arguments) {
  if (const auto done = MayLeave(context, arguments); !done) return done.Why();
  auto session = NewSession(arguments.line);
  if (!session) return session.Why();
  context.SetSession(std::move(*session));
  return {};
}

Result<> RunOpen(EditContext& context, const EditArguments& arguments) {
  if (const auto done = MayLeave(context, arguments); !done) return done.Why();
  auto session = OpenSession(arguments.words[0], arguments.Has("strict"));
  if (!session) return session.Why();
  context.SetSession(std::move(*session));
  return {};
}

Result<> RunSave(EditContext& context, const EditArguments& arguments) {
  if (context.session->Steps().IsOpen()) {
    return Problem(N_("a step is open: \"end\" or \"cancel\" comes first"));
  }
  if (arguments.words.empty()) return context.session->File().Save(arguments.Has("overwrite"));
  return context.session->File().SaveAs(arguments.words[0]);
}

Result<> RunClose(EditContext& context, const EditArguments& arguments) {
  if (const auto done = MayLeave(context, arguments); !done) return done.Why();
  context.SetSession(nullptr);
  return {};
}

}  // namespace

int RunNewOnFile(const std::vector<std::string>& words) {
  CommandLine line({"size", "paper", "orientation", "background"}, {});
  if (const auto done = line.Parse(words, 1, 1); !done) return Fail(done.Why());
  const auto session = NewSession(line);
  if (!session) return Fail(session.Why());
  const auto done = (*session)->File().SaveAs(line.Positional()[0]);
  return done ? 0 : Fail(done.Why());
}

const EditCommand kNewEdit = {
    "new",
    EditUse::kWithoutDocument,
    "make an empty document",
    "usage: objecthost new FILE [--size W,H | --paper NAME] [--orientation portrait|landscape]\n"
    "                  [--background R,G,B]\n\n"
    "Makes an empty document with a page of W by H units (640,480), which may be given as\n"
    "in 210mm,297mm or by the name of a paper (A4, Letter), and an opaque background (255,255,255). An existing file "
    "is replaced.\n"
    "In a script there is no FILE: \"save\" names it.\n",
    "size paper orientation background",
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

}  // namespace host
