#include "host/Program.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/Version.h"
#include "host/bundles/BundleProbe.h"
#include "host/bundles/BundleSet.h"
#include "host/commands/Command.h"
#include "host/completion/Completion.h"
#include "host/terminal/Output.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

void PrintUsage() {
  Output::Print(
      "usage: objecthost [--bundle FILE]... [--only-bundle FILE]... [--no-bundles] COMMAND [ARGUMENTS]\n"
      "       objecthost --version\n\n"
      "A host for plug-in bundles. Bundles are loaded from the folders of OBJECTHOST_PLUGINS, the user's\n"
      "objecthost/plugins, and the plugins folder beside the program. --bundle adds one, which is loaded\n"
      "first and stands for those of its file name; with --only-bundle none is looked for but those that\n"
      "are named, and with --no-bundles none at all.\n\ncommands\n");
  for (const Command& command : Commands()) Output::Print("  %-10s %s\n", command.name, command.summary);
  Output::Print(
      "\nCommands that open a document take --strict: then an object that its class can't read is an error;\n"
      "otherwise it is told on standard error, drawn as a crossed box and kept as it is.\n"
      "\n\"objecthost COMMAND --help\" tells more. Exit code 0 is success; 1 is failure, with a line on\n"
      "standard error (\"validate\" tells more by its own).\n");
}

struct Invocation {
  bool searches = true;  // the search path, instead of the named bundles
  std::vector<std::string> bundles;
  std::vector<std::string> words;  // of the command, its name first
  bool help = false;
  bool version = false;
};

BundleSet* sBundles = nullptr;
std::vector<std::string> sBundleOptions;

// Takes the options in front of the command.
Result<> TakeGlobalOptions(const std::vector<std::string>& words, Invocation* invocation) {
  std::size_t i = 0;
  for (; i < words.size() && words[i].starts_with("-") && words[i] != "--"; ++i) {
    if (words[i] == "--help" || words[i] == "-h") {
      invocation->help = true;
      return {};
    }
    if (words[i] == "--version") {
      invocation->version = true;
      return {};
    }
    if (words[i] == "--no-bundles") {
      invocation->searches = false;
    } else if ((words[i] == "--bundle" || words[i] == "--only-bundle") && i + 1 < words.size()) {
      if (words[i] == "--only-bundle") invocation->searches = false;
      invocation->bundles.push_back(words[++i]);
    } else {
      return Problem(N_("unknown option or missing value: \"%s\"; --help tells what there is"), {words[i]});
    }
  }
  const auto end = words.begin() + static_cast<std::ptrdiff_t>(i);
  sBundleOptions.assign(words.begin(), end);
  invocation->words.assign(i < words.size() && words[i] == "--" ? end + 1 : end, words.end());
  return {};
}

// A bundle that was named has to load; one that was found is skipped with a line on standard error.
Result<> LoadBundles(const Invocation& invocation, BundleSet* bundles) {
  for (const std::string& path : invocation.bundles) {
    if (const auto done = bundles->Load(path); !done) return done.Why();
  }
  if (invocation.searches) bundles->LoadFound();
  for (const BundleSet::Skipped& skipped : bundles->NotLoaded()) {
    Warn("skipped: " + skipped.reason.English());
  }
  return {};
}

bool AsksForHelp(const std::vector<std::string>& words) {
  const auto options = std::find(words.begin(), words.end(), "--");
  return std::find(words.begin(), options, "--help") != options;
}

}  // namespace

std::string Program::ExecutablePath() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

void AddCatalogues() {
  const std::filesystem::path prefix = std::filesystem::path(Program::ExecutablePath()).parent_path().parent_path();
  Localisation::Instance().AddFolder((prefix / "share" / "locale").string());
}

const std::vector<std::string>& Program::BundleOptions() { return sBundleOptions; }

BundleSet& Program::Bundles() { return *sBundles; }

namespace {

int RunCommand(const Command& command, const Invocation& invocation, const std::vector<std::string>& arguments) {
  // "info", "validate" and "torture" look at one bundle by itself, and a new one needs none.
  for (const Command* alone : {&kInfoCommand, &kValidateCommand, &kTortureCommand, &kNewPluginCommand}) {
    if (command.run == alone->run) return command.run(arguments);
  }
  BundleSet bundles(Program::ExecutablePath(), ProbeMemory::DefaultFile());
  sBundles = &bundles;
  if (const auto done = LoadBundles(invocation, &bundles); !done) return Fail(done.Why());
  const int code = command.run(arguments);
  sBundles = nullptr;
  return code;
}

int Finish(int code);

// What shells ask while a line is typed: nothing is said of what is wrong with it.
int RunCompletion(const std::vector<std::string>& words) {
  Output::TakeOver();
  Invocation invocation;
  static_cast<void>(!TakeGlobalOptions(words, &invocation));
  BundleSet bundles(Program::ExecutablePath(), ProbeMemory::DefaultFile());
  if (invocation.words.size() > 1) {
    for (const std::string& path : invocation.bundles) static_cast<void>(!bundles.Load(path));
    if (invocation.searches) bundles.LoadFound();
  }
  Output::Write(Completions(words));
  return Finish(0);
}

int Finish(int code) {
  const int unwritten = Output::Finish();
  return unwritten == 0 || code != 0 ? code
                                     : Fail(std::string("can't write to standard output: ") + std::strerror(unwritten));
}

}  // namespace

int RunProgram(const std::vector<std::string>& words) {
  AddCatalogues();
  if (words.size() == 2 && words[0] == "--probe") return RunProbe(words[1]);
  if (!words.empty() && words[0] == "--complete") return RunCompletion({words.begin() + 1, words.end()});
  Invocation invocation;
  if (const auto done = TakeGlobalOptions(words, &invocation); !done) return Fail(done.Why());
  if (invocation.help) {
    PrintUsage();
    return Finish(0);
  }
  if (invocation.version) {
    Output::Print("objecthost %s\n", kVersion);
    return Finish(0);
  }
  if (invocation.words.empty()) return Fail("no command; --help tells what there is");
  const Command* command = FindCommand(invocation.words[0]);
  if (command == nullptr) return Fail("unknown command \"" + invocation.words[0] + "\"; --help tells what there is");
  const std::vector<std::string> arguments(invocation.words.begin() + 1, invocation.words.end());
  if (AsksForHelp(arguments)) {
    Output::Write(command->help);
    return Finish(0);
  }
  if (command->run == kWindowCommand.run) return command->run(arguments);  // it is another program
  // Validation uses bundles in processes of its own alone, whose output it keeps, and may begin anew with a
  // sanitizer's.
  if (command->run != kValidateCommand.run && command->run != kTortureCommand.run) Output::TakeOver();
  return Finish(RunCommand(*command, invocation, arguments));
}

}  // namespace host
