#include "host/commands/Command.h"

#include <cstdio>

#include "host/commands/EditCommand.h"
#include "host/text/Printable.h"

namespace host {

const std::vector<Command>& Commands() {
  static const Command newOnFile = {kNewEdit.name, kNewEdit.summary, kNewEdit.help, &RunNewOnFile};
  static const std::vector<Command> commands = {
      newOnFile,
      Alone<kAddEdit>(),
      Alone<kListEdit>(),
      Alone<kGetEdit>(),
      Alone<kSetEdit>(),
      Alone<kStyleEdit>(),
      Alone<kDeleteEdit>(),
      Alone<kMoveEdit>(),
      Alone<kResizeEdit>(),
      Alone<kRotateEdit>(),
      Alone<kAlignEdit>(),
      Alone<kDistributeEdit>(),
      Alone<kMatchEdit>(),
      Alone<kGroupEdit>(),
      Alone<kUngroupEdit>(),
      Alone<kLockEdit>(),
      Alone<kUnlockEdit>(),
      Alone<kHideEdit>(),
      Alone<kShowEdit>(),
      Alone<kOpacityEdit>(),
      Alone<kFlipEdit>(),
      Alone<kDashEdit>(),
      Alone<kLabelEdit>(),
      Alone<kGuideEdit>(),
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
      Alone<kThumbnailEdit>(),
      Alone<kImportEdit>(),
      kScriptCommand,
      kRecoverCommand,
      kInfoCommand,
      kBundlesCommand,
      kNewPluginCommand,
      kValidateCommand,
      kTortureCommand,
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

const Command* FindCommand(const std::string& name) {
  for (const Command& command : Commands()) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

void Warn(const std::string& message) { std::fprintf(stderr, "objecthost: %s\n", Printable(message).c_str()); }

int Fail(const std::string& message) {
  Warn(message);
  return 1;
}

int Fail(const Problem& problem) { return Fail(problem.English()); }

int FailToRun(const std::string& message) {
  constexpr int kNotRun = 2;
  Warn(message);
  return kNotRun;
}

}  // namespace host
