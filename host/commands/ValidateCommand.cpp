// Asks bundles to pass the validator's checks.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

#include "host/Fonts.h"
#include "host/Program.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/reports/Report.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/terminal/ProgressBar.h"
#include "host/validator/ElfFile.h"

namespace host {
namespace {

using validator::BundleResult;
using validator::Check;
using validator::CheckResult;
using validator::TrialPlan;

constexpr char kSanitizer[] = "libasan.so";

struct Request {
  std::vector<std::string> bundles;
  TrialPlan plan;
  std::vector<const Check*> checks;
  bool json = false;
  std::string junit;
};

Result<> TakeOptions(const CommandLine& line, Request* request) {
  TrialPlan& plan = request->plan;
  std::uint64_t step = 0;
  if (const auto done = TakeNumber(line, "level", 1, 10, &plan.level); !done) return done.Why();
  if (const auto done = TakeNumber<std::uint64_t>(line, "seed", 0, UINT64_MAX, &plan.seed); !done) return done.Why();
  if (const auto done = TakeNumber<std::uint64_t>(line, "step", 0, UINT64_MAX, &step); !done) return done.Why();
  if (const auto done = TakeNumber(line, "timeout", 0.1, 86400.0, &plan.seconds); !done) return done.Why();
  if (line.Has("step")) plan.step = step;
  auto checks = validator::ChooseChecks(plan.level, line.Values("only"), line.Values("skip"));
  if (!checks) return checks.Why();
  if (checks->empty()) return Problem(N_("%s"), {"no check is left to run"});
  request->checks = std::move(*checks);
  request->bundles = line.Positional();
  request->json = line.Has("json");
  request->junit = line.Value("junit", "");
  for (const std::string& bundle : request->bundles) {
    if (const auto done = validator::CheckFile(bundle); !done) return done.Why();
  }
  return {};
}

int ListChecks() {
  for (const Check& check : validator::AllChecks()) Output::Print("%-26s %2d  %s\n", check.id, check.level, check.asks);
  return 0;
}

// A bundle that was built with AddressSanitizer needs its library in front of all others: the program begins again with
// it. What the sanitizer finds ends a check's process, and its words are shown.
void BeginWithSanitizer(const std::vector<std::string>& bundles, const std::vector<std::string>& words) {
  if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || std::getenv("LD_PRELOAD") != nullptr) return;
  for (const std::string& bundle : bundles) {
    const auto file = validator::ElfFile::Read(bundle);
    for (const std::string& library : file ? file->needed : std::vector<std::string>()) {
      if (!library.starts_with(kSanitizer)) continue;
      setenv("LD_PRELOAD", library.c_str(), 1);
      setenv("ASAN_OPTIONS", "detect_leaks=0", 0);
      std::vector<std::string> all = words;
      all.insert(all.begin(), {Program::ExecutablePath(), "validate"});
      std::vector<char*> arguments;
      arguments.reserve(all.size() + 1);
      for (std::string& word : all) arguments.push_back(word.data());
      arguments.push_back(nullptr);
      execv(arguments[0], arguments.data());
    }
  }
}

BundleResult ValidateOne(const Request& request, const std::string& bundle) {
  TrialPlan plan = request.plan;
  plan.bundle = bundle;
  std::optional<ProgressBar> bar;
  const bool isTerminal = isatty(Output::Descriptor()) != 0;
  bar.emplace("validate");
  const auto tell = [&](const CheckResult& result, std::size_t done) {
    // Between lines of text the bar is wiped away; those who look on see what failed, a file gets every line.
    const bool isShown = !request.json && (!isTerminal || result.outcome.IsFailure());
    if (isShown && isTerminal) bar.emplace("validate");
    if (isShown) Output::Write(TextOf(result, plan).c_str());
    Output::Flush();
    bar->Step(static_cast<double>(done) / static_cast<double>(request.checks.size()));
  };
  BundleResult result = validator::Validate(plan, request.checks, tell);
  bar.reset();
  if (!request.json) Output::Write(validator::SummaryOf(result).c_str());
  return result;
}

int RunValidate(const std::vector<std::string>& words) {
  CommandLine line({"level", "only", "skip", "seed", "step", "timeout", "junit"}, {"list", "json"});
  if (const auto done = line.Parse(words, 0, SIZE_MAX); !done) return FailToRun(done.Why().English());
  if (line.Has("list")) return ListChecks();
  if (line.Positional().empty()) return FailToRun("no bundle is named; --help tells what is needed");
  Request request;
  if (const auto done = TakeOptions(line, &request); !done) return FailToRun(done.Why().English());
  BeginWithSanitizer(request.bundles, words);
  const Fonts fonts;
  std::vector<BundleResult> results;
  std::size_t failed = 0;
  std::size_t run = 0;
  for (const std::string& bundle : request.bundles) {
    results.push_back(ValidateOne(request, bundle));
    failed += results.back().Failed();
    run += results.back().Passed() + results.back().Failed();
  }
  if (request.json) Output::Write(validator::JsonReport(results).c_str());
  if (!request.junit.empty()) {
    const std::string xml = validator::JUnitReport(results);
    if (const auto done = ReplaceFile(request.junit, xml.data(), xml.size()); !done) {
      return FailToRun(done.Why().English());
    }
  }
  if (failed != 0) return 1;
  return run != 0 ? 0 : FailToRun("every check was skipped: nothing is known of the bundle");
}

}  // namespace

const Command kValidateCommand = {
    "validate", "ask plug-in bundles to pass checks, and say how to mend what fails",
    "usage: objecthost validate BUNDLE... [--level N] [--only CHECK]... [--skip CHECK]... [--seed N]\n"
    "       [--step N] [--json] [--junit FILE] [--timeout S]\n"
    "       objecthost validate --list\n\n"
    "Runs each check in a process of its own, so that a bundle that crashes, hangs or ends the program\n"
    "fails its check, and the rest goes on. A failure says what was done, expected and seen, and the\n"
    "line that repeats it; docs/validator.md says how to mend it.\n\n"
    "  --level N     1 (the quickest) to 10 (10,000 random operations); 5 without it\n"
    "  --list        prints each check with its level and what it asks\n"
    "  --only CHECK  runs this check, whatever its level; may be given several times\n"
    "  --skip CHECK  leaves it out; may be given several times\n"
    "  --seed N      of the random checks; 1 without it\n"
    "  --step N      runs one case of a check, as the line of a failure says\n"
    "  --json        prints one line of JSON\n"
    "  --junit FILE  writes the report for a build server\n"
    "  --timeout S   seconds that one check may take; 60 without it\n\n"
    "Exit code 0: all passed; 1: a check failed; 2: nothing could be run, with a line on standard error.\n",
    &RunValidate};

}  // namespace host
