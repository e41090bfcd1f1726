// Scripts: many commands on one open document.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/EndSignals.h"
#include "host/commands/EditCommand.h"
#include "host/scripts/ScriptLine.h"
#include "host/scripts/ScriptReader.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
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
      "until the script has ended, also while it waits for a line, and when the system ends the program.\n\n";
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

ScriptReader::Idle AutosaveOf(EditContext& context) {
  return {[&context] { return context.recovery ? context.recovery->UntilDue() : Recovery::kNever; },
          [&context] { context.recovery->Update(); }};
}

// The system ends the program: what is unsaved is there for "recover".
[[noreturn]] void EndBySignal(EditContext& context) {
  if (context.recovery && !context.recovery->Keep()) Warn("what is unsaved can't be kept for \"recover\"");
  Output::Flush();
  EndSignals::End();
}

int RunLines(int file, const std::string& name, EditContext& context) {
  const EndSignals signals;
  ScriptReader lines(file, AutosaveOf(context));
  std::size_t number = 0;
  for (std::string text; lines.Next(&text);) {
    ++number;
    if (const auto done = RunLine(text, context); !done) {
      return Fail(name + ":" + std::to_string(number) + ": " + done.Why().English());
    }
    Output::Write(context.output);
    Output::Flush();
    context.output.clear();
    if (context.recovery) context.recovery->Update();
  }
  if (EndSignals::Caught() != 0) EndBySignal(context);
  if (lines.Error() != 0) return Fail("can't read \"" + name + "\": " + std::strerror(lines.Error()));
  if (context.session && context.session->File().HasUnsavedChanges()) {
    const Problem unsaved(N_("the script has ended; changes of %s were not saved"), {context.Name()});
    Warn(unsaved.English());
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
    return RunLines(STDIN_FILENO, "standard input", context);
  }
  const int file = OpenRetrying(line.Positional()[0], O_RDONLY);
  if (file < 0) return Fail("can't open \"" + line.Positional()[0] + "\": " + std::strerror(errno));
  const int code = RunLines(file, line.Positional()[0], context);
  close(file);
  return code;
}

const std::string kHelp = Help();

}  // namespace

const Command kScriptCommand = {"script", "run many commands on one open document", kHelp.c_str(), &RunScript};

}  // namespace host
