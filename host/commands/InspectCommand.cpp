// The inspector panel of an object, printed and used.
#include <cstdio>

#include "host/ParseNumber.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/panels/Inspector.h"
#include "host/panels/PanelListing.h"

namespace host {
namespace {

bool ApplyChange(Inspector* inspector, std::string const& assignment, std::string* error) {
  std::string idText;
  std::string valueText;
  unsigned int id = 0;
  double value = 0;
  if (!SplitAssignment(assignment, &idText, &valueText) || !ParseWhole(idText, &id)) {
    *error = "\"" + assignment + "\" is not of the form CONTROL=VALUE";
    return false;
  }
  if (inspector->Panel().GetController(id) == nullptr) {
    *error = "the panel has no control " + idText;
    return false;
  }
  if (!ParseFinite(valueText, &value)) {
    *error = "\"" + valueText + "\" is no number";
    return false;
  }
  std::string actionName;
  const int status = inspector->Change(id, value, &actionName);
  if (status != 0) {
    *error = "the object returned status " + std::to_string(status);
    return false;
  }
  std::printf("control %u = %s: %s\n", id, valueText.c_str(), actionName.empty() ? "no change" : actionName.c_str());
  return true;
}

int RunInspect(std::vector<std::string> const& words) {
  CommandLine line({"set"}, {});
  std::string error;
  std::size_t index = 0;
  if (!line.Parse(words, 2, 2, &error)) return Fail(error);
  std::string const& path = line.Positional()[0];
  if (!ParseIndex(line.Positional()[1], &index)) return Fail("\"" + line.Positional()[1] + "\" is no object number");
  const auto session = DocumentSession::Open(path, &error);
  if (!session) return Fail(error);
  if (index >= session->Doc().ObjectCount()) return Fail("\"" + path + "\" has no object " + line.Positional()[1]);

  Inspector inspector;
  if (!inspector.Open(session.get(), {session->Doc().ObjectAt(index).id}, &error)) return Fail(error);
  const int status = inspector.Fill();
  if (status != 0) return Fail("the object returned status " + std::to_string(status));
  for (std::string const& assignment : line.Values("set")) {
    if (!ApplyChange(&inspector, assignment, &error)) return Fail(error);
  }
  std::fputs(PanelListing(inspector.Panel()).c_str(), stdout);
  if (!line.Has("set")) return 0;
  return session->Save(false, &error) ? 0 : Fail(error);
}

}  // namespace

const Command kInspectCommand = {
    "inspect", "show an object's inspector panel, and use it",
    "usage: objecthost inspect FILE NUMBER [--set CONTROL=VALUE]...\n\n"
    "Fills the panel of the object's class from the object and prints it. Each --set gives a control,\n"
    "named by its ID, a value as a user would, tells the object, prints the name of the change, and\n"
    "saves the document.\n",
    &RunInspect};

}  // namespace host
