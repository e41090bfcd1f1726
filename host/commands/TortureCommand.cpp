// Has the bundle that examines hosts examine this one.
#include <cstdio>

#include "host/Fonts.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/reports/Report.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/torture/Torture.h"

namespace host {
namespace {

Result<> TakeOptions(const CommandLine& line, TorturePlan* plan) {
  plan->bundle = line.Positional().empty() ? TortureBundle() : line.Positional().front();
  plan->huge = line.Has("huge");
  plan->seconds = plan->huge ? 900 : 120;
  return TakeNumber(line, "timeout", 0.1, 86400.0, &plan->seconds);
}

int RunTorture(const std::vector<std::string>& words) {
  CommandLine line({"timeout", "report"}, {"json", "huge"});
  if (const auto done = line.Parse(words, 0, 1); !done) return FailToRun(done.Why().English());
  TorturePlan plan;
  if (const auto done = TakeOptions(line, &plan); !done) return FailToRun(done.Why().English());
  const Fonts fonts;
  const auto result = Torture(plan);
  if (!result) return FailToRun(result.Why().English());
  if (result->text.empty()) return FailToRun("\"" + plan.bundle + "\" wrote no report: it is none that examines hosts");
  const std::string& report = line.Has("json") ? result->json : result->text;
  Output::Write(report.c_str());
  if (line.Has("report")) {
    const std::string path = line.Value("report", "");
    const std::string& kept = path.ends_with(".json") ? result->json : result->text;
    if (const auto done = ReplaceFile(path, kept.data(), kept.size()); !done) return FailToRun(done.Why().English());
  }
  Output::Flush();
  if (result->outcome.IsFailure()) {
    std::fprintf(stderr, "FAILED\n%s", validator::FailureOf(result->outcome).c_str());
  }
  return result->IsPassed() ? 0 : 1;
}

}  // namespace

const Command kTortureCommand = {
    "torture", "have a bundle examine this host, and say what the host gets wrong",
    "usage: objecthost torture [BUNDLE] [--json] [--report FILE] [--huge] [--timeout S]\n\n"
    "Loads the bundle HostTorture.so, which comes with the program, or another one that does its work,\n"
    "in a process of its own, and does with it all that a host does with a bundle: make, draw, write,\n"
    "read, inspect, undo, redo, copy, delete, close. The bundle calls every entry of the host's tables\n"
    "from within each, and prints what the host got wrong; docs/torture.md says how to read it, and how\n"
    "to run the bundle in another host.\n\n"
    "  --json         prints the report as JSON\n"
    "  --report FILE  keeps it in a file too, as JSON if the name ends in \".json\"\n"
    "  --huge         asks for texts of a gigabyte too\n"
    "  --timeout S    seconds that it may take; 120 without it, 900 with --huge\n\n"
    "Exit code 0: nothing was found, and every entry and moment was reached; 1: something was found or\n"
    "not reached; 2: nothing could be run, with a line on standard error.\n",
    &RunTorture};

}  // namespace host
