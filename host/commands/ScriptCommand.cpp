// Scripts: many commands on one open document.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>

#include "host/commands/EditCommand.h"
#include "host/commands/ScriptLine.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

std::string Help() {
  std::string text =
      "usage: objecthost script [FILE] [--document DOCUMENT] [--autosave SECONDS]\n\n"
      "Runs the lines of a file, or of standard input, on one open document: --document opens it, or the\n"
      "script does. A line is a command with its arguments as below, without the document's file in front\n"
      "of them. Words are separated by blanks; quotes and backslashes work as in a shell, \"#\" begins a\n"
      "comment. The first line that fails ends the script with its number and exit code 1. Nothing is\n"
      "saved but by \"save\". What is unsaved is kept for \"recover\" every SECONDS (10; 0 after each line)\n"
      "until the script has ended.\n\n";
  for (const EditCommand* command : EditCommands()) {
    std::string name = command->name;
    name.resize(std::max<std::size_t>(name.size() + 1, 11), ' ');
    text += "  " + name + command->summary + "\n";
  }
  return text + "\n\"objecthost COMMAND --help\" tells more of those that are commands of their own.\n";
}

Result<> RunLine(const std::string& text, EditContext& context) {
  std::vector<std::string> words;
  if (const auto done = SplitScriptLine(text, &words); !done) return done.Why();
  if (words.empty()) return {};
  const EditCommand* command = FindEditCommand(words[0]);
  if (command == nullptr) {
    return Problem(N_("unknown command \"%s\""), {words[0]});
  }
  return RunInContext(*command, context, {words.begin() + 1, words.end()});
}

int RunLines(std::istream& lines, const std::string& name, EditContext& context) {
  std::size_t number = 0;
  for (std::string text; std::getline(lines, text);) {
    ++number;
    if (const auto done = RunLine(text, context); !done) {
      return Fail(name + ":" + std::to_string(number) + ": " + done.Why().English());
    }
    std::fputs(context.output.c_str(), stdout);
    std::fflush(stdout);
    context.output.clear();
    if (context.recovery) context.recovery->Update();
  }
  if (lines.bad()) return Fail("can't read \"" + name + "\"");
  if (context.session && context.session->File().HasUnsavedChanges()) {
    const Problem unsaved(N_("the script has ended; changes of %s were not saved"), {context.Name()});
    std::fprintf(stderr, "objecthost: %s\n", unsaved.English().c_str());
  }
  return 0;
}

int RunScript(const std::vector<std::string>& words) {
  CommandLine line({"document", "autosave"}, {});
  EditContext context;
  context.inScript = true;
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  if (!ParseFinite(line.Value("autosave", "10"), &context.autosaveSeconds) || context.autosaveSeconds < 0) {
    return Fail("--autosave takes a number of seconds");
  }
  if (line.Has("document")) {
    auto session = DocumentSession::Open(line.Value("document", ""));
    if (!session) return Fail(session.Why());
    context.SetSession(std::move(*session));
  }
  if (line.Positional().empty() || line.Positional()[0] == "-") {
    return RunLines(std::cin, "standard input", context);
  }
  std::ifstream file(line.Positional()[0]);
  if (!file) return Fail("can't open \"" + line.Positional()[0] + "\": " + std::strerror(errno));
  return RunLines(file, line.Positional()[0], context);
}

const std::string kHelp = Help();

}  // namespace

const Command kScriptCommand = {"script", "run many commands on one open document", kHelp.c_str(), &RunScript};

}  // namespace host
