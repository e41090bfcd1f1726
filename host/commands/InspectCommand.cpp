// The inspector panel of objects, printed and used.
#include "host/commands/EditCommand.h"
#include "host/listings/JsonListing.h"
#include "host/listings/PanelListing.h"
#include "host/panels/Inspector.h"
#include "host/text/ParseNumber.h"
#include "host/text/Printable.h"

namespace host {
namespace {

std::string NameOrNothing(const std::string& actionName) { return actionName.empty() ? "no change" : actionName; }

Result<> CheckControl(const Inspector& inspector, const std::string& text, unsigned int* id) {
  if (!ParseWhole(text, id)) {
    return Problem(N_("\"%s\" is no number of a control"), {text});
  }
  if (inspector.Panel().GetController(*id) != nullptr) return {};
  return Problem(N_("the panel has no control %s"), {text});
}

Result<> ApplyChange(Inspector* inspector, const std::string& assignment, std::string* output) {
  std::string idText;
  std::string valueText;
  std::string actionName;
  unsigned int id = 0;
  if (!SplitAssignment(assignment, &idText, &valueText)) {
    return Problem(N_("\"%s\" is not of the form CONTROL=VALUE"), {assignment});
  }
  if (const auto done = CheckControl(*inspector, idText, &id); !done) return done.Why();
  if (const auto done = inspector->Enter(id, valueText, &actionName); !done) return done.Why();
  *output += "control " + std::to_string(id) + " = " + Printable(valueText + ": " + NameOrNothing(actionName)) + "\n";
  return {};
}

// "KIND" or "KIND,CONTROL".
Result<> SendEvent(Inspector* inspector, const std::string& text, std::string* output) {
  const std::size_t comma = text.find(',');
  unsigned int kind = 0;
  unsigned int control = 0;
  if (!ParseWhole(std::string_view(text).substr(0, comma), &kind) ||
      (comma != std::string::npos && !ParseWhole(std::string_view(text).substr(comma + 1), &control))) {
    return Problem(N_("\"%s\" is not of the form KIND or KIND,CONTROL"), {text});
  }
  std::string actionName;
  if (const auto done = inspector->Send(kind, control, &actionName); !done) return done.Why();
  *output += "event " + Printable(text + ": " + NameOrNothing(actionName)) + "\n";
  return {};
}

Result<> RunInspect(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  Inspector inspector;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = inspector.Open(context.session.get(), ids); !done) return done.Why();
  auto filled = inspector.Fill();
  EditStep step(context.session->Steps(), "");
  std::string changes;
  for (const std::string& assignment : arguments.line.Values("set")) {
    if (const auto done = ApplyChange(&inspector, assignment, &changes); !done) return done.Why();
  }
  for (const std::string& event : arguments.line.Values("event")) {
    if (const auto done = SendEvent(&inspector, event, &changes); !done) return done.Why();
  }
  step.End();
  if (ids.size() > 1) filled = inspector.Fill();  // what differs now
  if (!filled) return filled.Why();
  context.output = arguments.IsJson() ? JsonOfPanel(inspector) : changes + PanelListing(inspector.Panel());
  return {};
}

}  // namespace

const EditCommand kInspectEdit = {
    "inspect",
    EditUse::kEverywhere,
    "show objects' inspector panel, and use it",
    "usage: objecthost inspect FILE OBJECTS [--set CONTROL=VALUE]... [--event KIND[,CONTROL]]... [--json]\n\n"
    "Fills the panel of the objects' class from the first object and prints it. Each --set gives a\n"
    "control, named by its ID, a value as a user would, tells the objects, and prints the name of the\n"
    "change; a button takes the empty value. Each --event sends the objects an event of any kind. All of\n"
    "it is one step of the undo history. OBJECTS is a number, several as in 0,2-4, or all.\n",
    "set event",
    "json",
    1,
    1,
    &RunInspect};

}  // namespace host
