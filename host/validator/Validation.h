// A bundle asked to pass checks, and what came of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/text/Problem.h"
#include "host/validator/TrialProcess.h"

namespace host::validator {

struct CheckResult {
  const Check* check = nullptr;
  Outcome outcome;
};

struct BundleResult {
  TrialPlan plan;
  std::vector<CheckResult> checks;
  double seconds = 0;

  std::size_t Count(bool (*matches)(const Outcome& outcome)) const;
  std::size_t Passed() const;
  std::size_t Failed() const;
  std::size_t Skipped() const;
};

/// Fails for a file that is no bundle at all: not there, not readable, no shared library.
Result<> CheckFile(const std::string& bundle);

/// The checks of a level, or those that are named; without those that are left out. Fails for an unknown name.
Result<std::vector<const Check*>> ChooseChecks(int level, const std::vector<std::string>& only,
                                               const std::vector<std::string>& skipped);

/// Runs the checks one after the other. A failing sequence is made short. After a failure of one that is needed
/// (Check::Kind) the others are skipped. `tell` is called behind each.
BundleResult Validate(const TrialPlan& plan, const std::vector<const Check*>& checks,
                      const std::function<void(const CheckResult& result, std::size_t done)>& tell);

}  // namespace host::validator
