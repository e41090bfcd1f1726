#include "host/validator/Validation.h"

#include <algorithm>
#include <numeric>

#include "host/Host.h"
#include "host/validator/ElfFile.h"
#include "host/validator/Shrink.h"

namespace host::validator {
namespace {

constexpr std::size_t kMostTries = 400;  // runs of a sequence that is made short

Outcome RunShortened(const Check& check, const TrialPlan& plan, const Outcome& first) {
  TrialPlan again = plan;
  again.step = first.step;
  again.seconds = std::min(plan.seconds, std::max(2.0, 4 * first.seconds));
  std::vector<std::uint32_t> all(std::min(first.operation + 1, first.operations));
  std::iota(all.begin(), all.end(), 0U);
  again.kept = Shrink(
      all,
      [&](const std::vector<std::uint32_t>& kept) {
        again.kept = kept;
        return RunTrial(check, again).IsFailure();
      },
      kMostTries);
  Outcome least = RunTrial(check, again);
  least.seconds = first.seconds;
  // A bundle that does not fail twice in the same way is shown as it failed.
  return least.IsFailure() ? least : first;
}

Outcome Run(const Check& check, const TrialPlan& plan) {
  Outcome outcome = RunTrial(check, plan);
  const bool isShortened = check.kind == Check::Kind::kSequence && outcome.IsFailure() && outcome.step &&
                           outcome.end != Outcome::End::kHung && outcome.operations != 0;
  return isShortened ? RunShortened(check, plan, outcome) : outcome;
}

Outcome SkippedFor(const Check& needed) {
  Outcome outcome;
  outcome.end = Outcome::End::kSkipped;
  outcome.seen = std::string("it needs ") + needed.id;
  return outcome;
}

}  // namespace

std::size_t BundleResult::Count(bool (*matches)(const Outcome& outcome)) const {
  return static_cast<std::size_t>(std::count_if(
      checks.begin(), checks.end(), [matches](const CheckResult& result) { return matches(result.outcome); }));
}
std::size_t BundleResult::Passed() const {
  return Count([](const Outcome& outcome) { return outcome.end == Outcome::End::kPassed; });
}
std::size_t BundleResult::Failed() const {
  return Count([](const Outcome& outcome) { return outcome.IsFailure(); });
}
std::size_t BundleResult::Skipped() const {
  return Count([](const Outcome& outcome) { return outcome.end == Outcome::End::kSkipped; });
}

Result<> CheckFile(const std::string& bundle) {
  if (const auto file = ElfFile::Read(bundle); !file) return file.Why();
  return {};
}

Result<std::vector<const Check*>> ChooseChecks(int level, const std::vector<std::string>& only,
                                               const std::vector<std::string>& skipped) {
  for (const auto* names : {&only, &skipped}) {
    for (const std::string& name : *names) {
      if (FindCheck(name) == nullptr)
        return Problem(N_("%s"), {"there is no check \"" + name + "\"; --list tells all"});
    }
  }
  const auto isIn = [](const std::vector<std::string>& names, const Check& check) {
    return std::find(names.begin(), names.end(), check.id) != names.end();
  };
  std::vector<const Check*> chosen;
  for (const Check& check : AllChecks()) {
    const bool isAsked = only.empty() ? check.level <= level : isIn(only, check);
    if (isAsked && !isIn(skipped, check)) chosen.push_back(&check);
  }
  return chosen;
}

BundleResult Validate(const TrialPlan& plan, const std::vector<const Check*>& checks,
                      const std::function<void(const CheckResult&, std::size_t)>& tell) {
  Host::Instance();  // made once, before the processes
  BundleResult result{plan, {}, 0};
  const Check* failedNeed = nullptr;
  for (const Check* check : checks) {
    CheckResult one{check, failedNeed != nullptr ? SkippedFor(*failedNeed) : Run(*check, plan)};
    if (check->kind == Check::Kind::kNeeded && one.outcome.IsFailure()) failedNeed = check;
    result.seconds += one.outcome.seconds;
    result.checks.push_back(std::move(one));
    tell(result.checks.back(), result.checks.size());
  }
  return result;
}

}  // namespace host::validator
