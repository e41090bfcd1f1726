#include "host/commands/Command.h"

#include <cstdio>

namespace host {

std::vector<Command> const& Commands() {
  static const std::vector<Command> commands = {
      kNewCommand,     kAddCommand,   kListCommand,    kGetCommand,    kSetCommand,  kDrawCommand,
      kInspectCommand, kInfoCommand,  kBundlesCommand, kWindowCommand, kDemoCommand, kVerifyCommand,
      kDumpCommand,    kCheckCommand, kGalleryCommand, kShapesCommand, kTextCommand,
  };
  return commands;
}

Command const* FindCommand(std::string const& name) {
  for (Command const& command : Commands()) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

int Fail(std::string const& message) {
  std::fprintf(stderr, "objecthost: %s\n", message.c_str());
  return 1;
}

}  // namespace host
