// The commands of objecthost.
//
// Each gets the words behind its name and returns the exit code: 0, or 1 with one line on standard error.
#pragma once

#include <string>
#include <vector>

#include "host/text/Problem.h"

namespace host {

struct Command {
  const char* name;
  const char* summary;  ///< one line for the list of commands
  const char* help;     ///< usage and details
  int (*run)(const std::vector<std::string>& words);
};

/// All commands, in the order in which they are listed.
const std::vector<Command>& Commands();
/// Null for an unknown name.
const Command* FindCommand(const std::string& name);

/// Prints "objecthost: message" on standard error, in one line.
void Warn(const std::string& message);
/// The same, and returns 1.
int Fail(const std::string& message);
/// The same in English.
int Fail(const Problem& problem);
/// For commands that examine something, where nothing could be examined: the same, and returns 2.
int FailToRun(const std::string& message);

// The commands that do not work on one open document (those that do: EditCommand.h), one file an area.
extern const Command kScriptCommand;
extern const Command kRecoverCommand;
extern const Command kInfoCommand;
extern const Command kBundlesCommand;
extern const Command kNewPluginCommand;
extern const Command kValidateCommand;
extern const Command kTortureCommand;
extern const Command kWindowCommand;
extern const Command kDemoCommand;
extern const Command kVerifyCommand;
extern const Command kDumpCommand;
extern const Command kCheckCommand;
extern const Command kGalleryCommand;
extern const Command kShapesCommand;
extern const Command kTextCommand;

}  // namespace host
