#include "host/commands/Command.h"

#include <cstdio>

#include "host/commands/EditCommand.h"

namespace host {

std::vector<Command> const& Commands() {
  static const Command newOnFile = {kNewEdit.name, kNewEdit.summary, kNewEdit.help, &RunNewOnFile};
  static const std::vector<Command> commands = {
      newOnFile,
      Alone<kAddEdit>(),
      Alone<kListEdit>(),
      Alone<kGetEdit>(),
      Alone<kSetEdit>(),
      Alone<kDeleteEdit>(),
      Alone<kMoveEdit>(),
      Alone<kResizeEdit>(),
      Alone<kRotateEdit>(),
      Alone<kAlignEdit>(),
      Alone<kDistributeEdit>(),
      Alone<kOrderEdit>(),
      Alone<kDuplicateEdit>(),
      Alone<kCopyEdit>(),
      Alone<kCutEdit>(),
      Alone<kPasteEdit>(),
      Alone<kSelectEdit>(),
      Alone<kLayersEdit>(),
      Alone<kLayerEdit>(),
      Alone<kPageEdit>(),
      Alone<kInspectEdit>(),
      Alone<kDrawEdit>(),
      Alone<kExportEdit>(),
      kScriptCommand,
      kRecoverCommand,
      kInfoCommand,
      kBundlesCommand,
      kWindowCommand,
      kDemoCommand,
      kVerifyCommand,
      kDumpCommand,
      kCheckCommand,
      kGalleryCommand,
      kShapesCommand,
      kTextCommand,
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
