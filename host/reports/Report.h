// What came of a validation, in three forms.
#pragma once

#include <string>
#include <vector>

#include "host/validator/Validation.h"

namespace host::validator {

/// "passed", "failed" or "skipped".
const char* WordFor(const Outcome& outcome);
/// What was expected and what was seen, also of a bundle that crashed, hung or ended the process.
std::string ExpectedBy(const Outcome& outcome);
std::string SeenBy(const Outcome& outcome);
/// What was done, expected and seen, the calls and what was printed: a field a line, indented.
std::string FailureOf(const Outcome& outcome);
/// The command line that runs the check on the bundle again, as it ran here.
std::string RepeatLine(const CheckResult& result, const TrialPlan& plan);

/// A check in words: one line, and for a failure what was done, expected and seen, and how to repeat and mend it.
std::string TextOf(const CheckResult& result, const TrialPlan& plan);
/// The last line on a bundle.
std::string SummaryOf(const BundleResult& result);

/// One JSON object with all bundles, on a line.
std::string JsonReport(const std::vector<BundleResult>& results);
/// The form of JUnit that build servers read: a suite a bundle, a case a check.
std::string JUnitReport(const std::vector<BundleResult>& results);

}  // namespace host::validator
