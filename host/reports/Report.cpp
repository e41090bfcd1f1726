#include "host/reports/Report.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sstream>

namespace host::validator {
namespace {

// A word as a shell reads it.
std::string Quoted(const std::string& word) {
  constexpr char kPlain[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./+:@";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char letter : word) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  return quoted + "'";
}

std::string Seconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.1f s", seconds);
  return text;
}

// The lines of a text behind a word, indented.
std::string Field(const char* word, const std::string& text) {
  std::string field;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line); word = "") {
    char begin[32];
    std::snprintf(begin, sizeof(begin), "        %-9s ", word);
    field += begin + line + "\n";
  }
  return field;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

}  // namespace

const char* WordFor(const Outcome& outcome) {
  if (outcome.end == Outcome::End::kPassed) return "passed";
  return outcome.end == Outcome::End::kSkipped ? "skipped" : "failed";
}

std::string ExpectedBy(const Outcome& outcome) {
  return outcome.end == Outcome::End::kFailed ? outcome.expected : "it comes back";
}

std::string SeenBy(const Outcome& outcome) {
  const std::string number = std::to_string(outcome.number);
  switch (outcome.end) {
    case Outcome::End::kExited:
      return "the bundle ends the program that called it, with exit code " + number;
    case Outcome::End::kKilled:
      return "a crash: " + std::string(strsignal(outcome.number)) + " (signal " + number + ")";
    case Outcome::End::kHung:
      return "no end within " + Seconds(outcome.seconds) + ", the limit of --timeout";
    case Outcome::End::kNotStarted:
      return "no process could be started: " + std::string(std::strerror(outcome.number));
    default:
      return outcome.seen;
  }
}

std::string FailureOf(const Outcome& outcome) {
  const std::string done = outcome.operations != 0 ? outcome.history : outcome.doing;
  return Field("done", done) + Field("expected", ExpectedBy(outcome)) + Field("seen", SeenBy(outcome)) +
         Field("calls", Joined(outcome.calls)) + Field("printed", outcome.output);
}

std::string RepeatLine(const CheckResult& result, const TrialPlan& plan) {
  std::string line = "objecthost validate " + Quoted(plan.bundle) + " --only " + result.check->id;
  if (!result.outcome.step) return line;
  line += " --seed " + std::to_string(plan.seed) + " --step " + std::to_string(*result.outcome.step);
  return plan.level == 5 ? line : line + " --level " + std::to_string(plan.level);
}

std::string TextOf(const CheckResult& result, const TrialPlan& plan) {
  const Outcome& outcome = result.outcome;
  const std::string id = result.check->id;
  if (outcome.end == Outcome::End::kPassed) return "ok      " + id + "\n";
  if (outcome.end == Outcome::End::kSkipped) return "skipped " + id + ": " + outcome.seen + "\n";
  return "FAILED  " + id + "\n" + Field("asked", result.check->asks) + FailureOf(outcome) +
         Field("repeat", RepeatLine(result, plan)) + Field("mend", "docs/validator.md, section \"" + id + "\"");
}

std::string SummaryOf(const BundleResult& result) {
  return std::filesystem::path(result.plan.bundle).filename().string() + ": " + std::to_string(result.Passed()) +
         " passed, " + std::to_string(result.Failed()) + " failed, " + std::to_string(result.Skipped()) +
         " skipped; level " + std::to_string(result.plan.level) + ", seed " + std::to_string(result.plan.seed) + ", " +
         Seconds(result.seconds) + "\n";
}

}  // namespace host::validator
