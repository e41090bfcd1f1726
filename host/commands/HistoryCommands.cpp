// Commands of the undo history, for scripts.
#include "host/commands/EditCommand.h"
#include "host/listings/JsonListing.h"
#include "host/text/Printable.h"

namespace host {
namespace {

// "undo" and "redo", once or as often as the word says.
Result<> Repeat(EditContext& context, const EditArguments& arguments, bool isUndo) {
  std::size_t times = 1;
  if (!arguments.words.empty() && !ParseIndex(arguments.words[0], &times)) {
    return Problem(N_("\"%s\" is no count of steps"), {arguments.words[0]});
  }
  DocumentSession& session = *context.session;
  const History& steps = session.Steps().Known();
  const std::size_t known = isUndo ? steps.Position() : steps.Count() - steps.Position();
  if (session.Steps().IsOpen() || times > known) {
    return Problem(session.Steps().IsOpen() ? N_("a step is open: \"end\" or \"cancel\" comes first")
                   : isUndo                 ? N_("there is nothing to undo")
                                            : N_("there is nothing to redo"));
  }
  for (std::size_t i = 0; i < times; ++i) {
    context.output += Printable(isUndo ? session.Steps().UndoTitle() : session.Steps().RedoTitle()) + "\n";
    isUndo ? session.Steps().Undo() : session.Steps().Redo();
  }
  return {};
}

Result<> RunUndo(EditContext& context, const EditArguments& arguments) { return Repeat(context, arguments, true); }

Result<> RunRedo(EditContext& context, const EditArguments& arguments) { return Repeat(context, arguments, false); }

Result<> RunHistory(EditContext& context, const EditArguments& arguments) {
  if (arguments.IsJson()) {
    context.output = JsonOfHistory(*context.session);
    return {};
  }
  const History& steps = context.session->Steps().Known();
  for (std::size_t i = 0; i < steps.Count(); ++i) {
    context.output += std::string(i < steps.Position() ? "done    " : "undone  ") + Printable(steps.NameAt(i)) + "\n";
  }
  context.output += context.session->File().HasUnsavedChanges() ? "changes are unsaved\n" : "everything is saved\n";
  return {};
}

Result<> RunBegin(EditContext& context, const EditArguments& arguments) {
  context.session->Steps().Begin(arguments.words.empty() ? "" : arguments.words[0]);
  return {};
}

Result<> CheckOpen(const EditContext& context) {
  if (context.session->Steps().IsOpen()) return {};
  return Problem(N_("no step is open: \"begin\" comes first"));
}

Result<> RunEnd(EditContext& context, const EditArguments&) {
  if (const auto done = CheckOpen(context); !done) return done.Why();
  context.session->Steps().End();
  return {};
}

Result<> RunCancel(EditContext& context, const EditArguments&) {
  if (const auto done = CheckOpen(context); !done) return done.Why();
  context.session->Steps().Cancel();
  return {};
}

}  // namespace

const EditCommand kUndoEdit = {
    "undo", EditUse::kScriptOnly, "undo the last step, or COUNT steps: undo [COUNT]", "", "", "", 0, 1, &RunUndo};
const EditCommand kRedoEdit = {"redo",  EditUse::kScriptOnly, "do undone steps again: redo [COUNT]", "", "", "", 0, 1,
                               &RunRedo};
const EditCommand kHistoryEdit = {
    "history", EditUse::kScriptOnly, "list the steps: history [--json]", "", "", "json", 0, 0, &RunHistory};
const EditCommand kBeginEdit = {
    "begin", EditUse::kScriptOnly, "make all up to \"end\" one step: begin [NAME]", "", "", "", 0, 1, &RunBegin};
const EditCommand kEndEdit = {"end", EditUse::kScriptOnly, "end the step", "", "", "", 0, 0, &RunEnd};
const EditCommand kCancelEdit = {"cancel",  EditUse::kScriptOnly, "take back all since \"begin\"", "", "", "", 0, 0,
                                 &RunCancel};

}  // namespace host
