// The commands that look at any chunked file.
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/listings/ChunkDump.h"

namespace host {
namespace {

int RunOnPath(const std::vector<std::string>& words, int (*run)(const std::string&)) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 1, 1); !done) return Fail(done.Why());
  return run(line.Positional()[0]);
}

int RunDump(const std::vector<std::string>& words) { return RunOnPath(words, &DumpChunkFile); }
int RunCheck(const std::vector<std::string>& words) { return RunOnPath(words, &CheckChunkFile); }

}  // namespace

const Command kDumpCommand = {
    "dump", "print any chunked file as a tree",
    "usage: objecthost dump FILE\n\n"
    "Prints the chunks of a file with their offsets (hexadecimal), sizes and values. A damaged\n"
    "file is printed up to the damage; where that is goes to standard error.\n",
    &RunDump};

const Command kCheckCommand = {
    "check", "say whether a chunked file is sound",
    "usage: objecthost check FILE\n\n"
    "Prints nothing and exits with 0 for a sound file. For a damaged one the offset and kind of\n"
    "the damage go to standard error and the exit code is 1.\n",
    &RunCheck};

}  // namespace host
