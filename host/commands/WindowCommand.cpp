// Opens the window, which is a program of its own beside this one.
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "host/Program.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"

namespace host {
namespace {

int RunWindow(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 1000); !done) return Fail(done.Why());
  const std::string own = Program::ExecutablePath();
  std::vector<std::string> all = {own.substr(0, own.rfind('/') + 1) + "objecthost-window"};
  for (const std::string& option : Program::BundleOptions()) all.push_back(option);
  all.emplace_back("--");
  for (const std::string& path : line.Positional()) all.push_back(path);
  std::vector<char*> arguments;
  arguments.reserve(all.size() + 1);
  for (std::string& word : all) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  return Fail("can't start the window \"" + all[0] + "\": " + std::strerror(errno));
}

}  // namespace

const Command kWindowCommand = {"window", "open documents in the window",
                                "usage: objecthost window [DOCUMENT]...\n\n"
                                "Opens the editor with the documents, or with a new one.\n",
                                &RunWindow};

}  // namespace host
