#include "host/Program.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "host/bundles/Bundle.h"
#include "host/commands/Command.h"

namespace host {
namespace {

void PrintUsage() {
  std::printf(
      "usage: objecthost [--bundle FILE]... [--no-bundles] COMMAND [ARGUMENTS]\n\n"
      "A host for plug-in bundles. Bundles are loaded from the plugins folder beside the program, or\n"
      "those named by --bundle alone, or none with --no-bundles.\n\ncommands\n");
  for (Command const& command : Commands()) std::printf("  %-10s %s\n", command.name, command.summary);
  std::printf(
      "\n\"objecthost COMMAND --help\" tells more. Exit code 0 is success; 1 is failure, with a line on\n"
      "standard error.\n");
}

struct Invocation {
  std::vector<std::string> bundles;
  std::vector<std::string> words;  // of the command, its name first
  bool help = false;
};

// Takes the options in front of the command. False, with one line in `*error`, when they make no sense.
bool TakeGlobalOptions(std::vector<std::string> const& words, Invocation* invocation, std::string* error) {
  bool ownBundles = true;
  std::size_t i = 0;
  for (; i < words.size() && words[i].starts_with("-"); ++i) {
    if (words[i] == "--help" || words[i] == "-h") {
      invocation->help = true;
      return true;
    }
    if (words[i] == "--no-bundles") {
      ownBundles = false;
    } else if (words[i] == "--bundle" && i + 1 < words.size()) {
      ownBundles = false;
      invocation->bundles.push_back(words[++i]);
    } else {
      *error = "unknown option or missing value: \"" + words[i] + "\"; --help tells what there is";
      return false;
    }
  }
  invocation->words.assign(words.begin() + static_cast<std::ptrdiff_t>(i), words.end());
  if (ownBundles) invocation->bundles = Program::DefaultBundles();
  return true;
}

bool AsksForHelp(std::vector<std::string> const& words) {
  return std::find(words.begin(), words.end(), "--help") != words.end();
}

}  // namespace

std::string Program::ExecutablePath() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::vector<std::string> Program::DefaultBundles() {
  const std::filesystem::path folder = std::filesystem::path(ExecutablePath()).parent_path().parent_path();
  std::vector<std::string> bundles;
  for (const char* place : {"plugins", "lib/objecthost/plugins"}) {
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(folder / place, error)) {
      if (entry.path().extension() == ".so") bundles.push_back(entry.path().string());
    }
  }
  std::sort(bundles.begin(), bundles.end());
  return bundles;
}

std::vector<std::string>& Program::BundlePaths() {
  static std::vector<std::string> paths;
  return paths;
}

int RunProgram(std::vector<std::string> const& words) {
  Invocation invocation;
  std::string error;
  if (!TakeGlobalOptions(words, &invocation, &error)) return Fail(error);
  if (invocation.help) {
    PrintUsage();
    return 0;
  }
  if (invocation.words.empty()) return Fail("no command; --help tells what there is");
  Command const* command = FindCommand(invocation.words[0]);
  if (command == nullptr) return Fail("unknown command \"" + invocation.words[0] + "\"; --help tells what there is");
  const std::vector<std::string> arguments(invocation.words.begin() + 1, invocation.words.end());
  if (AsksForHelp(arguments)) {
    std::fputs(command->help, stdout);
    return 0;
  }
  // "info" looks at one bundle by itself.
  if (command->run == kInfoCommand.run) return command->run(arguments);

  std::vector<std::unique_ptr<Bundle>> loaded;
  for (std::string const& path : invocation.bundles) {
    auto bundle = Bundle::Load(path, &error);
    if (!bundle) return Fail(error);
    Program::BundlePaths().push_back(path);
    loaded.push_back(std::move(bundle));
  }
  const int code = command->run(arguments);
  while (!loaded.empty()) loaded.pop_back();  // the last first, as the registry wants it
  return code;
}

}  // namespace host
