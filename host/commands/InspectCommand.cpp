// The inspector panel of objects, printed and used.
#include "host/commands/EditCommand.h"
#include "host/listings/JsonListing.h"
#include "host/listings/PanelListing.h"
#include "host/panels/Inspector.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

std::string NameOrNothing(const std::string& actionName) { return actionName.empty() ? "no change" : actionName; }

bool CheckControl(const Inspector& inspector, const std::string& text, unsigned int* id, std::string* error) {
  if (!ParseWhole(text, id)) {
    *error = "\"" + text + "\" is no number of a control";
    return false;
  }
  if (inspector.Panel().GetController(*id) != nullptr) return true;
  *error = "the panel has no control " + text;
  return false;
}

bool ApplyChange(Inspector* inspector, const std::string& assignment, std::string* output, std::string* error) {
  std::string idText;
  std::string valueText;
  std::string actionName;
  unsigned int id = 0;
  if (!SplitAssignment(assignment, &idText, &valueText)) {
    *error = "\"" + assignment + "\" is not of the form CONTROL=VALUE";
    return false;
  }
  if (!CheckControl(*inspector, idText, &id, error) || !inspector->Enter(id, valueText, &actionName, error)) {
    return false;
  }
  *output += "control " + std::to_string(id) + " = " + valueText + ": " + NameOrNothing(actionName) + "\n";
  return true;
}

// "KIND" or "KIND,CONTROL".
bool SendEvent(Inspector* inspector, const std::string& text, std::string* output, std::string* error) {
  const std::size_t comma = text.find(',');
  unsigned int kind = 0;
  unsigned int control = 0;
  if (!ParseWhole(std::string_view(text).substr(0, comma), &kind) ||
      (comma != std::string::npos && !ParseWhole(std::string_view(text).substr(comma + 1), &control))) {
    *error = "\"" + text + "\" is not of the form KIND or KIND,CONTROL";
    return false;
  }
  std::string actionName;
  const int status = inspector->Send(kind, control, &actionName);
  if (status != 0) {
    *error = "the object returned status " + std::to_string(status);
    return false;
  }
  *output += "event " + text + ": " + NameOrNothing(actionName) + "\n";
  return true;
}

bool RunInspect(EditContext& context, const EditArguments& arguments, std::string* error) {
  ObjectIDs ids;
  Inspector inspector;
  if (!ParseObjects(context, arguments.words[0], &ids, error) || !inspector.Open(context.session.get(), ids, error)) {
    return false;
  }
  int status = inspector.Fill();
  EditStep step(*context.session, "");
  std::string changes;
  for (const std::string& assignment : arguments.line.Values("set")) {
    if (!ApplyChange(&inspector, assignment, &changes, error)) return false;
  }
  for (const std::string& event : arguments.line.Values("event")) {
    if (!SendEvent(&inspector, event, &changes, error)) return false;
  }
  step.End();
  if (ids.size() > 1) status = inspector.Fill();  // what differs now
  if (status != 0) {
    *error = "the object returned status " + std::to_string(status);
    return false;
  }
  context.output = arguments.IsJson() ? JsonOfPanel(inspector) : changes + PanelListing(inspector.Panel());
  return true;
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
