// Commands of the undo history, for scripts.
#include "host/commands/EditCommand.h"
#include "host/listings/JsonListing.h"

namespace host {
namespace {

// "undo" and "redo", once or as often as the word says.
bool Repeat(EditContext& context, const EditArguments& arguments, bool isUndo, std::string* error) {
  std::size_t times = 1;
  if (!arguments.words.empty() && !ParseIndex(arguments.words[0], &times)) {
    *error = "\"" + arguments.words[0] + "\" is no count of steps";
    return false;
  }
  DocumentSession& session = *context.session;
  const History& steps = session.Steps();
  const std::size_t known = isUndo ? steps.Position() : steps.Count() - steps.Position();
  if (session.IsStepOpen() || times > known) {
    *error = session.IsStepOpen() ? "a step is open: \"end\" or \"cancel\" comes first"
                                  : std::string("there is nothing to ") + (isUndo ? "undo" : "redo");
    return false;
  }
  for (std::size_t i = 0; i < times; ++i) {
    context.output += (isUndo ? session.UndoTitle() : session.RedoTitle()) + "\n";
    isUndo ? session.Undo() : session.Redo();
  }
  return true;
}

bool RunUndo(EditContext& context, const EditArguments& arguments, std::string* error) {
  return Repeat(context, arguments, true, error);
}

bool RunRedo(EditContext& context, const EditArguments& arguments, std::string* error) {
  return Repeat(context, arguments, false, error);
}

bool RunHistory(EditContext& context, const EditArguments& arguments, std::string*) {
  if (arguments.IsJson()) {
    context.output = JsonOfHistory(*context.session);
    return true;
  }
  const History& steps = context.session->Steps();
  for (std::size_t i = 0; i < steps.Count(); ++i) {
    context.output += std::string(i < steps.Position() ? "done    " : "undone  ") + steps.NameAt(i) + "\n";
  }
  context.output += context.session->HasUnsavedChanges() ? "changes are unsaved\n" : "everything is saved\n";
  return true;
}

bool RunBegin(EditContext& context, const EditArguments& arguments, std::string*) {
  context.session->BeginStep(arguments.words.empty() ? "" : arguments.words[0]);
  return true;
}

bool CheckOpen(const EditContext& context, std::string* error) {
  if (context.session->IsStepOpen()) return true;
  *error = "no step is open: \"begin\" comes first";
  return false;
}

bool RunEnd(EditContext& context, const EditArguments&, std::string* error) {
  if (!CheckOpen(context, error)) return false;
  context.session->EndStep();
  return true;
}

bool RunCancel(EditContext& context, const EditArguments&, std::string* error) {
  if (!CheckOpen(context, error)) return false;
  context.session->CancelStep();
  return true;
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
